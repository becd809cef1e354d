#include "single_axis.h"

#include <algorithm>
#include <cmath>

namespace zavra::simulator
{

double Pid::output(double error, double seconds, const Gains& gains, double limit)
{
    const double change = last_error_ ? (error - *last_error_) / seconds : 0;
    last_error_ = error;
    const double led_back = std::abs(excess_) > double{gains.th_aw} ? double{gains.k_aw} * excess_ : 0;
    integral_ += seconds * (error + led_back);
    const double wanted = double{gains.k_p} * error + double{gains.k_i} * integral_ + double{gains.k_d} * change;
    const double given = std::clamp(wanted, -limit, limit);
    excess_ = given - wanted;
    return given;
}

double Single_Axis_Control::acceleration(const Controller_Settings::Axis& axis, double rate_radps,
                                         std::chrono::milliseconds now, double tick_seconds, double limit_radps2)
{
    if (axis.starts != starts_) {
        *this = {};
        starts_ = axis.starts;
    }
    const bool step = axis.running == Controller_Settings::Running::angle_step;
    const auto& p = axis.angular_velocity;
    const auto& c = axis.angle_step;
    if (const auto elapsed = interval_.due(now, step ? c.update_interval : p.update_interval, tick_seconds)) {
        double rate = double{axis.target};
        Pid::Gains inner{p.k_p, p.k_i, p.k_d, p.k_aw, p.th_aw};
        if (step) {
            rate = outer_.output(double{axis.target} - angle_, *elapsed,
                                 {c.k_p_out, c.k_i_out, c.k_d_out, c.k_aw_out, c.th_aw_out}, max_rate_radps);
            inner = {c.k_p_in, c.k_i_in, c.k_d_in, c.k_aw_in, c.th_aw_in};
        }
        acceleration_ = inner_.output(rate - rate_radps, *elapsed, inner, limit_radps2);
    }
    angle_ += rate_radps * tick_seconds;
    return acceleration_;
}

}
