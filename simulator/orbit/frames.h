#pragma once

#include "julian_date.h"

#include <Eigen/Core>

namespace zavra::simulator
{

inline constexpr double wgs84_equatorial_radius_km = 6378.137;

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

/// Rotation matrix from the true equator, mean equinox frame into the Earth-fixed frame without polar motion (AIAA
/// 2006-6753, appendix C); its transpose turns back. With UTC for `ut1` a position in orbit is off by up to 0.5 km.
Eigen::Matrix3d teme_to_earth_fixed(const Julian_Date& ut1);

Geodetic_Position geodetic_position(const Eigen::Vector3d& earth_fixed_km);

/// The inverse: the Earth-fixed position in km.
Eigen::Vector3d earth_fixed_position(const Geodetic_Position& geodetic);

}
