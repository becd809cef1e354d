#pragma once

#include "../protocol/actuators.h"

// The torque distribution matrix, whose entries the unit holds axis by axis and the API wheel by wheel. In the
// namespace of the records, where the copy of the records around them finds it.

namespace zavra
{

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

constexpr void copy_value(const ZAVRA_100_Matrix3x6_float& from, float (&to)[6][3])
{
    zavra::for_each_entry(from, to, [](const float& by_axis, float& by_wheel) { by_wheel = by_axis; });
}

constexpr void copy_value(const float (&from)[6][3], ZAVRA_100_Matrix3x6_float& to)
{
    zavra::for_each_entry(to, from, [](float& by_axis, const float& by_wheel) { by_axis = by_wheel; });
}
