#include "unit_parts.h"

#include "../onboard/vectors.h"

#include <algorithm>

namespace zavra::simulator
{

namespace
{

void inject(const Sensors::Measurement& injected, std::chrono::milliseconds now, Measurements::Vector& over)
{
    over = {wide(injected.vector), now, true};
}

}

Flight_Settings Unit_Parts::flight_settings() const
{
    const auto& s = modes.settings;
    const auto& a = actuators.settings;
    Flight_Settings settings{
        .determination = {.method = static_cast<Determination_Method>(s.operation_in_use.determination_mode),
                          .filter = s.kalman_filter,
                          .active_gyroscope =
                              std::min<std::size_t>(system.settings.active_gyroscope, max_gyroscopes - 1),
                          .elements = startracker_orbit.elements()},
        .control = {.mode = modes.mode(),
                    .waiting = modes.waiting(),
                    .starts = s.starts,
                    .sun_line_of_sight = wide(s.sun_line_of_sight),
                    .target = s.target,
                    .operation_in_use = s.operation_in_use,
                    .operation = s.operation,
                    .polynomial_degree = s.polynomial_degree,
                    .controllers = controllers.settings,
                    .wheel_array = a.array,
                    .wheels = {},
                    .magnetorquers = a.magnetorquers,
                    .magnetorquers_suspended = a.suspended}};
    for (std::size_t i = 0; i < max_wheels; ++i)
        settings.control.wheels[i] = a.wheels[i].parameters();
    return settings;
}

Measurements Unit_Parts::seen_through_injections(const Measurements& sensed) const
{
    Measurements seen = sensed;
    seen.epoch_time_msec = time.epoch_msec();
    for (std::size_t i = 0; i < sensors.gyroscopes.size(); ++i) {
        const Sensors::Gyroscope& gyroscope = sensors.gyroscopes[i];
        if (gyroscope.bias_removal)
            seen.angular_velocity_radps[i].value -= wide(gyroscope.bias);
        if (gyroscope.injected)
            inject(*gyroscope.injected, sensed.time, seen.angular_velocity_radps[i]);
    }
    if (const auto& injected = sensors.magnetometers[0].injected)
        inject(*injected, sensed.time, seen.magnetic_field_t);
    if (const auto& injected = sensors.injected_sun_vector)
        inject(*injected, sensed.time, seen.sun_vector);
    if (const auto& q = startracker_orbit.settings.quaternion)
        seen.attitude = {Eigen::Quaterniond(q->q_4, q->q_1, q->q_2, q->q_3), sensed.time, true};
    return seen;
}

}
