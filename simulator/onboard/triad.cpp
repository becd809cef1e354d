#include "triad.h"

#include <cmath>

namespace zavra::simulator
{

namespace
{

constexpr double least_angle_rad = 0.1;

double angle_between(const Eigen::Vector3d& a, const Eigen::Vector3d& b)
{
    return std::atan2(a.cross(b).norm(), a.dot(b));
}

/// Columns: the first direction, the normal of the two, and what completes them.
Eigen::Matrix3d frame(const Eigen::Vector3d& first, const Eigen::Vector3d& second)
{
    const Eigen::Vector3d normal = first.cross(second).normalized();
    Eigen::Matrix3d axes;
    axes << first, normal, first.cross(normal);
    return axes;
}

}

std::optional<Eigen::Quaterniond> triad(const Direction& first, const Direction& second, double tolerance_rad)
{
    const double in_body = angle_between(first.body, second.body);
    const double by_models = angle_between(first.inertial, second.inertial);
    if (std::sin(std::min(in_body, by_models)) < std::sin(least_angle_rad) ||
        std::sin(std::max(in_body, by_models)) < std::sin(least_angle_rad) ||
        std::abs(in_body - by_models) > tolerance_rad)
        return std::nullopt;
    const Eigen::Matrix3d inertial_from_body =
        frame(first.inertial, second.inertial) * frame(first.body, second.body).transpose();
    return Eigen::Quaterniond(inertial_from_body).normalized();
}

}
