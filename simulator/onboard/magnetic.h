#pragma once

#include <Eigen/Geometry>

namespace zavra::simulator
{

/// The dipole moment whose torque in the field is as near as it can be to the one wanted: the part across the field.
inline Eigen::Vector3d dipole_for(const Eigen::Vector3d& torque_nm, const Eigen::Vector3d& field_t)
{
    const double square = field_t.squaredNorm();
    return square > 0 ? Eigen::Vector3d(field_t.cross(torque_nm) / square) : Eigen::Vector3d::Zero();
}

/// Shortened until no component exceeds its limit; its direction stays.
inline Eigen::Vector3d shortened(const Eigen::Vector3d& vector, const Eigen::Vector3d& limit)
{
    const double excess = (vector.array().abs() / limit.array().max(1e-30)).maxCoeff();
    return excess > 1 ? Eigen::Vector3d(vector / excess) : vector;
}

}
