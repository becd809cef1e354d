#pragma once

#include "vectors.h"

/// @file
/// The unit's telemetry frames. Units stand in the names: msec, radps (rad/s), t (tesla), am2 (A m^2), degc, w, v, a.
/// Epoch times count from 01.01.1970 0:00:00 UTC.
///
/// Fields are named as in the unit's frames. Vectors, quaternions and sensors or wheels of a kind are grouped: their
/// number and component move behind the name and numbers start at 0, so that the frame's
/// measured_angular_velocity_gyro_1_x_radps is measured_angular_velocity_gyro_radps[0].x here.

/// What the unit is: type, serial numbers, versions. Texts end with a NUL.
struct VELM_ZAVRA_API_INFO_TELEMETRY
{
    char frame_identifier[3]; ///< the unit's own
    unsigned char frame_version;
    unsigned char sw_version_major;
    unsigned char sw_version_minor;
    unsigned char sw_version_patch;
    unsigned char startracker_type; ///< the unit's own
    unsigned int startracker_serial_number;
    char device_name[10];
    unsigned int device_serial_number;
    char build_timestamp[33];
    unsigned int sw_commit_id_project;
    unsigned int sw_commit_id_library;
    unsigned char debug_level;
    char compiler_name[21];
    char compiler_version[11];
    char low_level_sw_version[11];
    char low_level_build_timestamp[33];
};

/// Times, registers and command counters. VELM_ZAVRA_API's register getters give the registers flag by flag.
struct VELM_ZAVRA_API_STANDARD_TELEMETRY
{
    unsigned long long system_time_msec; ///< since the unit's last reset
    unsigned long long epoch_time_msec;
    unsigned int livelyhood_register;
    unsigned int system_status_register;
    unsigned int system_scheduler_register;
    unsigned int system_error_register; ///< bits 0 and 1 report command errors
    unsigned int sensors_error_register;
    unsigned int actuators_error_register;
    unsigned int control_main_status;
    unsigned int control_main_error;
    unsigned int control_single_axis_status_x;
    unsigned int control_single_axis_status_y;
    unsigned int control_single_axis_status_z;
    unsigned int control_all_axis_status;
    unsigned int sat_main_register;
    unsigned int sat_error_register;
    unsigned int sat_scheduler_register;
    unsigned int internal_use_1;
    unsigned int internal_use_2;
    unsigned int number_of_received_commands;
    unsigned int number_of_failed_commands;
    unsigned int internal_use_3;
};

/// What the sensors measured.
struct VELM_ZAVRA_API_SENSOR_TELEMETRY
{
    unsigned long long epoch_time_msec;
    unsigned char index_of_active_startracker;
    VELM_ZAVRA_API_QUATERNION_FLOAT quaternion_attitude_bf;
    unsigned char index_of_active_gyro;
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT measured_angular_velocity_gyro_radps[4]; ///< [0] is gyro 1 of the frame
    unsigned char index_of_active_magnetometer;
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT measured_magnetic_field_magnetometer_t[2]; ///< [0] is magnetometer 1
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT measured_sun_vector_sunsensor[6];          ///< [0] is sun sensor 1
    float temperature_degc; ///< whole degrees, 0 to 255, as the unit sends one byte
};

/// Reaction wheels and magnetorquers.
struct VELM_ZAVRA_API_ACTUATOR_TELEMETRY
{
    unsigned long long epoch_time_msec;
    float reactionwheel_target_radps[6];        ///< wheels 0 to 5, which the frame calls x, y, z, u, v, w
    float reactionwheel_current_speed_radps[6]; ///< likewise
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT magnetorquers_target_dipole_moment_am2;
    unsigned int magnetorquers_current_state; ///< the unit's own
};

/// What the unit determined from its sensors, in the body frame (bf).
struct VELM_ZAVRA_API_ATTITUDE_TELEMETRY
{
    unsigned long long epoch_time_msec;
    VELM_ZAVRA_API_QUATERNION_FLOAT quaternion_attitude_bf;
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT angular_velocity_radps;
    unsigned long long epoch_time_last_attitude_determination_msec;
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT measured_magnetic_field_bf_t;
    unsigned long long epoch_time_last_magnetic_field_measurement_msec;
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT measured_sun_vector_bf;
    unsigned long long epoch_time_last_sun_vector_measurement_msec;
};

/// Power, voltage and current of the unit and what it feeds.
struct VELM_ZAVRA_API_POWER_TELEMETRY
{
    unsigned long long epoch_time_msec;
    float magnettorquer_power_consumption_w;
    float magnettorquer_supply_voltage_v;
    float magnettorquer_current_consumption_a;
    float startracker_power_consumption_w;
    float startracker_supply_voltage_v;
    float startracker_current_consumption_a;
    float zavra_power_consumption_w;
    float zavra_supply_voltage_v;
    float zavra_current_consumption_a;
    float reactionwheel_power_consumption_w;
    float reactionwheel_supply_voltage_v;
    float reactionwheel_current_consumption_a;
};
