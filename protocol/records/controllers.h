#pragma once

#include "vectors.h"

/// @file
/// Parameters of the unit's attitude controllers. The units of gains, thresholds and update intervals are the unit's
/// own, as are the codes of `ctrl_actuator_cmd_if`, the actuator command interface that a controller drives; all of
/// them pass unchanged.

/// Single-axis angular velocity controller.
struct ZAVRA_100_PID_Controller_Parameters
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
struct ZAVRA_100_Cascaded_PID_Controller_Parameters
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
struct ZAVRA_100_BDot_Controller_Parameters
{
    float k; ///< gain
    unsigned int ctrl_actuator_cmd_if;
    unsigned long long update_interval;
};

/// Three-axis sun-pointing controller.
struct ZAVRA_100_SunPointing_Controller_Parameters
{
    float k_p;
    ZAVRA_100_Matrix3x3_float k_v;
    ZAVRA_100_Vector3_float max_torque; ///< torque limit of each axis
    unsigned int ctrl_actuator_cmd_if;
    unsigned long long update_interval;
};

/// Three-axis sliding controller.
struct ZAVRA_100_Sliding_Controller_Parameters
{
    float k_1;
    float k_2;
    unsigned int ctrl_actuator_cmd_if;
    unsigned long long update_interval;
};
