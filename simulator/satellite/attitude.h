#pragma once

#include <Eigen/Geometry>

#include <cmath>

namespace zavra::simulator
{

/// An attitude is the unit quaternion q with v_body = A(q) v_inertial,
///
///     A = (q4^2 - |r|^2) I - 2 q4 [r x] + 2 r r^T,  r = (q1, q2, q3),
///
/// inertial being TEME. Eigen keeps q1 to q4 as x, y, z, w; the matrix that it makes of a quaternion is A transposed.
inline Eigen::Matrix3d body_from_inertial(const Eigen::Quaterniond& attitude)
{
    return attitude.toRotationMatrix().transpose();
}

/// The attitude after turning by a small or large rotation vector (rad, body frame).
inline Eigen::Quaterniond turned(const Eigen::Quaterniond& attitude, const Eigen::Vector3d& rotation)
{
    const double angle = rotation.norm();
    return angle > 0 ? attitude * Eigen::Quaterniond(Eigen::AngleAxisd(angle, rotation / angle)) : attitude;
}

/// The rotation vector of a quaternion, the shorter way round.
inline Eigen::Vector3d rotation_vector(const Eigen::Quaterniond& q)
{
    const double sine = q.vec().norm();
    if (sine == 0)
        return Eigen::Vector3d::Zero();
    const double angle = 2 * std::atan2(sine, std::abs(q.w()));
    return std::copysign(angle / sine, q.w()) * q.vec();
}

}
