#pragma once

#include "vectors.h"

/// @file
/// Reaction wheels and magnetorquers. Where no unit is given it is the unit's own, and the value passes unchanged.

/// One reaction wheel; the value is the wheel's index.
enum VELM_ZAVRA_API_REACTIONWHEELS : unsigned int {
    VELM_ZAVRA_API_REACTIONWHEEL_0 = 0,
    VELM_ZAVRA_API_REACTIONWHEEL_1 = 1,
    VELM_ZAVRA_API_REACTIONWHEEL_2 = 2,
    VELM_ZAVRA_API_REACTIONWHEEL_3 = 3,
    VELM_ZAVRA_API_REACTIONWHEEL_4 = 4,
    VELM_ZAVRA_API_REACTIONWHEEL_5 = 5
};

/// Configuration of one wheel.
struct VELM_ZAVRA_API_SINGLE_REACTIONWHEEL_PARAMETERS
{
    float moment_of_inertia;
    float max_speed;  ///< rad/s
    float max_torque; ///< N m
    float motor_constant;
    unsigned long long max_time_for_speed_measurement;
};

/// Speeds of the wheels 0 to 5 in rad/s.
struct VELM_ZAVRA_API_REACTIONWHEEL_SPEEDS
{
    float x;
    float y;
    float z;
    float u;
    float v;
    float w;
};

/// Torque target in the body frame, N m.
struct VELM_ZAVRA_API_REACTIONWHEEL_TORQUE
{
    float x;
    float y;
    float z;
};

/// Configuration of the whole array of wheels.
struct VELM_ZAVRA_API_REACTIONWHEEL_ARRAY_PARAMETERS
{
    unsigned int number_of_wheels; ///< wheels fitted
    unsigned int control_mode;     ///< code of the wheels' control mode; its values are the unit's
    float moment_of_inertia;       ///< one value for all wheels, as are the three that follow
    float max_speed;               ///< rad/s
    float max_torque;              ///< N m
    float motor_constant;
    unsigned long long update_interval;                  ///< ms
    unsigned long long max_valid_time_speed_measurement; ///< longest age of a speed measurement that is still valid
    /// [wheel][component]: the X or U, Y or V, and Z or W component of each wheel.
    float torque_distribution_matrix[6][3];
};

/// Configuration of the three magnetorquers.
struct VELM_ZAVRA_API_MAGNETORQUER_PARAMETERS
{
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT conv_factors_dipole_moment_to_current; ///< A per A m^2, for each axis
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT max_dipole_moment;                     ///< A m^2, for each axis
    VELM_ZAVRA_API_MATRIX3X3_FLOAT orientation_to_bf;                       ///< orientation to the body frame
    unsigned long long relax_time_x;                                        ///< relaxation time of the X coil
    unsigned long long relax_time_y;
    unsigned long long relax_time_z;
};
