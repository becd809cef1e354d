#pragma once

#include "../device/protocol/sensors.h"
#include "like_device.h"
#include "records/sensors.h"

namespace zavra
{

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_GYROSCOPE_PARAMETERS> = field_list<ZAVRA_100_Gyroscope_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_MAGNETOMETER_PARAMETERS> =
    field_list<ZAVRA_100_Magnetometer_Parameters>;

}
