#include "star_tracker.h"

namespace zavra::simulator
{

namespace
{

constexpr int number_of_stars = 2000; // of magnitude 5 or so and brighter: some 14 in the field of view

double angle_between(const Eigen::Vector3d& a, const Eigen::Vector3d& b)
{
    return std::atan2(a.cross(b).norm(), a.dot(b));
}

bool sees(const Satellite& truth, const Star_Tracker_Settings& settings)
{
    const Surroundings& around = truth.surroundings();
    const double distance = around.position_km.norm();
    constexpr double earth_radius_km = 6378.137;
    const double earth = std::asin(std::min(earth_radius_km / distance, 1.0));
    const auto away_from = [&](const Eigen::Vector3d& direction, double angle) {
        return angle_between(settings.axis, truth.in_body(direction)) >= angle;
    };
    return !settings.failed &&
           (settings.max_rate_radps == 0 || truth.angular_velocity_radps().norm() <= settings.max_rate_radps) &&
           (around.sunlight == 0 || away_from(around.sun_vector, settings.sun_exclusion_rad)) &&
           away_from(-around.position_km, earth + settings.earth_exclusion_rad);
}

const std::vector<Eigen::Vector3d>& stars()
{
    static const std::vector<Eigen::Vector3d> all = [] {
        Random random{0, 0};
        std::vector<Eigen::Vector3d> made;
        for (int i = 0; i < number_of_stars; ++i)
            made.push_back(random.normal_vector().normalized());
        return made;
    }();
    return all;
}

}

void Star_Tracker::measure(const Satellite& truth, const Star_Tracker_Settings& settings,
                           Measured<Eigen::Quaterniond>& attitude)
{
    // x, y, z of the detector: any two axes across the line of sight.
    const Eigen::Vector3d x = settings.axis.unitOrthogonal();
    Eigen::Matrix3d to_body;
    to_body << x, settings.axis.cross(x), settings.axis;
    const Eigen::Vector3d sigma{settings.noise_across_rad, settings.noise_across_rad, settings.noise_along_rad};
    const Eigen::Vector3d noise = to_body * sigma.cwiseProduct(noise_.normal_vector());
    sees_ = attitude.valid = sees(truth, settings);
    if (!sees_)
        return;
    attitude.value = turned(truth.attitude(), noise);
    attitude.time = truth.time();
    from_inertial_ = to_body.transpose() * body_from_inertial(truth.attitude());
}

std::vector<Star_Tracker::Event> Star_Tracker::events(std::size_t most) const
{
    std::vector<Event> seen;
    if (!sees_)
        return seen;
    const Eigen::Vector3d axis = from_inertial_.row(2);
    for (const Eigen::Vector3d& star : stars()) {
        if (seen.size() == most)
            break;
        if (star.dot(axis) < std::cos(half_field_of_view_rad))
            continue;
        const Eigen::Vector3d on_detector = focal_length_pixels * (from_inertial_ * star).hnormalized().homogeneous();
        seen.push_back(
            {static_cast<int>(std::lround(on_detector.x())), static_cast<int>(std::lround(on_detector.y()))});
    }
    return seen;
}

}
