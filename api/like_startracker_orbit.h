#pragma once

#include "../device/protocol/startracker_orbit.h"
#include "like_device.h"
#include "records/startracker_orbit.h"

namespace zavra
{

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_STARTRACKER_QUATERNION> = field_list<ZAVRA_100_Startracker_Quaternion>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_ORBIT_TLE_DATA> = field_list<ZAVRA_100_Orbit_TLE_Data>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_ORBIT_PROPAGATION_DATA> = field_list<ZAVRA_100_Orbit_Propagation_Data>;

}
