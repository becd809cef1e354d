#pragma once

#include "flight_settings.h"
#include "interval.h"

namespace zavra::simulator
{

/// A PID controller with limited output. What the limit takes away beyond the threshold is led back to the integral.
class Pid
{
public:
    struct Gains
    {
        float k_p;
        float k_i;
        float k_d;
        float k_aw;
        float th_aw;
    };

    double output(double error, double seconds, const Gains& gains, double limit);
    bool limited() const { return excess_ != 0; }

private:
    double integral_ = 0;
    std::optional<double> last_error_;
    double excess_ = 0;
};

/// A controller of the turn about one axis. Its output is an angular acceleration: gains do not depend on the
/// satellite.
///
/// - angular velocity: acceleration = PID(target rate - rate), gains in 1/s, 1/s^2, 1
/// - angle step: the outer loop PID(target angle - angle) gives the rate to the inner one, which is as above; the angle
///   is the integral of the rate since the start
///
/// Anti-windup thresholds are in the unit of the loop's output: rad/s^2, and rad/s for the outer loop, whose limit is
/// `max_rate_radps`.
class Single_Axis_Control
{
public:
    static constexpr double max_rate_radps = 0.1;

    /// One control tick; the acceleration in rad/s^2 until the next.
    double acceleration(const Controller_Settings::Axis& axis, double rate_radps, std::chrono::milliseconds now,
                        double tick_seconds, double limit_radps2);
    bool limited() const { return inner_.limited(); }

private:
    unsigned int starts_ = 0;
    double angle_ = 0;
    double acceleration_ = 0;
    Interval interval_;
    Pid inner_;
    Pid outer_;
};

}
