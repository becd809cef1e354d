#include "VELM_ZAVRA_API.h"

#include "../device/ZAVRA_100.h"
#include "../protocol/controllers.h"
#include "call.h"

using namespace zavra;

void VELM_ZAVRA_API::Set_SingleAxis_AngularVelocity_Controller_Parameters(
    VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis, VELM_ZAVRA_API_PID_CONTROLLER_PARAMETERS parameters)
{
    command(*device_, "Set Single-Axis Angular Velocity Controller Parameters",
            &ZAVRA_100::Set_SingleAxis_AngularVelocity_Controller_Parameters, axis, parameters);
}

VELM_ZAVRA_API_PID_CONTROLLER_PARAMETERS
VELM_ZAVRA_API::Get_SingleAxis_AngularVelocity_Controller_Parameters(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis)
{
    return query<VELM_ZAVRA_API_PID_CONTROLLER_PARAMETERS>(
        *device_, "Get Single-Axis Angular Velocity Controller Parameters",
        &ZAVRA_100::Get_SingleAxis_AngularVelocity_Controller_Parameters, axis);
}

void VELM_ZAVRA_API::Start_SingleAxis_AngularVelocity_Controller(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis,
                                                                 float target)
{
    command(*device_, "Start Single-Axis Angular Velocity Controller",
            &ZAVRA_100::Start_SingleAxis_AngularVelocity_Controller, axis, target);
}

void VELM_ZAVRA_API::Stop_SingleAxis_AngularVelocity_Controller(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis)
{
    command(*device_, "Stop Single-Axis Angular Velocity Controller",
            &ZAVRA_100::Stop_SingleAxis_AngularVelocity_Controller, axis);
}

void VELM_ZAVRA_API::Set_SingleAxis_AngleStep_Controller_Parameters(
    VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis, VELM_ZAVRA_API_CASCADED_PID_CONTROLLER_PARAMETERS parameters)
{
    command(*device_, "Set Single-Axis Angle Step Controller Parameters",
            &ZAVRA_100::Set_SingleAxis_AngleStep_Controller_Parameters, axis, parameters);
}

VELM_ZAVRA_API_CASCADED_PID_CONTROLLER_PARAMETERS
VELM_ZAVRA_API::Get_SingleAxis_AngleStep_Controller_Parameters(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis)
{
    return query<VELM_ZAVRA_API_CASCADED_PID_CONTROLLER_PARAMETERS>(
        *device_, "Get Single-Axis Angle Step Controller Parameters",
        &ZAVRA_100::Get_SingleAxis_AngleStep_Controller_Parameters, axis);
}

void VELM_ZAVRA_API::Start_SingleAxis_AngleStep_Controller(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis,
                                                           float target)
{
    command(*device_, "Start Single-Axis Angle Step Controller", &ZAVRA_100::Start_SingleAxis_AngleStep_Controller,
            axis, target);
}

void VELM_ZAVRA_API::Stop_SingleAxis_AngleStep_Controller(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis)
{
    command(*device_, "Stop Single-Axis Angle Step Controller", &ZAVRA_100::Stop_SingleAxis_AngleStep_Controller, axis);
}

void VELM_ZAVRA_API::Set_ThreeAxis_BDot_Controller_Max_Parameters(VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS parameters)
{
    command(*device_, "Set Three-Axis B-Dot Controller Max Parameters",
            &ZAVRA_100::Set_ThreeAxis_BDot_Controller_Max_Parameters, parameters);
}

VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS VELM_ZAVRA_API::Get_ThreeAxis_BDot_Controller_Max_Parameters()
{
    return query<VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS>(*device_, "Get Three-Axis B-Dot Controller Max Parameters",
                                                            &ZAVRA_100::Get_ThreeAxis_BDot_Controller_Max_Parameters);
}

void VELM_ZAVRA_API::Set_ThreeAxis_BDot_Controller_Proportional_Parameters(
    VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS parameters)
{
    command(*device_, "Set Three-Axis B-Dot Controller Proportional Parameters",
            &ZAVRA_100::Set_ThreeAxis_BDot_Controller_Proportional_Parameters, parameters);
}

VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS VELM_ZAVRA_API::Get_ThreeAxis_BDot_Controller_Proportional_Parameters()
{
    return query<VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS>(
        *device_, "Get Three-Axis B-Dot Controller Proportional Parameters",
        &ZAVRA_100::Get_ThreeAxis_BDot_Controller_Proportional_Parameters);
}

void VELM_ZAVRA_API::Set_ThreeAxis_SunPointing_Controller_Parameters(
    VELM_ZAVRA_API_SUN_POINTING_CONTROLLER_PARAMETERS parameters)
{
    command(*device_, "Set Three-Axis Sun-Pointing Controller Parameters",
            &ZAVRA_100::Set_ThreeAxis_SunPointing_Controller_Parameters, parameters);
}

VELM_ZAVRA_API_SUN_POINTING_CONTROLLER_PARAMETERS VELM_ZAVRA_API::Get_ThreeAxis_SunPointing_Controller_Parameters()
{
    return query<VELM_ZAVRA_API_SUN_POINTING_CONTROLLER_PARAMETERS>(
        *device_, "Get Three-Axis Sun-Pointing Controller Parameters",
        &ZAVRA_100::Get_ThreeAxis_SunPointing_Controller_Parameters);
}

void VELM_ZAVRA_API::Set_ThreeAxis_Sliding_Controller_Parameters(
    VELM_ZAVRA_API_SLIDING_CONTROLLER_PARAMETERS parameters)
{
    command(*device_, "Set Three-Axis Sliding Controller Parameters",
            &ZAVRA_100::Set_ThreeAxis_Sliding_Controller_Parameters, parameters);
}

VELM_ZAVRA_API_SLIDING_CONTROLLER_PARAMETERS VELM_ZAVRA_API::Get_ThreeAxis_Sliding_Controller_Parameters()
{
    return query<VELM_ZAVRA_API_SLIDING_CONTROLLER_PARAMETERS>(*device_, "Get Three-Axis Sliding Controller Parameters",
                                                               &ZAVRA_100::Get_ThreeAxis_Sliding_Controller_Parameters);
}
