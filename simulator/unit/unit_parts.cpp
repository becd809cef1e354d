#include "unit_parts.h"

#include "../onboard/vectors.h"

#include <algorithm>

namespace zavra::simulator
{

Flight_Settings Unit_Parts::flight_settings() const
{
    const auto& s = modes.settings;
    const auto& a = actuators.settings;
    Flight_Settings settings{
        .determination = {.method = static_cast<Determination_Method>(s.operation_in_use.determination_mode),
                          .filter = s.kalman_filter,
                          .active_gyroscope = system.settings.active_gyroscope,
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

Measurements Unit_Parts::measurements(const Measurements& sensed)
{
    Measurements seen = sensors.measurements(sensed);
    seen.epoch_time_msec = time.epoch_msec();
    if (system.settings.active_magnetometer >= sensors.magnetometers.size())
        seen.magnetic_field_t.valid = false;
    if (const auto& q = startracker_orbit.settings.quaternion)
        seen.attitude = {Eigen::Quaterniond(q->q_4, q->q_1, q->q_2, q->q_3), sensed.time, true};
    return seen;
}

}
