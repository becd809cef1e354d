#include "frames.h"

#include <Eigen/Geometry>

#include <cmath>
#include <numbers>

namespace zavra::simulator
{

namespace
{

constexpr double two_pi = 2.0 * std::numbers::pi;

constexpr double wgs84_flattening = 1.0 / 298.257223563;
constexpr double e_squared = wgs84_flattening * (2.0 - wgs84_flattening);

}

Julian_Date julian_date(unsigned long long unix_msec)
{
    constexpr unsigned long long msec_per_day = 86400000;
    const unsigned long long whole_days = unix_msec / msec_per_day;
    return {julian_1970 + static_cast<double>(whole_days),
            static_cast<double>(unix_msec % msec_per_day) / static_cast<double>(msec_per_day)};
}

double greenwich_mean_sidereal_time(const Julian_Date& ut1)
{
    constexpr double seconds_per_day = 86400.0;
    const double centuries = ut1.days_since_j2000() / 36525.0;
    const double seconds =
        67310.54841 + centuries * (876600.0 * 3600.0 + 8640184.812866 + centuries * (0.093104 - 6.2e-6 * centuries));
    const double angle = std::fmod(seconds, seconds_per_day) / seconds_per_day * two_pi;
    return angle < 0.0 ? angle + two_pi : angle;
}

Eigen::Matrix3d teme_to_earth_fixed(const Julian_Date& ut1)
{
    return Eigen::AngleAxisd(-greenwich_mean_sidereal_time(ut1), Eigen::Vector3d::UnitZ()).toRotationMatrix();
}

Geodetic_Position geodetic_position(const Eigen::Vector3d& earth_fixed_km)
{
    const double x = earth_fixed_km.x();
    const double y = earth_fixed_km.y();
    const double z = earth_fixed_km.z();
    constexpr double a = wgs84_equatorial_radius_km;
    constexpr int steps = 10; // each gains more than two digits
    const double from_axis = std::hypot(x, y);
    double latitude = std::atan2(z, from_axis * (1.0 - e_squared));
    double reach = 0.0; // sqrt(1 - e^2 sin^2 latitude)
    for (int i = 0; i < steps; ++i) {
        const double sin_latitude = std::sin(latitude);
        reach = std::sqrt(1.0 - e_squared * sin_latitude * sin_latitude);
        latitude = std::atan2(z + a * e_squared * sin_latitude / reach, from_axis);
    }
    return {latitude, std::atan2(y, x), from_axis * std::cos(latitude) + z * std::sin(latitude) - a * reach};
}

Eigen::Vector3d earth_fixed_position(const Geodetic_Position& geodetic)
{
    const double sin_latitude = std::sin(geodetic.latitude_rad);
    const double cos_latitude = std::cos(geodetic.latitude_rad);
    const double normal = wgs84_equatorial_radius_km / std::sqrt(1.0 - e_squared * sin_latitude * sin_latitude);
    const double from_axis = (normal + geodetic.altitude_km) * cos_latitude;
    return {from_axis * std::cos(geodetic.longitude_rad), from_axis * std::sin(geodetic.longitude_rad),
            (normal * (1.0 - e_squared) + geodetic.altitude_km) * sin_latitude};
}

}
