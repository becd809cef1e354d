#pragma once

#include "../orbit/julian_date.h"

#include <Eigen/Core>

namespace zavra::simulator
{

/// From the Earth to the apparent Sun in km, in the frame of the equator and mean equinox of date, which is TEME to the
/// accuracy of the formula: 0.01 degrees in direction between 1950 and 2050 and 0.0003 au in distance (Astronomical
/// Almanac, low-precision formulas for the Sun). The date is UTC.
Eigen::Vector3d sun_position(const Julian_Date& date);

}
