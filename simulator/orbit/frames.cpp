#include "frames.h"

#include <cmath>
#include <numbers>

namespace zavra
{

namespace
{

constexpr double two_pi = 2.0 * std::numbers::pi;
constexpr double rad_per_degree = std::numbers::pi / 180.0;

constexpr double wgs84_equatorial_radius_km = 6378.137;
constexpr double wgs84_flattening = 1.0 / 298.257223563;

double days_since_j2000(const Julian_Date& date)
{
    return (date.day - 2451545.0) + date.fraction;
}

}

Julian_Date julian_date(unsigned long long unix_msec)
{
    constexpr double julian_1970 = 2440587.5;
    constexpr unsigned long long msec_per_day = 86400000;
    const unsigned long long whole_days = unix_msec / msec_per_day;
    return {julian_1970 + static_cast<double>(whole_days),
            static_cast<double>(unix_msec % msec_per_day) / static_cast<double>(msec_per_day)};
}

double greenwich_mean_sidereal_time(const Julian_Date& ut1)
{
    constexpr double seconds_per_day = 86400.0;
    const double centuries = days_since_j2000(ut1) / 36525.0;
    const double seconds =
        67310.54841 + centuries * (876600.0 * 3600.0 + 8640184.812866 + centuries * (0.093104 - 6.2e-6 * centuries));
    const double angle = std::fmod(seconds, seconds_per_day) / seconds_per_day * two_pi;
    return angle < 0.0 ? angle + two_pi : angle;
}

Orbit_Vector teme_to_earth_fixed(const Orbit_Vector& teme, const Julian_Date& ut1)
{
    const double gmst = greenwich_mean_sidereal_time(ut1);
    const double c = std::cos(gmst);
    const double s = std::sin(gmst);
    return {c * teme[0] + s * teme[1], c * teme[1] - s * teme[0], teme[2]};
}

Geodetic_Position geodetic_position(const Orbit_Vector& earth_fixed_km)
{
    const auto [x, y, z] = earth_fixed_km;
    constexpr double a = wgs84_equatorial_radius_km;
    constexpr double e_squared = wgs84_flattening * (2.0 - wgs84_flattening);
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

Orbit_Vector sun_direction(const Julian_Date& date)
{
    const double days = days_since_j2000(date);
    const double mean_longitude = 280.460 + 0.9856474 * days;
    const double mean_anomaly = (357.528 + 0.9856003 * days) * rad_per_degree;
    const double ecliptic_longitude =
        (mean_longitude + 1.915 * std::sin(mean_anomaly) + 0.020 * std::sin(2.0 * mean_anomaly)) * rad_per_degree;
    const double obliquity = (23.439 - 0.0000004 * days) * rad_per_degree;
    return {std::cos(ecliptic_longitude), std::cos(obliquity) * std::sin(ecliptic_longitude),
            std::sin(obliquity) * std::sin(ecliptic_longitude)};
}

}
