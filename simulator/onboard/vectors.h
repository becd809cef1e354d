#pragma once

#include "../../protocol/records/vectors.h"

#include <Eigen/Geometry>

namespace zavra::simulator
{

// The protocol's vectors as those that are calculated with, and back.

inline Eigen::Vector3d wide(const ZAVRA_100_Vector3_float& v)
{
    return {v.x, v.y, v.z};
}

inline Eigen::Matrix3d wide(const ZAVRA_100_Matrix3x3_float& m)
{
    Eigen::Matrix3d wide;
    wide << m.m11, m.m12, m.m13, m.m21, m.m22, m.m23, m.m31, m.m32, m.m33;
    return wide;
}

inline ZAVRA_100_Vector3_float narrow(const Eigen::Vector3d& v)
{
    const Eigen::Vector3f f = v.cast<float>();
    return {f.x(), f.y(), f.z()};
}

inline ZAVRA_100_Quaternion_float narrow(const Eigen::Quaterniond& q)
{
    const Eigen::Quaternionf f = q.cast<float>();
    return {f.x(), f.y(), f.z(), f.w()};
}

}
