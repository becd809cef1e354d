#pragma once

/// @file
/// The unit's telemetry frames. Units stand in the names: msec, radps (rad/s), t (tesla), am2 (A m^2), degc, w, v, a.
/// Epoch times count from 01.01.1970 0:00:00 UTC.

/// What the unit is: type, serial numbers, versions. Text fields are NUL-terminated here, not on the wire.
struct ZAVRA_100_Info_Telemetry
{
    char frame_identifier[3];
    unsigned char frame_version;
    unsigned char sw_version_major;
    unsigned char sw_version_minor;
    unsigned char sw_version_patch;
    unsigned char startracker_type;
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

/// Times, registers and command counters. The meaning of the registers' bits is the unit's own.
struct ZAVRA_100_Standard_Telemetry
{
    unsigned long long system_time_msec; ///< since the unit's last reset
    unsigned long long epoch_time_msec;
    unsigned int livelyhood_register;
    unsigned int system_status_register;
    unsigned int system_scheduler_register;
    unsigned int system_error_register;
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

/// What the sensors measured, each in its own frame; quaternion and sensors as the unit numbers them from 1.
struct ZAVRA_100_Sensor_Telemetry
{
    unsigned long long epoch_time_msec;
    unsigned char index_of_active_startracker;
    float quaternion_attitude_1_bf;
    float quaternion_attitude_2_bf;
    float quaternion_attitude_3_bf;
    float quaternion_attitude_4_bf;
    unsigned char index_of_active_gyro;
    float measured_angular_velocity_gyro_1_x_radps;
    float measured_angular_velocity_gyro_1_y_radps;
    float measured_angular_velocity_gyro_1_z_radps;
    float measured_angular_velocity_gyro_2_x_radps;
    float measured_angular_velocity_gyro_2_y_radps;
    float measured_angular_velocity_gyro_2_z_radps;
    float measured_angular_velocity_gyro_3_x_radps;
    float measured_angular_velocity_gyro_3_y_radps;
    float measured_angular_velocity_gyro_3_z_radps;
    float measured_angular_velocity_gyro_4_x_radps;
    float measured_angular_velocity_gyro_4_y_radps;
    float measured_angular_velocity_gyro_4_z_radps;
    unsigned char index_of_active_magnetometer;
    float measured_magnetic_field_magnetometer_1_x_t;
    float measured_magnetic_field_magnetometer_1_y_t;
    float measured_magnetic_field_magnetometer_1_z_t;
    float measured_magnetic_field_magnetometer_2_x_t;
    float measured_magnetic_field_magnetometer_2_y_t;
    float measured_magnetic_field_magnetometer_2_z_t;
    float measured_sun_vector_sunsensor_1_x;
    float measured_sun_vector_sunsensor_1_y;
    float measured_sun_vector_sunsensor_1_z;
    float measured_sun_vector_sunsensor_2_x;
    float measured_sun_vector_sunsensor_2_y;
    float measured_sun_vector_sunsensor_2_z;
    float measured_sun_vector_sunsensor_3_x;
    float measured_sun_vector_sunsensor_3_y;
    float measured_sun_vector_sunsensor_3_z;
    float measured_sun_vector_sunsensor_4_x;
    float measured_sun_vector_sunsensor_4_y;
    float measured_sun_vector_sunsensor_4_z;
    float measured_sun_vector_sunsensor_5_x;
    float measured_sun_vector_sunsensor_5_y;
    float measured_sun_vector_sunsensor_5_z;
    float measured_sun_vector_sunsensor_6_x;
    float measured_sun_vector_sunsensor_6_y;
    float measured_sun_vector_sunsensor_6_z;
    float temperature_degc; ///< whole degrees, 0 to 255, as the unit sends one byte
};

/// Reaction wheels x to w (wheels 0 to 5) and magnetorquers.
struct ZAVRA_100_Actuator_Telemetry
{
    unsigned long long epoch_time_msec;
    float reactionwheel_target_x_radps;
    float reactionwheel_target_y_radps;
    float reactionwheel_target_z_radps;
    float reactionwheel_target_u_radps;
    float reactionwheel_target_v_radps;
    float reactionwheel_target_w_radps;
    float reactionwheel_current_speed_x_radps;
    float reactionwheel_current_speed_y_radps;
    float reactionwheel_current_speed_z_radps;
    float reactionwheel_current_speed_u_radps;
    float reactionwheel_current_speed_v_radps;
    float reactionwheel_current_speed_w_radps;
    float magnetorquers_target_dipole_moment_x_am2;
    float magnetorquers_target_dipole_moment_y_am2;
    float magnetorquers_target_dipole_moment_z_am2;
    unsigned int magnetorquers_current_state;
};

/// What the unit determined from its sensors, in the body frame (bf).
struct ZAVRA_100_Attitude_Telemetry
{
    unsigned long long epoch_time_msec;
    float quaternion_attitude_1_bf;
    float quaternion_attitude_2_bf;
    float quaternion_attitude_3_bf;
    float quaternion_attitude_4_bf;
    float angular_velocity_x_radps;
    float angular_velocity_y_radps;
    float angular_velocity_z_radps;
    unsigned long long epoch_time_last_attitude_determination_msec;
    float measured_magnetic_field_x_bf_t;
    float measured_magnetic_field_y_bf_t;
    float measured_magnetic_field_z_bf_t;
    unsigned long long epoch_time_last_magnetic_field_measurement_msec;
    float measured_sun_vector_x_bf;
    float measured_sun_vector_y_bf;
    float measured_sun_vector_z_bf;
    unsigned long long epoch_time_last_sun_vector_measurement_msec;
};

/// Power, voltage and current of the unit and what it feeds.
struct ZAVRA_100_Power_Telemetry
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
