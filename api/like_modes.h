#pragma once

#include "../device/protocol/modes.h"
#include "like_actuators.h"
#include "like_device.h"
#include "records/modes.h"

/// The API's mode records have the fields of the device's.
namespace zavra
{

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_DETUMBLING_MODE_PARAMETERS> =
    field_list<ZAVRA_100_Detumbling_Mode_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_SUN_POINTING_MODE_PARAMETERS> =
    field_list<ZAVRA_100_SunPointing_Mode_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_TARGET_POINTING_TOLERANCE_PARAMETERS> =
    field_list<ZAVRA_100_TargetPointing_Tolerance_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_TARGET_POINTING_CONST_VELOCITY_MODE_PARAMETERS> =
    field_list<ZAVRA_100_Earth_TargetPointing_Const_Velocity_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_TARGET_POINTING_FIXED_MODE_PARAMETERS> =
    field_list<ZAVRA_100_Earth_TargetPointing_Fixed_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_TARGET_POINTING_NADIR_MODE_PARAMETERS> =
    field_list<ZAVRA_100_NadirPointing_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_TARGET_POINTING_INERTIAL_MODE_PARAMETERS> =
    field_list<ZAVRA_100_TargetPointing_Inertial_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_KALMAN_FILTER_PARAMETERS> =
    field_list<ZAVRA_100_KalmanFilter_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_TARGET_POINTING_OPERATION_PARAMETERS> =
    field_list<ZAVRA_100_TargetPointing_Operation_Parameters>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_TARGET_POINTING_TARGET_PARAMETERS_TELEMETRY> =
    field_list<ZAVRA_100_TargetPointing_Target_Parameters_Telemetry>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_TARGET_POINTING_OPERATION_PARAMETERS_TELEMETRY> =
    field_list<ZAVRA_100_TargetPointing_Operation_Parameters_Telemetry>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_VECTOR3_XYZ_UINT16> = field_list<ZAVRA_100_Vector3_uint16>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_TARGET_POINTING_OPERATION_DATA_TELEMETRY> =
    field_list<ZAVRA_100_TargetPointing_Operation_Data_Telemetry>;

}
