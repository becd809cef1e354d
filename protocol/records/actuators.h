#pragma once

#include "vectors.h"

/// @file
/// Reaction wheels and magnetorquers. Where no unit is given it is the unit's own, and the value passes unchanged.

/// One reaction wheel.
struct ZAVRA_100_Single_Reactionwheel_Parameters
{
    float moment_of_inertia;
    float max_speed;  ///< rad/s
    float max_torque; ///< N m
    float motor_constant;
    unsigned long long max_time_for_speed_measurement;
};

/// 3x6 matrix; mRC is the element in row R (axis) and column C (wheel), both counted from 0.
struct ZAVRA_100_Matrix3x6_float
{
    float m00;
    float m01;
    float m02;
    float m03;
    float m04;
    float m05;
    float m10;
    float m11;
    float m12;
    float m13;
    float m14;
    float m15;
    float m20;
    float m21;
    float m22;
    float m23;
    float m24;
    float m25;
};

/// The whole array of reaction wheels.
struct ZAVRA_100_Reactionwheel_Array_Parameters
{
    unsigned int number_of_wheels; ///< wheels fitted
    unsigned int control_mode;     ///< code of the wheels' control mode; its values are the unit's
    float moment_of_inertia;       ///< one value for all wheels, as are the three that follow
    float max_speed;               ///< rad/s
    float max_torque;              ///< N m
    float motor_constant;
    unsigned long long update_interval;                  ///< ms
    unsigned long long max_valid_time_speed_measurement; ///< longest age of a speed measurement that is still valid
    /// Row 0 holds the X (wheels 0 to 2) and U (wheels 3 to 5) components, row 1 Y and V, row 2 Z and W.
    ZAVRA_100_Matrix3x6_float torque_distribution_matrix;
};

/// The three magnetorquers.
struct ZAVRA_100_Magnetorquer_Parameters
{
    ZAVRA_100_Vector3_float conv_factors_dipole_moment_to_current; ///< A per A m^2, for each axis
    ZAVRA_100_Vector3_float max_dipole_moment;                     ///< A m^2, for each axis
    ZAVRA_100_Matrix3x3_float orientation_to_bf;                   ///< orientation to the body frame
    unsigned long long relax_time_x;                               ///< relaxation time of the X coil
    unsigned long long relax_time_y;
    unsigned long long relax_time_z;
};
