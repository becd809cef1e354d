#pragma once

#include "vectors.h"

/// @file
/// What an operation mode is told and what it reports. Epoch times are milliseconds since 01.01.1970 0:00:00 UTC;
/// intervals, offsets and waits are milliseconds; latitudes and longitudes are radians; bf is the body frame. The
/// meaning of the words determination_mode, general_mode, control_mode, main_register, current_state and state_target
/// is the unit's own.

/// When the rates of the satellite are to be damped.
struct ZAVRA_100_Detumbling_Mode_Parameters
{
    unsigned long long start_epoch_time;
    unsigned long long stop_epoch_time;
};

/// When a body axis is to point at the sun, and which.
struct ZAVRA_100_SunPointing_Mode_Parameters
{
    ZAVRA_100_Vector3_float los_vector_bf; ///< line of sight
    unsigned long long start_epoch_time;
    unsigned long long stop_epoch_time;
};

/// How closely the satellite has to be aligned before it starts to follow its target.
struct ZAVRA_100_TargetPointing_Tolerance_Parameters
{
    float prealignment_angle_tolerance_rad;
    float prealignment_angle_tolerance_percent;
    float prealignment_angular_velocity_tolerance_radps; ///< rad/s
    float prealignment_target_threshold_rad;
};

/// Pointing at a point that moves over the Earth from a start to a stop position.
struct ZAVRA_100_Earth_TargetPointing_Const_Velocity_Parameters
{
    unsigned int determination_mode;
    ZAVRA_100_Vector3_float los_vector_bf;    ///< line of sight
    ZAVRA_100_Vector3_float flight_vector_bf; ///< axis that points in the direction of flight
    float start_latitude;
    float stop_latitude;
    float start_longitude;
    float stop_longitude;
    unsigned long long start_epoch_time;
    unsigned long long stop_epoch_time;
    unsigned long long offset_time;
    unsigned long long update_interval;
    ZAVRA_100_TargetPointing_Tolerance_Parameters tolerance_parameters;
};

/// Pointing at a point that stays where it is on the Earth.
struct ZAVRA_100_Earth_TargetPointing_Fixed_Parameters
{
    unsigned int determination_mode;
    ZAVRA_100_Vector3_float los_vector_bf;    ///< line of sight
    ZAVRA_100_Vector3_float flight_vector_bf; ///< axis that points in the direction of flight
    float target_latitude;
    float target_longitude;
    unsigned long long offset_time;
    unsigned long long update_interval;
    ZAVRA_100_TargetPointing_Tolerance_Parameters tolerance_parameters;
};

/// Pointing straight down.
struct ZAVRA_100_NadirPointing_Parameters
{
    unsigned int determination_mode;
    ZAVRA_100_Vector3_float los_vector_bf;    ///< line of sight
    ZAVRA_100_Vector3_float flight_vector_bf; ///< axis that points in the direction of flight
    unsigned long long offset_time;
    unsigned long long update_interval;
    ZAVRA_100_TargetPointing_Tolerance_Parameters tolerance_parameters;
};

/// Pointing in a fixed inertial direction.
struct ZAVRA_100_TargetPointing_Inertial_Parameters
{
    unsigned int determination_mode;
    ZAVRA_100_Vector3_float los_vector_bf;      ///< line of sight
    ZAVRA_100_Vector3_float flight_vector_bf;   ///< axis that points in the direction of flight
    unsigned int degree;                        ///< of the attitude polynomial: 6; every other value is sent as 0
    ZAVRA_100_Quaternion_float base_quaternion; ///< the attitude to hold
    unsigned long long start_epoch_time;
    unsigned long long stop_epoch_time;
    unsigned long long offset_time;
    unsigned long long update_interval;
};

/// Variances of the attitude Kalman filter.
struct ZAVRA_100_KalmanFilter_Parameters
{
    double bias_process_variance;
    double attitude_process_variance;
    double sun_mag_measurement_variance;
    double sts_measurement_variance; ///< star tracker
    unsigned char disable_bias;      ///< not 0: the gyroscopes' bias is not estimated
};

/// Tolerances and timing that all target-pointing modes share.
struct ZAVRA_100_TargetPointing_Operation_Parameters
{
    unsigned long long update_interval;
    float angle_tolerance_rad;
    float angle_tolerance_perc;     ///< percent
    float speed_tolerance_radps;    ///< rad/s
    ZAVRA_100_Vector3_float angles; ///< one per axis; the meaning is the unit's own
    unsigned long long wait_time;
};

/// The target that was started last.
struct ZAVRA_100_TargetPointing_Target_Parameters_Telemetry
{
    unsigned long long current_epoch_time_msec;
    unsigned long long start_epoch_time;
    unsigned long long stop_epoch_time;
    unsigned long long offset_time_msec;
    unsigned int control_mode;
    ZAVRA_100_Matrix3x3_float rotation_matrix;
    float polynomial_coeff[28]; ///< of the inertial attitude: seven for each quaternion component
    ZAVRA_100_Quaternion_float start_quaternion;
    ZAVRA_100_Quaternion_float end_quaternion;
    float start_latitude;
    float start_longitude;
    float stop_latitude;
    float stop_longitude;
};

/// The parameters that target pointing works with.
struct ZAVRA_100_TargetPointing_Operation_Parameters_Telemetry
{
    unsigned int general_mode;
    unsigned int determination_mode;
    unsigned int unprinted_u32; ///< the meaning is the unit's own; dumps leave it out
    ZAVRA_100_TargetPointing_Tolerance_Parameters tolerance_parameters;
    unsigned long long start_epoch_time;
    float target_latitude;
    float target_longitude;
    unsigned long long update_interval;
};

/// One flag per axis.
struct ZAVRA_100_Vector3_uint16
{
    unsigned short x;
    unsigned short y;
    unsigned short z;
};

/// How far target pointing has come.
struct ZAVRA_100_TargetPointing_Operation_Data_Telemetry
{
    unsigned long long current_epoch_time_msec;
    unsigned long long next_action_epoch_time_msec;
    unsigned int main_register;
    unsigned char current_state;
    unsigned char state_target;
    unsigned char prealignment_is_ready;
    unsigned char prealignment_current_rotation_axis;
    ZAVRA_100_Vector3_uint16 prealignment_active_flag;          ///< 0 to 255 each
    ZAVRA_100_Vector3_float prealignment_target_rotation_angle; ///< rad
    ZAVRA_100_Vector3_float prealignment_rotation_angle;        ///< rad
    ZAVRA_100_Vector3_float angular_velocity_bf;                ///< rad/s
    ZAVRA_100_Quaternion_float target_quaternion;
    ZAVRA_100_Quaternion_float attitude_quaternion;
    ZAVRA_100_Vector6_float target_rw_speed;  ///< rad/s
    ZAVRA_100_Vector6_float current_rw_speed; ///< rad/s
};
