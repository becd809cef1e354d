#include "pointing_control.h"

#include "../satellite/attitude.h"

#include <cmath>

namespace zavra::simulator
{

Pointing_Error pointing_error(const Eigen::Quaterniond& attitude, const Eigen::Vector3d& rate_radps,
                              const Target& target)
{
    const Eigen::Quaterniond from_target = target.attitude.conjugate() * attitude;
    return {rotation_vector(from_target), rate_radps - from_target.conjugate() * target.rate_radps};
}

Eigen::Vector3d sliding_torque(const Eigen::Matrix3d& inertia_kgm2,
                               const ZAVRA_100_Sliding_Controller_Parameters& parameters, const Pointing_Error& error,
                               const Eigen::Quaterniond& attitude, const Target& target, const Slew_Limits& limits)
{
    const double angle = error.rotation_rad.norm();
    const Eigen::Vector3d axis = angle > 0 ? Eigen::Vector3d(error.rotation_rad / angle) : Eigen::Vector3d::Zero();
    const double braking = std::sqrt(limits.acceleration_radps2 * angle);
    double wanted = double{parameters.k_1} * angle;
    double slope = double{parameters.k_1}; // its derivative by the angle
    if (wanted > braking) {
        wanted = braking;
        slope = limits.acceleration_radps2 / (2 * braking);
    }
    if (wanted > limits.rate_radps) {
        wanted = limits.rate_radps;
        slope = 0;
    }
    const double along = axis.dot(error.rate_radps);
    const double turning = angle > 0 ? wanted / angle : 0;
    const Eigen::Vector3d wanted_change = -slope * along * axis - turning * (error.rate_radps - along * axis);

    const Eigen::Quaterniond to_body = attitude.conjugate() * target.attitude;
    const Eigen::Vector3d target_change =
        to_body * target.acceleration_radps2 - error.rate_radps.cross(to_body * target.rate_radps);
    return inertia_kgm2 * (target_change + wanted_change - double{parameters.k_2} * (error.rate_radps + wanted * axis));
}

}
