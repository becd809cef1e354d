#include "flight_software.h"

namespace zavra::simulator
{

void Flight_Software::tick(const Measurements& measurements, Actuation& actuation)
{
    const Flight_Settings settings = settings_();
    if (settings.control.mode == Operation::safe)
        determination_.reset();
    else
        determination_.update(measurements, settings.determination);
    control_.tick(measurements, determination_.estimate(), settings.control, actuation);
}

std::optional<Onboard_Software::Estimate> Flight_Software::estimate() const
{
    const Attitude_Estimate& known = determination_.estimate();
    if (!known.inertial)
        return std::nullopt;
    return Estimate{known.attitude, known.angular_velocity_radps, control_.report().pointing_error_rad};
}

void Flight_Software::reset()
{
    determination_.reset();
    control_.reset();
}

}
