#include "unit_parts.h"

namespace zavra::simulator
{

namespace
{

Eigen::Vector3d wide(const ZAVRA_100_Vector3_float& vector)
{
    return {vector.x, vector.y, vector.z};
}

void inject(const Sensors::Measurement& injected, std::chrono::milliseconds now, Measurements::Vector& over)
{
    over = {wide(injected.vector), now, true};
}

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
