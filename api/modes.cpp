#include "VELM_ZAVRA_API.h"

#include "../device/ZAVRA_100.h"
#include "../protocol/modes.h"
#include "call.h"

using namespace zavra;

namespace
{

constexpr const char* start_detumbling = "start operation mode detumbling";
constexpr const char* start_sun_pointing = "start operation mode sun pointing";
constexpr const char* start_const_velocity = "start operation mode target pointing earth constant velocity";
constexpr const char* start_earth_fix = "start operation mode target pointing earth fix";

void require(bool condition, const char* action_words, const char* reason)
{
    if (!condition)
        fail<VELM_ZAVRA_API_Exception>(failure(action_words, reason), refused);
}

template <class Parameters>
void require_epochs_in_order(const char* action_words, const Parameters& parameters)
{
    require(parameters.start_epoch_time <= parameters.stop_epoch_time, action_words,
            "START_EPOCH larger than STOP_EPOCH");
}

/// The float nearest to the limit may lie beyond it and is out then; NaN is outside of nothing.
bool within(double limit, float angle)
{
    const double value = angle;
    return !(value > limit || value < -limit);
}

void require_latitude(const char* action_words, float latitude)
{
    require(within(1.5707963267948966, latitude), action_words, "invalid LATITUDE");
}

void require_longitude(const char* action_words, float longitude)
{
    require(within(3.141592653589793, longitude), action_words, "invalid LONGITUDE");
}

}

void VELM_ZAVRA_API::Set_Operation_Mode_Idle()
{
    command(*device_, "goto idle mode", &ZAVRA_100::Set_OperationMode_Idle);
}

void VELM_ZAVRA_API::Set_Operation_Mode_Safe()
{
    command(*device_, "goto safe mode", &ZAVRA_100::Set_OperationMode_Safe);
}

void VELM_ZAVRA_API::Set_Operation_Mode_Measurement()
{
    command(*device_, "goto measurement mode", &ZAVRA_100::Set_OperationMode_Measurement);
}

void VELM_ZAVRA_API::Start_Operation_Mode_Detumbling(VELM_ZAVRA_API_DETUMBLING_MODE_PARAMETERS parameters)
{
    require_epochs_in_order(start_detumbling, parameters);
    command(*device_, start_detumbling, &ZAVRA_100::Start_OperationMode_Detumbling, parameters);
}

void VELM_ZAVRA_API::Stop_Operation_Mode_Detumbling()
{
    command(*device_, "stop operation mode detumbling", &ZAVRA_100::Stop_OperationMode_Detumbling);
}

void VELM_ZAVRA_API::Start_Operation_Mode_Sun_Pointing(VELM_ZAVRA_API_SUN_POINTING_MODE_PARAMETERS parameters)
{
    require_epochs_in_order(start_sun_pointing, parameters);
    command(*device_, start_sun_pointing, &ZAVRA_100::Start_OperationMode_Sun_Pointing, parameters);
}

void VELM_ZAVRA_API::Stop_Operation_Mode_Sun_Pointing()
{
    command(*device_, "stop operation mode sun pointing", &ZAVRA_100::Stop_OperationMode_Sun_Pointing);
}

void VELM_ZAVRA_API::Start_Target_Pointing_Earth_Const_Velocity_Mode(
    VELM_ZAVRA_API_TARGET_POINTING_CONST_VELOCITY_MODE_PARAMETERS parameters)
{
    require_epochs_in_order(start_const_velocity, parameters);
    require_latitude(start_const_velocity, parameters.start_latitude);
    require_latitude(start_const_velocity, parameters.stop_latitude);
    require_longitude(start_const_velocity, parameters.start_longitude);
    require_longitude(start_const_velocity, parameters.stop_longitude);
    command(*device_, start_const_velocity, &ZAVRA_100::Start_TargetPointing_Earth_Const_Velocity_Mode, parameters);
}

void VELM_ZAVRA_API::Stop_Target_Pointing_Earth_Const_Velocity_Mode()
{
    command(*device_, "stop operation mode target pointing earth constant velocity",
            &ZAVRA_100::Stop_TargetPointing_Earth_Const_Velocity_Mode);
}

void VELM_ZAVRA_API::Start_Target_Pointing_Earth_Fix_Mode(
    VELM_ZAVRA_API_TARGET_POINTING_FIXED_MODE_PARAMETERS parameters)
{
    require_latitude(start_earth_fix, parameters.target_latitude);
    require_longitude(start_earth_fix, parameters.target_longitude);
    command(*device_, start_earth_fix, &ZAVRA_100::Start_TargetPointing_Earth_Fix_Mode, parameters);
}

void VELM_ZAVRA_API::Stop_Target_Pointing_Earth_Fix_Mode()
{
    command(*device_, "stop operation mode target pointing earth fix", &ZAVRA_100::Stop_TargetPointing_Earth_Fix_Mode);
}

void VELM_ZAVRA_API::Start_Target_Pointing_Nadir_Mode(VELM_ZAVRA_API_TARGET_POINTING_NADIR_MODE_PARAMETERS parameters)
{
    command(*device_, "start operation mode target pointing nadir", &ZAVRA_100::Start_TargetPointing_Nadir_Mode,
            parameters);
}

void VELM_ZAVRA_API::Stop_Target_Pointing_Nadir_Mode()
{
    command(*device_, "stop operation mode target pointing nadir", &ZAVRA_100::Stop_TargetPointing_Nadir_Mode);
}

void VELM_ZAVRA_API::Start_Target_Pointing_Inertial_Mode(
    VELM_ZAVRA_API_TARGET_POINTING_INERTIAL_MODE_PARAMETERS parameters)
{
    command(*device_, "start operation mode target pointing inertial", &ZAVRA_100::Start_TargetPointing_Inertial_Mode,
            parameters);
}

void VELM_ZAVRA_API::Stop_Target_Pointing_Inertial_Mode()
{
    command(*device_, "stop operation mode target pointing inertial", &ZAVRA_100::Stop_TargetPointing_Inertial_Mode);
}

VELM_ZAVRA_API_TARGET_POINTING_TARGET_PARAMETERS_TELEMETRY
VELM_ZAVRA_API::Get_Target_Pointing_Target_Parameters_Telemetry()
{
    return query<VELM_ZAVRA_API_TARGET_POINTING_TARGET_PARAMETERS_TELEMETRY>(
        *device_, "get target pointing target telemetry", &ZAVRA_100::Get_TargetPointing_Target_Parameters_Telemetry);
}

VELM_ZAVRA_API_TARGET_POINTING_OPERATION_PARAMETERS_TELEMETRY
VELM_ZAVRA_API::Get_Target_Pointing_Operation_Parameters_Telemetry()
{
    return query<VELM_ZAVRA_API_TARGET_POINTING_OPERATION_PARAMETERS_TELEMETRY>(
        *device_, "get target pointing operation telemetry",
        &ZAVRA_100::Get_TargetPointing_Operation_Parameters_Telemetry);
}

VELM_ZAVRA_API_TARGET_POINTING_OPERATION_DATA_TELEMETRY
VELM_ZAVRA_API::Get_Target_Pointing_Operation_Data_Telemetry()
{
    return query<VELM_ZAVRA_API_TARGET_POINTING_OPERATION_DATA_TELEMETRY>(
        *device_, "get target pointing data telemetry", &ZAVRA_100::Get_TargetPointing_Operation_Data_Telemetry);
}

void VELM_ZAVRA_API::Set_Target_Pointing_Operation_Parameters(
    VELM_ZAVRA_API_TARGET_POINTING_OPERATION_PARAMETERS parameters)
{
    command(*device_, "set Target Pointing operation parameters", &ZAVRA_100::Set_TargetPointing_Operation_Parameters,
            parameters);
}

void VELM_ZAVRA_API::Set_Kalman_Filter_Parameters(VELM_ZAVRA_API_KALMAN_FILTER_PARAMETERS parameters)
{
    command(*device_, "set Kalman filter parameters", &ZAVRA_100::Set_KalmanFilter_Parameters, parameters);
}

VELM_ZAVRA_API_KALMAN_FILTER_PARAMETERS VELM_ZAVRA_API::Get_Kalman_Filter_Parameters()
{
    return query<VELM_ZAVRA_API_KALMAN_FILTER_PARAMETERS>(*device_, "get Kalman filter parameters",
                                                          &ZAVRA_100::Get_KalmanFilter_Parameters);
}
