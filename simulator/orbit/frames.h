#pragma once

#include "julian_date.h"
#include "orbit_vector.h"

namespace zavra
{

/// Position over the WGS-84 ellipsoid.
struct Geodetic_Position
{
    double latitude_rad;  ///< Geodetic, north positive
    double longitude_rad; ///< East positive, -pi to pi
    double altitude_km;
};

/// The Julian date of a time given in milliseconds since 01.01.1970 0:00:00 UTC.
Julian_Date julian_date(unsigned long long unix_msec);

/// Greenwich mean sidereal time in rad, 0 to 2 pi (IAU 1982). `ut1` may be UTC where 15 arc seconds do not matter.
double greenwich_mean_sidereal_time(const Julian_Date& ut1);

/// Turns a vector from the true equator, mean equinox frame into the Earth-fixed frame (without polar motion).
Orbit_Vector teme_to_earth_fixed(const Orbit_Vector& teme, const Julian_Date& ut1);

Geodetic_Position geodetic_position(const Orbit_Vector& earth_fixed_km);

/// Unit vector from the Earth to the Sun in the frame of the equator and mean equinox of date, which is TEME to the
/// accuracy of the formula: 0.01 degrees between 1950 and 2050 (Astronomical Almanac).
Orbit_Vector sun_direction(const Julian_Date& date);

}
