#pragma once

#include "vectors.h"

/// @file
/// Parameters of the unit's attitude controllers. The units of gains, thresholds and update intervals are the unit's
/// own, as are the codes of `ctrl_actuator_cmd_if`, the actuator command interface that a controller drives; all of
/// them pass unchanged.

/// Axis of a single-axis controller; the value is the unit's axis code.
enum VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS : unsigned int {
    VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS_X = 0,
    VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS_Y = 1,
    VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS_Z = 2
};

/// Single-axis angular velocity controller.
struct VELM_ZAVRA_API_PID_CONTROLLER_PARAMETERS
{
    float k_p;   ///< proportional gain
    float k_i;   ///< integral gain
    float k_d;   ///< derivative gain
    float k_aw;  ///< anti-windup gain
    float th_aw; ///< anti-windup threshold
    unsigned int ctrl_actuator_cmd_if;
    unsigned long long update_interval;
};

/// Single-axis angle step controller: an inner and an outer loop, each with the gains of a PID controller.
struct VELM_ZAVRA_API_CASCADED_PID_CONTROLLER_PARAMETERS
{
    float k_p_in;
    float k_i_in;
    float k_d_in;
    float k_aw_in;
    float th_aw_in;
    float k_p_out;
    float k_i_out;
    float k_d_out;
    float k_aw_out;
    float th_aw_out;
    unsigned int ctrl_actuator_cmd_if;
    unsigned long long update_interval;
};

/// Three-axis B-dot controller, in its max and its proportional variant.
struct VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS
{
    float k; ///< gain
    unsigned int ctrl_actuator_cmd_if;
    unsigned long long update_interval;
};

/// Three-axis sun-pointing controller.
struct VELM_ZAVRA_API_SUN_POINTING_CONTROLLER_PARAMETERS
{
    float k_p;
    VELM_ZAVRA_API_MATRIX3X3_FLOAT k_v;
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT max_torque; ///< torque limit of each axis
    unsigned int ctrl_actuator_cmd_if;
    unsigned long long update_interval;
};

/// Three-axis sliding controller.
struct VELM_ZAVRA_API_SLIDING_CONTROLLER_PARAMETERS
{
    float k_1;
    float k_2;
    unsigned int ctrl_actuator_cmd_if;
    unsigned long long update_interval;
};
