#pragma once

#include "records/vectors.h"
#include "wire.h"

namespace zavra
{

template <>
inline constexpr auto field_list<ZAVRA_100_Vector3_float> = [](auto& v) {
    return List{Field{"X", v.x}, Field{"Y", v.y}, Field{"Z", v.z}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Vector6_float> = [](auto& v) {
    return List{Field{"X", v.x}, Field{"Y", v.y}, Field{"Z", v.z}, Field{"U", v.u}, Field{"V", v.v}, Field{"W", v.w}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Quaternion_float> = [](auto& q) {
    return List{Field{"Q_1", q.q_1}, Field{"Q_2", q.q_2}, Field{"Q_3", q.q_3}, Field{"Q_4", q.q_4}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Matrix3x3_float> = [](auto& m) {
    return List{Field{"M11", m.m11}, Field{"M12", m.m12}, Field{"M13", m.m13}, Field{"M21", m.m21}, Field{"M22", m.m22},
                Field{"M23", m.m23}, Field{"M31", m.m31}, Field{"M32", m.m32}, Field{"M33", m.m33}};
};

static_assert(wire_size<ZAVRA_100_Vector3_float> == 12 && wire_size<ZAVRA_100_Vector6_float> == 24 &&
              wire_size<ZAVRA_100_Quaternion_float> == 16 && wire_size<ZAVRA_100_Matrix3x3_float> == 36);

}
