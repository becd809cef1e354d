// The unit's orbit module: load the elements of a TLE file, set the unit's clock, show where the satellite is.
// Usage: orbit TLE_FILE [TIME]    TIME is UTC, such as 2018-01-21T12:00:00.250; without it, the elements' epoch.

#include <VELM_ZAVRA_API.h>
#include <VELM_ZAVRA_VALUES.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

namespace
{

using Milliseconds = std::chrono::milliseconds;

struct Ground_Point
{
    double latitude_deg; ///< Geodetic
    double longitude_deg;
    double altitude_km;
};

/// The point of the WGS-84 ellipsoid below a position in the true equator, mean equinox frame. Polar motion and the
/// difference of UT1 and UTC are left out: they move the point by less than half a kilometre.
Ground_Point ground_point(const VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT& position_km, double julian_date)
{
    constexpr double a = 6378.137;
    constexpr double b = 6356.752314245;
    constexpr double e2 = 1.0 - b * b / (a * a);

    // Greenwich mean sidereal time (Meeus, Astronomical Algorithms, 12.4)
    const double sidereal_deg = 280.46061837 + 360.98564736629 * (julian_date - 2451545.0);
    const double right_ascension_deg = velm_zavra::degrees(std::atan2(position_km.y, position_km.x));

    // Bowring's formula, which starts from the parametric latitude
    const double from_axis = std::hypot(double{position_km.x}, double{position_km.y});
    const double parametric = std::atan2(a * double{position_km.z}, b * from_axis);
    const double latitude = std::atan2(position_km.z + e2 * a * a / b * std::pow(std::sin(parametric), 3),
                                       from_axis - e2 * a * std::pow(std::cos(parametric), 3));
    const double altitude_km = from_axis * std::cos(latitude) + position_km.z * std::sin(latitude) -
                               a * std::sqrt(1.0 - e2 * std::pow(std::sin(latitude), 2));
    return {velm_zavra::degrees(latitude), std::remainder(right_ascension_deg - sidereal_deg, 360.0), altitude_km};
}

/// From 01.01.1970 0:00:00 UTC to the start of a day.
Milliseconds start_of_day(int year, int month, int day)
{
    std::tm date = {};
    date.tm_year = year - 1900;
    date.tm_mon = month - 1;
    date.tm_mday = day;
    const std::time_t start = ::timegm(&date);
    if (date.tm_mon != month - 1 || date.tm_mday != day || start < 0)
        throw std::invalid_argument("There is no such date since 1970");
    return std::chrono::seconds(start);
}

Milliseconds epoch_of(const char* tle_line_1)
{
    int two_digits = 0;
    double day_of_year = 0.0;
    const int fields = std::sscanf(tle_line_1 + 18, "%2d%12lf", &two_digits, &day_of_year);
    if (fields != 2 || two_digits < 0 || !(day_of_year >= 1.0 && day_of_year < 367.0))
        throw std::invalid_argument("Line 1 of the elements has no readable epoch");
    return start_of_day(two_digits < 57 ? 2000 + two_digits : 1900 + two_digits, 1, 1) +
           Milliseconds(std::llround((day_of_year - 1.0) * 86400e3));
}

Milliseconds parse_time(const std::string& text)
{
    int y = 0, mon = 0, d = 0, length = 0;
    unsigned int h = 0, min = 0;
    double s = 0.0;
    const int fields = std::sscanf(text.c_str(), "%4d-%2d-%2dT%2u:%2u:%lf%n", &y, &mon, &d, &h, &min, &s, &length);
    const std::string rest = fields == 6 ? text.substr(static_cast<std::size_t>(length)) : "?";
    if (!(rest.empty() || rest == "Z") || h > 23 || min > 59 || !(s >= 0.0 && s < 60.0))
        throw std::invalid_argument("\"" + text + "\" is not a time such as 2018-01-21T12:00:00.250");
    return start_of_day(y, mon, d) + std::chrono::hours(h) + std::chrono::minutes(min) +
           Milliseconds(std::llround(s * 1000.0));
}

}

int main(int argc, char** argv)
try {
    if (argc < 2 || argc > 3) {
        std::cerr << "Usage: orbit TLE_FILE [TIME]" << std::endl;
        return 2;
    }
    VELM_ZAVRA_API api;
    const auto elements = velm_zavra::read_orbit_elements(api, argv[1], std::chrono::seconds(1));
    std::printf("\nElements of %s\n  %s\n  %s\n", argv[1], elements.tle_1, elements.tle_2);

    // The clock first: the unit computes the first state when it gets the elements.
    const Milliseconds time = argc == 3 ? parse_time(argv[2]) : epoch_of(elements.tle_1);
    api.Set_Epoch_Time(velm_zavra::to_msec(time));

    const unsigned int response = api.Init_Orbit_Module(elements);
    if (response != 0)
        throw std::runtime_error("The unit refused the elements with response " + std::to_string(response));

    const VELM_ZAVRA_API_ORBIT_PROPAGATION_DATA orbit = api.Get_Orbit_Data();
    const auto& r = orbit.position;
    const auto& v = orbit.velocity;
    if (r.x == 0.0F && r.y == 0.0F && r.z == 0.0F)
        throw std::runtime_error("The unit has no orbit for this time");
    const Ground_Point below = ground_point(r, orbit.julian_date);
    std::printf("\nPropagated orbit\n");
    std::printf("  Julian date          %.10f\n", orbit.julian_date);
    std::printf("  position             %.4f %.4f %.4f km\n", r.x, r.y, r.z);
    std::printf("  velocity             %.7f %.7f %.7f km/s\n", v.x, v.y, v.z);
    std::printf("  altitude             %.3f km\n", below.altitude_km);
    std::printf("  ground track point   latitude %.4f deg, longitude %.4f deg\n", below.latitude_deg,
                below.longitude_deg);
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
}
