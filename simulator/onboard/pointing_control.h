#pragma once

#include "guidance.h"

namespace zavra::simulator
{

/// How the satellite is turned from its target.
struct Pointing_Error
{
    Eigen::Vector3d rotation_rad; ///< Rotation vector from the target to the body
    Eigen::Vector3d rate_radps;   ///< Of the body relative to the target, body frame
};

Pointing_Error pointing_error(const Eigen::Quaterniond& attitude, const Eigen::Vector3d& rate_radps,
                              const Target& target);

/// What the actuators allow about one axis.
struct Slew_Limits
{
    double rate_radps;
    double acceleration_radps2;
};

/// The torque in N m on the body by the sliding controller, without the gyroscopic part: the rate relative to the
/// target is driven to the one that leads to it,
///
///     wanted rate = -min(k_1 angle, sqrt(acceleration angle), rate limit) along the error's axis,
///     torque = J (acceleration of the target and of the wanted rate - k_2 (rate - wanted rate)).
///
/// Near the target the error's two time constants are 1 / k_1 and 1 / k_2 (k_1, k_2 in 1/s).
Eigen::Vector3d sliding_torque(const Eigen::Matrix3d& inertia_kgm2,
                               const ZAVRA_100_Sliding_Controller_Parameters& parameters, const Pointing_Error& error,
                               const Eigen::Quaterniond& attitude, const Target& target, const Slew_Limits& limits);

}
