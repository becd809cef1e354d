#pragma once

#include "../device/protocol/actuators.h"
#include "like_device.h"
#include "records/actuators.h"

namespace zavra
{

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_SINGLE_REACTIONWHEEL_PARAMETERS> =
    field_list<ZAVRA_100_Single_Reactionwheel_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_REACTIONWHEEL_SPEEDS> = field_list<ZAVRA_100_Vector6_float>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_REACTIONWHEEL_TORQUE> = field_list<ZAVRA_100_Vector3_float>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_REACTIONWHEEL_ARRAY_PARAMETERS> =
    field_list<ZAVRA_100_Reactionwheel_Array_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_MAGNETORQUER_PARAMETERS> =
    field_list<ZAVRA_100_Magnetorquer_Parameters>;

/// Pairs the entries of the torque distribution matrix: the unit holds them axis by axis, the API wheel by wheel.
template <class By_Axis, class By_Wheel, class Action>
constexpr void for_each_entry(By_Axis& by_axis, By_Wheel& by_wheel, Action&& action)
{
    int entry = 0;
    for_each_field(fields(by_axis), [&](const auto& field) {
        action(field.value, by_wheel[entry % 6][entry / 6]);
        ++entry;
    });
}

}

// In the namespace of the records, where the copy of the records around them finds them.

constexpr void copy_value(const ZAVRA_100_Matrix3x6_float& from, float (&to)[6][3])
{
    zavra::for_each_entry(from, to, [](const float& by_axis, float& by_wheel) { by_wheel = by_axis; });
}

constexpr void copy_value(const float (&from)[6][3], ZAVRA_100_Matrix3x6_float& to)
{
    zavra::for_each_entry(to, from, [](float& by_axis, const float& by_wheel) { by_axis = by_wheel; });
}
