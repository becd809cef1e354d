#include "eclipse.h"

#include "../orbit/frames.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zavra::simulator
{

double visible_fraction_of_sun(const Eigen::Vector3d& satellite_km, const Eigen::Vector3d& sun_km)
{
    constexpr double sun_radius_km = 695700.0;
    const Eigen::Vector3d to_sun = sun_km - satellite_km;
    const double sun = std::asin(sun_radius_km / to_sun.norm()); // apparent radii
    const double earth = std::asin(std::min(1.0, wgs84_equatorial_radius_km / satellite_km.norm()));
    const double apart =
        std::acos(std::clamp(-satellite_km.dot(to_sun) / (satellite_km.norm() * to_sun.norm()), -1.0, 1.0));

    if (apart >= sun + earth)
        return 1.0;
    if (apart <= earth - sun)
        return 0.0;
    if (apart <= sun - earth)
        return 1.0 - (earth * earth) / (sun * sun);

    // The chord through both intersections cuts a segment from either disc.
    const double to_chord = (apart * apart + sun * sun - earth * earth) / (2.0 * apart); // from the Sun's centre
    const double half_chord = std::sqrt(sun * sun - to_chord * to_chord);
    const double hidden = sun * sun * std::acos(to_chord / sun) +
                          earth * earth * std::acos((apart - to_chord) / earth) - apart * half_chord;
    return 1.0 - hidden / (std::numbers::pi * sun * sun);
}

}
