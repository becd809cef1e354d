#pragma once

#include "../device/protocol/controllers.h"
#include "like_device.h"
#include "records/controllers.h"

namespace zavra
{

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_PID_CONTROLLER_PARAMETERS> =
    field_list<ZAVRA_100_PID_Controller_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_CASCADED_PID_CONTROLLER_PARAMETERS> =
    field_list<ZAVRA_100_Cascaded_PID_Controller_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS> =
    field_list<ZAVRA_100_BDot_Controller_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_SUN_POINTING_CONTROLLER_PARAMETERS> =
    field_list<ZAVRA_100_SunPointing_Controller_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_SLIDING_CONTROLLER_PARAMETERS> =
    field_list<ZAVRA_100_Sliding_Controller_Parameters>;

}
