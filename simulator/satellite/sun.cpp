#include "sun.h"

#include <cmath>
#include <numbers>

namespace zavra::simulator
{

Eigen::Vector3d sun_position(const Julian_Date& date)
{
    constexpr double rad_per_degree = std::numbers::pi / 180.0;
    constexpr double astronomical_unit_km = 149597870.7;
    const double days = date.days_since_j2000();
    const double mean_longitude = 280.460 + 0.9856474 * days;
    const double mean_anomaly = (357.528 + 0.9856003 * days) * rad_per_degree;
    const double ecliptic_longitude =
        (mean_longitude + 1.915 * std::sin(mean_anomaly) + 0.020 * std::sin(2.0 * mean_anomaly)) * rad_per_degree;
    const double obliquity = (23.439 - 0.0000004 * days) * rad_per_degree;
    const double distance = 1.00014 - 0.01671 * std::cos(mean_anomaly) - 0.00014 * std::cos(2.0 * mean_anomaly);
    return distance * astronomical_unit_km *
           Eigen::Vector3d(std::cos(ecliptic_longitude), std::cos(obliquity) * std::sin(ecliptic_longitude),
                           std::sin(obliquity) * std::sin(ecliptic_longitude));
}

}
