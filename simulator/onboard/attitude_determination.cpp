#include "attitude_determination.h"

namespace zavra::simulator
{

void Attitude_Determination::update(const Measurements& measurements, const Settings& settings)
{
    estimate_.angular_velocity_radps = measurements.angular_velocity_radps.at(settings.active_gyroscope).value;
    estimate_.attitude = measurements.attitude.value;
    estimate_.inertial = measurements.attitude.valid && settings.elements;
    estimate_.orbit.reset();
    if (settings.elements) {
        Environment environment(*settings.elements);
        environment.look(measurements.epoch_time_msec);
        if (environment.error() == Tle_Error::none)
            estimate_.orbit = environment.surroundings();
    }
    if (estimate_.inertial)
        estimate_.epoch_time_msec = measurements.epoch_time_msec;
}

}
