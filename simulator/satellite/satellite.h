#pragma once

#include "actuation.h"
#include "attitude.h"
#include "environment.h"
#include "rigid_body.h"
#include "satellite_settings.h"

#include <vector>

namespace zavra::simulator
{

/// The truth: a satellite in its orbit, field and light. It moves in control ticks; at each of them first its
/// surroundings are looked at, then its actuators act, then it advances to the next.
class Satellite
{
public:
    using Time = std::chrono::milliseconds;

    explicit Satellite(const Satellite_Settings& settings);

    /// Since the start.
    Time time() const { return time_; }
    unsigned long long epoch_time_msec() const
    {
        return settings_.start_epoch_msec + static_cast<unsigned long long>(time_.count());
    }

    const Satellite_Settings& settings() const { return settings_; }
    const Surroundings& surroundings() const { return environment_.surroundings(); }
    const Eigen::Quaterniond& attitude() const { return body_.attitude(); }
    const Eigen::Vector3d& angular_velocity_radps() const { return body_.angular_velocity_radps(); }
    Eigen::Vector3d angular_momentum_nms() const { return body_.angular_momentum_nms(); }
    std::array<double, max_wheels> wheel_speeds_radps() const { return body_.wheel_speeds_radps(); }
    double temperature_degc() const { return temperature_; }
    /// Why the surroundings stay as they were: the orbit has come to its end.
    Tle_Error orbit_error() const { return environment_.error(); }

    /// Turns a vector into the body frame.
    Eigen::Vector3d in_body(const Eigen::Vector3d& inertial) const { return body_from_inertial(attitude()) * inertial; }

    /// What the magnetorquers do on the average of a control tick.
    const Eigen::Vector3d& dipole_moment_am2() const { return dipole_moment_; }
    /// What the magnetometer feels of them.
    Eigen::Vector3d dipole_moment_during_measurement_am2() const;
    /// The part of a control tick in which the magnetorquers are on; 0 without any.
    double magnetorquer_duty() const { return duty_; }
    /// What the wheels' motors take: torque times speed, where they do not brake.
    double wheel_power_w() const { return wheel_power_; }

    void look_around() { environment_.look(epoch_time_msec()); }
    void act(const Actuation& actuation, Time tick);
    void advance(Time tick);

    // What scenarios do.
    void set_angular_velocity(const Eigen::Vector3d& rate_radps) { body_.set_angular_velocity(rate_radps); }
    void set_attitude(const Eigen::Quaterniond& attitude) { body_.set_attitude(attitude); }
    /// Body frame, in the control ticks that begin within the time.
    void add_torque(const Eigen::Vector3d& torque_nm, Time duration)
    {
        passing_torques_.push_back({torque_nm, time_ + duration});
    }
    void stick_wheel(std::size_t wheel, bool stuck) { stuck_.at(wheel) = stuck; }

private:
    double rotor_torque(std::size_t wheel, const Wheel_Command& command, double speed, double seconds);
    Eigen::Vector3d torque(const Eigen::Quaterniond& attitude) const;

    Satellite_Settings settings_;
    Environment environment_;
    Rigid_Body body_;
    Time time_{0};
    double temperature_;
    double duty_ = 0;
    double wheel_power_ = 0;
    Eigen::Vector3d dipole_moment_ = Eigen::Vector3d::Zero();
    struct Passing_Torque
    {
        Eigen::Vector3d torque_nm;
        Time end;
    };

    std::vector<Passing_Torque> passing_torques_;
    Eigen::Vector3d disturbance_torque_;
    std::array<double, max_wheels> rotor_torques_{};
    std::array<bool, max_wheels> stuck_{};
};

}
