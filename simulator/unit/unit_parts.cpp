#include "unit_parts.h"

namespace zavra::simulator
{

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
