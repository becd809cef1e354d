#pragma once

#include "command.h"
#include "records/telemetry.h"

namespace zavra
{

template <>
inline constexpr auto field_list<ZAVRA_100_Info_Telemetry> = [](auto& r) {
    return List{Field{"FRAME_IDENTIFIER", r.frame_identifier, style::text},
                Field{"FRAME_VERSION", r.frame_version},
                Field{"SW_VERSION_MAJOR", r.sw_version_major},
                Field{"SW_VERSION_MINOR", r.sw_version_minor},
                Field{"SW_VERSION_PATCH", r.sw_version_patch},
                Field{"STARTRACKER_TYPE", r.startracker_type},
                Field{"STARTRACKER_SERIAL_NUMBER", r.startracker_serial_number},
                Field{"DEVICE_NAME", r.device_name, style::text},
                Field{"DEVICE_SERIAL_NUMBER", r.device_serial_number},
                Field{"BUILD_TIMESTAMP", r.build_timestamp, style::text},
                Field{"SW_COMMIT_ID_PROJECT", r.sw_commit_id_project},
                Skip<8>{},
                Field{"SW_COMMIT_ID_LIBRARY", r.sw_commit_id_library},
                Skip<4>{},
                Field{"DEBUG_LEVEL", r.debug_level},
                Field{"COMPILER_NAME", r.compiler_name, style::text},
                Field{"COMPILER_VERSION", r.compiler_version, style::text},
                Field{"LOW_LEVEL_SW_VERSION", r.low_level_sw_version, style::text},
                Field{"LOW_LEVEL_BUILD_TIMESTAMP", r.low_level_build_timestamp, style::text}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Standard_Telemetry> = [](auto& r) {
    return List{Field{"SYSTEM_TIME_MSEC", r.system_time_msec}.in("ms"),
                Field{"EPOCH_TIME_MSEC", r.epoch_time_msec}.in("ms"),
                Field{"LIVELYHOOD_REGISTER", r.livelyhood_register, style::hexadecimal},
                Field{"SYSTEM_STATUS_REGISTER", r.system_status_register, style::hexadecimal},
                Field{"SYSTEM_SCHEDULER_REGISTER", r.system_scheduler_register, style::hexadecimal},
                Field{"SYSTEM_ERROR_REGISTER", r.system_error_register, style::hexadecimal},
                Field{"SENSORS_ERROR_REGISTER", r.sensors_error_register, style::hexadecimal},
                Field{"ACTUATORS_ERROR_REGISTER", r.actuators_error_register, style::hexadecimal},
                Field{"CONTROL_MAIN_STATUS", r.control_main_status, style::hexadecimal},
                Field{"CONTROL_MAIN_ERROR", r.control_main_error, style::hexadecimal},
                Field{"CONTROL_SINGLE_AXIS_STATUS_X", r.control_single_axis_status_x, style::hexadecimal},
                Field{"CONTROL_SINGLE_AXIS_STATUS_Y", r.control_single_axis_status_y, style::hexadecimal},
                Field{"CONTROL_SINGLE_AXIS_STATUS_Z", r.control_single_axis_status_z, style::hexadecimal},
                Field{"CONTROL_ALL_AXIS_STATUS", r.control_all_axis_status, style::hexadecimal},
                Field{"SAT_MAIN_REGISTER", r.sat_main_register, style::hexadecimal},
                Field{"SAT_ERROR_REGISTER", r.sat_error_register, style::hexadecimal},
                Field{"SAT_SCHEDULER_REGISTER", r.sat_scheduler_register, style::hexadecimal},
                Field{"INTERNAL_USE_1", r.internal_use_1, style::hexadecimal},
                Field{"INTERNAL_USE_2", r.internal_use_2, style::hexadecimal},
                Field{"NUMBER_OF_RECEIVED_COMMANDS", r.number_of_received_commands, style::hexadecimal}.in_decimal(),
                Field{"NUMBER_OF_FAILED_COMMANDS", r.number_of_failed_commands, style::hexadecimal}.in_decimal(),
                Field{"INTERNAL_USE_3", r.internal_use_3, style::hexadecimal}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Sensor_Telemetry> = [](auto& r) {
    return List{
        Field{"EPOCH_TIME_MSEC", r.epoch_time_msec}.in("ms"),
        Field{"INDEX_OF_ACTIVE_STARTRACKER", r.index_of_active_startracker},
        Field{"QUATERNION_ATTITUDE_1_BF", r.quaternion_attitude_1_bf},
        Field{"QUATERNION_ATTITUDE_2_BF", r.quaternion_attitude_2_bf},
        Field{"QUATERNION_ATTITUDE_3_BF", r.quaternion_attitude_3_bf},
        Field{"QUATERNION_ATTITUDE_4_BF", r.quaternion_attitude_4_bf},
        Field{"INDEX_OF_ACTIVE_GYRO", r.index_of_active_gyro},
        Field{"MEASURED_ANGULAR_VELOCITY_GYRO_1_X_RADPS", r.measured_angular_velocity_gyro_1_x_radps}.in("rad/s"),
        Field{"MEASURED_ANGULAR_VELOCITY_GYRO_1_Y_RADPS", r.measured_angular_velocity_gyro_1_y_radps}.in("rad/s"),
        Field{"MEASURED_ANGULAR_VELOCITY_GYRO_1_Z_RADPS", r.measured_angular_velocity_gyro_1_z_radps}.in("rad/s"),
        Field{"MEASURED_ANGULAR_VELOCITY_GYRO_2_X_RADPS", r.measured_angular_velocity_gyro_2_x_radps}.in("rad/s"),
        Field{"MEASURED_ANGULAR_VELOCITY_GYRO_2_Y_RADPS", r.measured_angular_velocity_gyro_2_y_radps}.in("rad/s"),
        Field{"MEASURED_ANGULAR_VELOCITY_GYRO_2_Z_RADPS", r.measured_angular_velocity_gyro_2_z_radps}.in("rad/s"),
        Field{"MEASURED_ANGULAR_VELOCITY_GYRO_3_X_RADPS", r.measured_angular_velocity_gyro_3_x_radps}.in("rad/s"),
        Field{"MEASURED_ANGULAR_VELOCITY_GYRO_3_Y_RADPS", r.measured_angular_velocity_gyro_3_y_radps}.in("rad/s"),
        Field{"MEASURED_ANGULAR_VELOCITY_GYRO_3_Z_RADPS", r.measured_angular_velocity_gyro_3_z_radps}.in("rad/s"),
        Field{"MEASURED_ANGULAR_VELOCITY_GYRO_4_X_RADPS", r.measured_angular_velocity_gyro_4_x_radps}.in("rad/s"),
        Field{"MEASURED_ANGULAR_VELOCITY_GYRO_4_Y_RADPS", r.measured_angular_velocity_gyro_4_y_radps}.in("rad/s"),
        Field{"MEASURED_ANGULAR_VELOCITY_GYRO_4_Z_RADPS", r.measured_angular_velocity_gyro_4_z_radps}.in("rad/s"),
        Field{"INDEX_OF_ACTIVE_MAGNETOMETER", r.index_of_active_magnetometer},
        Field{"MEASURED_MAGNETIC_FIELD_MAGNETOMETER_1_X_T", r.measured_magnetic_field_magnetometer_1_x_t}.in("T"),
        Field{"MEASURED_MAGNETIC_FIELD_MAGNETOMETER_1_Y_T", r.measured_magnetic_field_magnetometer_1_y_t}.in("T"),
        Field{"MEASURED_MAGNETIC_FIELD_MAGNETOMETER_1_Z_T", r.measured_magnetic_field_magnetometer_1_z_t}.in("T"),
        Field{"MEASURED_MAGNETIC_FIELD_MAGNETOMETER_2_X_T", r.measured_magnetic_field_magnetometer_2_x_t}.in("T"),
        Field{"MEASURED_MAGNETIC_FIELD_MAGNETOMETER_2_Y_T", r.measured_magnetic_field_magnetometer_2_y_t}.in("T"),
        Field{"MEASURED_MAGNETIC_FIELD_MAGNETOMETER_2_Z_T", r.measured_magnetic_field_magnetometer_2_z_t}.in("T"),
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_1_X", r.measured_sun_vector_sunsensor_1_x},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_1_Y", r.measured_sun_vector_sunsensor_1_y},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_1_Z", r.measured_sun_vector_sunsensor_1_z},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_2_X", r.measured_sun_vector_sunsensor_2_x},
        // Quirk: the dump has no Y label for this sensor.
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_2_Y", r.measured_sun_vector_sunsensor_2_y}.labelled(
            "MEASURED_SUN_VECTOR_SUNSENSOR_2_X"),
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_2_Z", r.measured_sun_vector_sunsensor_2_z},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_3_X", r.measured_sun_vector_sunsensor_3_x},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_3_Y", r.measured_sun_vector_sunsensor_3_y},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_3_Z", r.measured_sun_vector_sunsensor_3_z},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_4_X", r.measured_sun_vector_sunsensor_4_x},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_4_Y", r.measured_sun_vector_sunsensor_4_y},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_4_Z", r.measured_sun_vector_sunsensor_4_z},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_5_X", r.measured_sun_vector_sunsensor_5_x},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_5_Y", r.measured_sun_vector_sunsensor_5_y},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_5_Z", r.measured_sun_vector_sunsensor_5_z},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_6_X", r.measured_sun_vector_sunsensor_6_x},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_6_Y", r.measured_sun_vector_sunsensor_6_y},
        Field{"MEASURED_SUN_VECTOR_SUNSENSOR_6_Z", r.measured_sun_vector_sunsensor_6_z},
        Field{"TEMPERATURE_DEGC", r.temperature_degc, style::single_byte}.in("degC")};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Actuator_Telemetry> = [](auto& r) {
    return List{
        Field{"EPOCH_TIME_MSEC", r.epoch_time_msec}.in("ms"),
        Field{"REACTIONWHEEL_TARGET_X_RADPS", r.reactionwheel_target_x_radps}.in("rad/s"),
        Field{"REACTIONWHEEL_TARGET_Y_RADPS", r.reactionwheel_target_y_radps}.in("rad/s"),
        Field{"REACTIONWHEEL_TARGET_Z_RADPS", r.reactionwheel_target_z_radps}.in("rad/s"),
        Field{"REACTIONWHEEL_TARGET_U_RADPS", r.reactionwheel_target_u_radps}.in("rad/s"),
        Field{"REACTIONWHEEL_TARGET_V_RADPS", r.reactionwheel_target_v_radps}.in("rad/s"),
        Field{"REACTIONWHEEL_TARGET_W_RADPS", r.reactionwheel_target_w_radps}.in("rad/s"),
        Field{"REACTIONWHEEL_CURRENT_SPEED_X_RADPS", r.reactionwheel_current_speed_x_radps}.in("rad/s"),
        Field{"REACTIONWHEEL_CURRENT_SPEED_Y_RADPS", r.reactionwheel_current_speed_y_radps}.in("rad/s"),
        Field{"REACTIONWHEEL_CURRENT_SPEED_Z_RADPS", r.reactionwheel_current_speed_z_radps}.in("rad/s"),
        Field{"REACTIONWHEEL_CURRENT_SPEED_U_RADPS", r.reactionwheel_current_speed_u_radps}.in("rad/s"),
        Field{"REACTIONWHEEL_CURRENT_SPEED_V_RADPS", r.reactionwheel_current_speed_v_radps}.in("rad/s"),
        Field{"REACTIONWHEEL_CURRENT_SPEED_W_RADPS", r.reactionwheel_current_speed_w_radps}.in("rad/s"),
        Field{"MAGNETORQUERS_TARGET_DIPOLE_MOMENT_X_AM2", r.magnetorquers_target_dipole_moment_x_am2}.in("A m^2"),
        Field{"MAGNETORQUERS_TARGET_DIPOLE_MOMENT_Y_AM2", r.magnetorquers_target_dipole_moment_y_am2}.in("A m^2"),
        Field{"MAGNETORQUERS_TARGET_DIPOLE_MOMENT_Z_AM2", r.magnetorquers_target_dipole_moment_z_am2}.in("A m^2"),
        Field{"MAGNETORQUERS_CURRENT_STATE", r.magnetorquers_current_state}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Attitude_Telemetry> = [](auto& r) {
    return List{
        Field{"EPOCH_TIME_MSEC", r.epoch_time_msec}.in("ms"),
        Field{"QUATERNION_ATTITUDE_1_BF", r.quaternion_attitude_1_bf},
        Field{"QUATERNION_ATTITUDE_2_BF", r.quaternion_attitude_2_bf},
        Field{"QUATERNION_ATTITUDE_3_BF", r.quaternion_attitude_3_bf},
        Field{"QUATERNION_ATTITUDE_4_BF", r.quaternion_attitude_4_bf},
        Field{"ANGULAR_VELOCITY_X_RADPS", r.angular_velocity_x_radps}.in("rad/s"),
        Field{"ANGULAR_VELOCITY_Y_RADPS", r.angular_velocity_y_radps}.in("rad/s"),
        Field{"ANGULAR_VELOCITY_Z_RADPS", r.angular_velocity_z_radps}.in("rad/s"),
        Field{"EPOCH_TIME_LAST_ATTITUDE_DETERMINATION_MSEC", r.epoch_time_last_attitude_determination_msec}.in("ms"),
        Field{"MEASURED_MAGNETIC_FIELD_X_BF_T", r.measured_magnetic_field_x_bf_t}.in("T"),
        Field{"MEASURED_MAGNETIC_FIELD_Y_BF_T", r.measured_magnetic_field_y_bf_t}.in("T"),
        Field{"MEASURED_MAGNETIC_FIELD_Z_BF_T", r.measured_magnetic_field_z_bf_t}.in("T"),
        Field{"EPOCH_TIME_LAST_MAGNETIC_FIELD_MEASUREMENT_MSEC", r.epoch_time_last_magnetic_field_measurement_msec}.in(
            "ms"),
        Field{"MEASURED_SUN_VECTOR_X_BF", r.measured_sun_vector_x_bf},
        Field{"MEASURED_SUN_VECTOR_Y_BF", r.measured_sun_vector_y_bf},
        Field{"MEASURED_SUN_VECTOR_Z_BF", r.measured_sun_vector_z_bf},
        Field{"EPOCH_TIME_LAST_SUN_VECTOR_MEASUREMENT_MSEC", r.epoch_time_last_sun_vector_measurement_msec}.in("ms")};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Power_Telemetry> = [](auto& r) {
    return List{Field{"EPOCH_TIME_MSEC", r.epoch_time_msec}.in("ms"),
                Field{"MAGNETTORQUER_POWER_CONSUMPTION_W", r.magnettorquer_power_consumption_w}.in("W"),
                Field{"MAGNETTORQUER_SUPPLY_VOLTAGE_V", r.magnettorquer_supply_voltage_v}.in("V"),
                Field{"MAGNETTORQUER_CURRENT_CONSUMPTION_A", r.magnettorquer_current_consumption_a}.in("A"),
                Field{"STARTRACKER_POWER_CONSUMPTION_W", r.startracker_power_consumption_w}.in("W"),
                Field{"STARTRACKER_SUPPLY_VOLTAGE_V", r.startracker_supply_voltage_v}.in("V"),
                Field{"STARTRACKER_CURRENT_CONSUMPTION_A", r.startracker_current_consumption_a}.in("A"),
                Field{"ZAVRA_POWER_CONSUMPTION_W", r.zavra_power_consumption_w}.in("W"),
                Field{"ZAVRA_SUPPLY_VOLTAGE_V", r.zavra_supply_voltage_v}.in("V"),
                Field{"ZAVRA_CURRENT_CONSUMPTION_A", r.zavra_current_consumption_a}.in("A"),
                Field{"REACTIONWHEEL_POWER_CONSUMPTION_W", r.reactionwheel_power_consumption_w}.in("W"),
                Field{"REACTIONWHEEL_SUPPLY_VOLTAGE_V", r.reactionwheel_supply_voltage_v}.in("V"),
                Field{"REACTIONWHEEL_CURRENT_CONSUMPTION_A", r.reactionwheel_current_consumption_a}.in("A")};
};

namespace protocol
{

inline constexpr Command<ZAVRA_100_Info_Telemetry()> get_info_frame{0x0220, "Get_Info_Frame", "get info telemetry"};
inline constexpr Command<ZAVRA_100_Standard_Telemetry()> get_standard_telemetry{0x0221, "Get_Standard_Telemetry",
                                                                                "get standard telemetry"};
inline constexpr Command<ZAVRA_100_Sensor_Telemetry()> get_sensor_telemetry{0x0222, "Get_Sensor_Telemetry",
                                                                            "get Sensor Telemetry"};
inline constexpr Command<ZAVRA_100_Actuator_Telemetry()> get_actuator_telemetry{0x0223, "Get_Actuator_Telemetry",
                                                                                "get actuator telemetry"};
inline constexpr Command<ZAVRA_100_Attitude_Telemetry()> get_attitude_telemetry{0x0224, "Get_Attitude_Telemetry",
                                                                                "get attitude telemetry"};
inline constexpr Command<ZAVRA_100_Power_Telemetry()> get_power_telemetry{0x0225, "Get_Power_Telemetry",
                                                                          "get power telemetry"};

static_assert(get_info_frame.response_size == 149);
static_assert(get_standard_telemetry.response_size == 96);
static_assert(get_sensor_telemetry.response_size == 172);
static_assert(get_actuator_telemetry.response_size == 72);
static_assert(get_attitude_telemetry.response_size == 84);
static_assert(get_power_telemetry.response_size == 56);

inline constexpr List telemetry_commands{get_info_frame,         get_standard_telemetry, get_sensor_telemetry,
                                         get_actuator_telemetry, get_attitude_telemetry, get_power_telemetry};

static_assert(telemetry_commands.size == 6);

}

}
