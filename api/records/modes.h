#pragma once

#include "actuators.h"
#include "vectors.h"

/// @file
/// What an operation mode is told and what it reports. Epoch times are milliseconds since 01.01.1970 0:00:00 UTC;
/// intervals, offsets and waits are milliseconds; latitudes and longitudes are radians; bf is the body frame. The
/// meaning of the words determination_mode, general_mode, control_mode, main_register, current_state and state_target
/// is the unit's own.

/// When the rates of the satellite are to be damped.
struct VELM_ZAVRA_API_DETUMBLING_MODE_PARAMETERS
{
    unsigned long long start_epoch_time;
    unsigned long long stop_epoch_time; ///< not before start_epoch_time
};

/// When a body axis is to point at the sun, and which.
struct VELM_ZAVRA_API_SUN_POINTING_MODE_PARAMETERS
{
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT los_vector_bf; ///< line of sight
    unsigned long long start_epoch_time;
    unsigned long long stop_epoch_time; ///< not before start_epoch_time
};

/// How closely the satellite has to be aligned before it starts to follow its target.
struct VELM_ZAVRA_API_TARGET_POINTING_TOLERANCE_PARAMETERS
{
    float prealignment_angle_tolerance_rad;
    float prealignment_angle_tolerance_percent;
    float prealignment_angular_velocity_tolerance_radps; ///< rad/s
    float prealignment_target_threshold_rad;
};

/// Pointing at a point that moves over the Earth from a start to a stop position.
struct VELM_ZAVRA_API_TARGET_POINTING_CONST_VELOCITY_MODE_PARAMETERS
{
    unsigned int determination_mode;
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT los_vector_bf;    ///< line of sight
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT flight_vector_bf; ///< axis that points in the direction of flight
    float start_latitude;                              ///< within +-pi/2
    float stop_latitude;                               ///< within +-pi/2
    float start_longitude;                             ///< within +-pi
    float stop_longitude;                              ///< within +-pi
    unsigned long long start_epoch_time;
    unsigned long long stop_epoch_time; ///< not before start_epoch_time
    unsigned long long offset_time;
    unsigned long long update_interval;
    VELM_ZAVRA_API_TARGET_POINTING_TOLERANCE_PARAMETERS tolerance_parameters;
};

/// Pointing at a point that stays where it is on the Earth.
struct VELM_ZAVRA_API_TARGET_POINTING_FIXED_MODE_PARAMETERS
{
    unsigned int determination_mode;
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT los_vector_bf;    ///< line of sight
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT flight_vector_bf; ///< axis that points in the direction of flight
    float target_latitude;                             ///< within +-pi/2
    float target_longitude;                            ///< within +-pi
    unsigned long long offset_time;
    unsigned long long update_interval;
    VELM_ZAVRA_API_TARGET_POINTING_TOLERANCE_PARAMETERS tolerance_parameters;
};

/// Pointing straight down.
struct VELM_ZAVRA_API_TARGET_POINTING_NADIR_MODE_PARAMETERS
{
    unsigned int determination_mode;
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT los_vector_bf;    ///< line of sight
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT flight_vector_bf; ///< axis that points in the direction of flight
    unsigned long long offset_time;
    unsigned long long update_interval;
    VELM_ZAVRA_API_TARGET_POINTING_TOLERANCE_PARAMETERS tolerance_parameters;
};

/// Pointing in a fixed inertial direction.
struct VELM_ZAVRA_API_TARGET_POINTING_INERTIAL_MODE_PARAMETERS
{
    unsigned int determination_mode;
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT los_vector_bf;    ///< line of sight
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT flight_vector_bf; ///< axis that points in the direction of flight
    unsigned int degree;                             ///< of the attitude polynomial: 6; every other value is sent as 0
    VELM_ZAVRA_API_QUATERNION_FLOAT base_quaternion; ///< the attitude to hold
    unsigned long long start_epoch_time;
    unsigned long long stop_epoch_time;
    unsigned long long offset_time;
    unsigned long long update_interval;
};

/// Variances of the attitude Kalman filter.
struct VELM_ZAVRA_API_KALMAN_FILTER_PARAMETERS
{
    double bias_process_variance;
    double attitude_process_variance;
    double sun_mag_measurement_variance;
    double sts_measurement_variance; ///< star tracker
    unsigned char disable_bias;      ///< not 0: the gyroscopes' bias is not estimated
};

/// Tolerances and timing that all target-pointing modes share.
struct VELM_ZAVRA_API_TARGET_POINTING_OPERATION_PARAMETERS
{
    unsigned long long update_interval;
    float angle_tolerance_rad;
    float angle_tolerance_perc;              ///< percent
    float speed_tolerance_radps;             ///< rad/s
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT angles; ///< one per axis; the meaning is the unit's own
    unsigned long long wait_time;
};

/// The target that was started last.
struct VELM_ZAVRA_API_TARGET_POINTING_TARGET_PARAMETERS_TELEMETRY
{
    unsigned long long current_epoch_time_msec;
    unsigned long long start_epoch_time;
    unsigned long long stop_epoch_time;
    unsigned long long offset_time_msec;
    unsigned int control_mode;
    VELM_ZAVRA_API_MATRIX3X3_FLOAT rotation_matrix;
    float polynomial_coeff[28]; ///< of the inertial attitude: seven for each quaternion component
    VELM_ZAVRA_API_QUATERNION_FLOAT start_quaternion;
    VELM_ZAVRA_API_QUATERNION_FLOAT end_quaternion;
    float start_latitude;
    float start_longitude;
    float stop_latitude;
    float stop_longitude;
};

/// The parameters that target pointing works with.
struct VELM_ZAVRA_API_TARGET_POINTING_OPERATION_PARAMETERS_TELEMETRY
{
    unsigned int general_mode;
    unsigned int determination_mode;
    unsigned int unprinted_u32; ///< the meaning is the unit's own; dumps leave it out
    VELM_ZAVRA_API_TARGET_POINTING_TOLERANCE_PARAMETERS tolerance_parameters;
    unsigned long long start_epoch_time;
    float target_latitude;
    float target_longitude;
    unsigned long long update_interval;
};

/// One flag per axis.
struct VELM_ZAVRA_API_VECTOR3_XYZ_UINT16
{
    unsigned short x;
    unsigned short y;
    unsigned short z;
};

/// How far target pointing has come.
struct VELM_ZAVRA_API_TARGET_POINTING_OPERATION_DATA_TELEMETRY
{
    unsigned long long current_epoch_time_msec;
    unsigned long long next_action_epoch_time_msec;
    unsigned int main_register;
    unsigned char current_state;
    unsigned char state_target;
    unsigned char prealignment_is_ready;
    unsigned char prealignment_current_rotation_axis;
    VELM_ZAVRA_API_VECTOR3_XYZ_UINT16 prealignment_active_flag;          ///< 0 to 255 each
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT prealignment_target_rotation_angle; ///< rad
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT prealignment_rotation_angle;        ///< rad
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT angular_velocity_bf;                ///< rad/s
    VELM_ZAVRA_API_QUATERNION_FLOAT target_quaternion;
    VELM_ZAVRA_API_QUATERNION_FLOAT attitude_quaternion;
    VELM_ZAVRA_API_REACTIONWHEEL_SPEEDS target_rw_speed;
    VELM_ZAVRA_API_REACTIONWHEEL_SPEEDS current_rw_speed;
};
