#pragma once

#include "../device/protocol/vectors.h"
#include "records/vectors.h"

/// The API's shared records have the fields of the device's.
namespace zavra
{

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT> = field_list<ZAVRA_100_Vector3_float>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_QUATERNION_FLOAT> = field_list<ZAVRA_100_Quaternion_float>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_MATRIX3X3_FLOAT> = field_list<ZAVRA_100_Matrix3x3_float>;

}
