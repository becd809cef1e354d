#pragma once

#include "../records/vectors.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

/// @file
/// Attitudes and angles. An attitude is a quaternion that turns inertial into body coordinates, its scalar is q_4: a
/// body that has turned about the unit vector e by the angle a has (q_1, q_2, q_3) = e sin(a/2) and q_4 = cos(a/2), and
///
///     v_body = ((q_4^2 - |q|^2) I + 2 q q^T - 2 q_4 [q x]) v_inertial    where q is (q_1, q_2, q_3)
///
/// q and -q are the same attitude. Angles are radians; what is computed is computed in double precision.

namespace velm_zavra
{

constexpr double pi = 3.141592653589793;

constexpr double radians(double degrees)
{
    return degrees * (pi / 180.0);
}

constexpr double degrees(double radians)
{
    return radians * (180.0 / pi);
}

/// The order of the components is that of their names, which is not that of the record's members.
inline VELM_ZAVRA_API_QUATERNION_FLOAT quaternion(double q_1, double q_2, double q_3, double q_4)
{
    VELM_ZAVRA_API_QUATERNION_FLOAT q;
    q.q_1 = static_cast<float>(q_1);
    q.q_2 = static_cast<float>(q_2);
    q.q_3 = static_cast<float>(q_3);
    q.q_4 = static_cast<float>(q_4);
    return q;
}

inline VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT vector(double x, double y, double z)
{
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

/// With the length 1.
/// @throws std::invalid_argument when all components are 0, or one is not finite
inline VELM_ZAVRA_API_QUATERNION_FLOAT normalized(const VELM_ZAVRA_API_QUATERNION_FLOAT& q)
{
    const double a = q.q_1, b = q.q_2, c = q.q_3, d = q.q_4;
    const double length = std::sqrt(a * a + b * b + c * c + d * d);
    if (!(length > 0 && std::isfinite(length)))
        throw std::invalid_argument("a quaternion without direction");
    return quaternion(a / length, b / length, c / length, d / length);
}

/// The attitude of a body that has turned about an axis, by the right-hand rule.
/// @param axis  of any length
/// @throws std::invalid_argument when the axis has no direction
inline VELM_ZAVRA_API_QUATERNION_FLOAT turned(const VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT& axis, double angle)
{
    const double x = axis.x, y = axis.y, z = axis.z;
    const double length = std::sqrt(x * x + y * y + z * z);
    if (!(length > 0 && std::isfinite(length)))
        throw std::invalid_argument("an axis without direction");
    const double s = std::sin(angle / 2) / length;
    return quaternion(x * s, y * s, z * s, std::cos(angle / 2));
}

/// Turns body into inertial coordinates.
inline VELM_ZAVRA_API_QUATERNION_FLOAT inverse(const VELM_ZAVRA_API_QUATERNION_FLOAT& q)
{
    return quaternion(-q.q_1, -q.q_2, -q.q_3, q.q_4);
}

/// The turn `first`, and then the turn `second` seen from where `first` has led:
/// rotate(compose(first, second), v) is rotate(second, rotate(first, v)).
inline VELM_ZAVRA_API_QUATERNION_FLOAT compose(const VELM_ZAVRA_API_QUATERNION_FLOAT& first,
                                               const VELM_ZAVRA_API_QUATERNION_FLOAT& second)
{
    const double a1 = first.q_1, a2 = first.q_2, a3 = first.q_3, a4 = first.q_4;
    const double b1 = second.q_1, b2 = second.q_2, b3 = second.q_3, b4 = second.q_4;
    return quaternion(a4 * b1 + a1 * b4 + a2 * b3 - a3 * b2, a4 * b2 - a1 * b3 + a2 * b4 + a3 * b1,
                      a4 * b3 + a1 * b2 - a2 * b1 + a3 * b4, a4 * b4 - a1 * b1 - a2 * b2 - a3 * b3);
}

namespace detail
{

/// What turns inertial into body coordinates.
struct Rotation
{
    double a[3][3];

    explicit Rotation(const VELM_ZAVRA_API_QUATERNION_FLOAT& quaternion)
    {
        const double q1 = quaternion.q_1, q2 = quaternion.q_2, q3 = quaternion.q_3, q4 = quaternion.q_4;
        const double rows[3][3] = {
            {q1 * q1 - q2 * q2 - q3 * q3 + q4 * q4, 2 * (q1 * q2 + q3 * q4), 2 * (q1 * q3 - q2 * q4)},
            {2 * (q1 * q2 - q3 * q4), -q1 * q1 + q2 * q2 - q3 * q3 + q4 * q4, 2 * (q2 * q3 + q1 * q4)},
            {2 * (q1 * q3 + q2 * q4), 2 * (q2 * q3 - q1 * q4), -q1 * q1 - q2 * q2 + q3 * q3 + q4 * q4}};
        std::copy(&rows[0][0], &rows[0][0] + 9, &a[0][0]);
    }
};

}

/// @param attitude  of length 1
/// @param inertial  inertial coordinates
/// @return body coordinates; for the other way, rotate(inverse(attitude), body)
inline VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT rotate(const VELM_ZAVRA_API_QUATERNION_FLOAT& attitude,
                                               const VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT& inertial)
{
    const detail::Rotation r(attitude);
    const double x = inertial.x, y = inertial.y, z = inertial.z;
    return vector(r.a[0][0] * x + r.a[0][1] * y + r.a[0][2] * z, r.a[1][0] * x + r.a[1][1] * y + r.a[1][2] * z,
                  r.a[2][0] * x + r.a[2][1] * y + r.a[2][2] * z);
}

/// Turns one after the other: about z by yaw, about the new y by pitch, about the new x by roll (3-2-1).
struct Euler_Angles
{
    double yaw;   ///< within +-pi
    double pitch; ///< within +-pi/2
    double roll;  ///< within +-pi
};

inline VELM_ZAVRA_API_QUATERNION_FLOAT quaternion(const Euler_Angles& angles)
{
    return compose(compose(turned(vector(0, 0, 1), angles.yaw), turned(vector(0, 1, 0), angles.pitch)),
                   turned(vector(1, 0, 0), angles.roll));
}

/// @param attitude  of length 1. Within 0.06 degrees of pitch +-pi/2, yaw and roll are one turn, and roll is given as 0
inline Euler_Angles euler_angles(const VELM_ZAVRA_API_QUATERNION_FLOAT& attitude)
{
    const detail::Rotation r(attitude);
    const double sine = std::max(-1.0, std::min(1.0, -r.a[0][2]));
    if (std::fabs(sine) > 0.9999995)
        return {std::atan2(-r.a[1][0], r.a[1][1]), std::asin(sine), 0.0};
    return {std::atan2(r.a[0][1], r.a[0][0]), std::asin(sine), std::atan2(r.a[1][2], r.a[2][2])};
}

/// @return the angle of the one turn from an attitude to another, 0 to pi
inline double angle_between(const VELM_ZAVRA_API_QUATERNION_FLOAT& from, const VELM_ZAVRA_API_QUATERNION_FLOAT& to)
{
    const VELM_ZAVRA_API_QUATERNION_FLOAT turn = compose(inverse(from), to);
    const double x = turn.q_1, y = turn.q_2, z = turn.q_3, scalar = turn.q_4;
    return 2 * std::atan2(std::sqrt(x * x + y * y + z * z), std::fabs(scalar));
}

/// @return the angle between two directions, 0 to pi
inline double angle_between(const VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT& a, const VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT& b)
{
    const double ax = a.x, ay = a.y, az = a.z, bx = b.x, by = b.y, bz = b.z;
    const double x = ay * bz - az * by, y = az * bx - ax * bz, z = ax * by - ay * bx;
    return std::atan2(std::sqrt(x * x + y * y + z * z), ax * bx + ay * by + az * bz);
}

}
