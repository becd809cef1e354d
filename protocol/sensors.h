#pragma once

#include "command.h"
#include "records/sensors.h"
#include "vectors.h"

namespace zavra
{

template <>
inline constexpr auto field_list<ZAVRA_100_Gyroscope_Parameters> = [](auto& r) {
    auto& m = r.correction_scale;
    return List{Field{"OUTPUT_TYPE", r.output_type, style::character}, Field{"SENSOR_STDDEV", r.sensor_stddev},
                Field{"SENSOR_SENSITIVITY", r.sensor_sensitivity}, Field{"QUATERNION", r.quaternion},
                Field{"UPDATE_INTERVAL_MSEC", r.update_interval_msec}.in("ms"),
                Field{"SENSOR_CORRECTION_ENABLE", r.sensor_correction_enable, style::character},
                // Quirk: the dump names the first row like the first column.
                Group{"CORRECTION_SCALE",
                      List{Field{"M11", m.m11}, Field{"M12", m.m12}.labelled("M21"),
                           Field{"M13", m.m13}.labelled("M31"), Field{"M21", m.m21}, Field{"M22", m.m22},
                           Field{"M23", m.m23}, Field{"M31", m.m31}, Field{"M32", m.m32}, Field{"M33", m.m33}}},
                Field{"CORRECTION_OFFSET", r.correction_offset}, Field{"BIAS_COUNTER", r.bias_counter},
                Field{"AVG_FILTER_ENABLE", r.avg_filter_enable, style::character},
                Field{"AVG_FILTER_COUNTER", r.avg_filter_counter},
                Field{"AVG_FILTER_CRITERION", r.avg_filter_criterion}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Magnetometer_Parameters> = [](auto& r) {
    return List{Field{"SENSOR_STDDEV", r.sensor_stddev},
                Field{"SENSOR_SENSITIVITY", r.sensor_sensitivity},
                Field{"QUATERNION", r.quaternion},
                Field{"UPDATE_INTERVAL_MSEC", r.update_interval_msec}.in("ms"),
                Field{"SENSOR_CORRECTION_ENABLE", r.sensor_correction_enable, style::character},
                Field{"CORRECTION_SCALE", r.correction_scale},
                Field{"CORRECTION_OFFSET", r.correction_offset},
                Field{"AVG_FILTER_ENABLE", r.avg_filter_enable, style::character},
                Field{"AVG_FILTER_COUNTER", r.avg_filter_counter},
                Field{"AVG_FILTER_CRITERION", r.avg_filter_criterion},
                Field{"MOVING_AVG_FILTER_ENABLE", r.moving_avg_filter_enable, style::character},
                Field{"MOVING_AVG_FILTER_GAIN", r.moving_avg_filter_gain},
                Field{"MOVING_AVG_FILTER_CRITERION", r.moving_avg_filter_criterion}};
};

static_assert(wire_size<ZAVRA_100_Gyroscope_Parameters> == 111 && wire_size<ZAVRA_100_Magnetometer_Parameters> == 115);

namespace protocol
{

inline constexpr unsigned char number_of_gyroscopes = 3;
inline constexpr unsigned char number_of_magnetometers = 1;

/// A measurement and the unit's time of it.
using Timed_Vector = std::tuple<ZAVRA_100_Vector3_float, unsigned long long>;

inline constexpr Command<void(unsigned char, ZAVRA_100_Vector3_float)> set_gyro_values{
    0xA101, "Set_Gyro_Values", "Set Gyro Values", {"index", Value_Name{"angular_velocity", "rad/s"}}};
inline constexpr Command<Timed_Vector(unsigned char)> get_gyro_values{
    0xA102,
    "Get_Gyro_Values",
    "Get Gyro Values",
    {"index"},
    {Value_Name{"angular_velocity", "rad/s"}, Value_Name{"timestamp", "ms"}}};
inline constexpr Command<void(unsigned char, ZAVRA_100_Gyroscope_Parameters)> set_gyro_parameters{
    0xA103, "Set_Gyro_Parameters", "Set Gyro Parameter", {"index", "parameters"}};
inline constexpr Command<ZAVRA_100_Gyroscope_Parameters(unsigned char)> get_gyro_parameters{
    0xA104, "Get_Gyro_Parameters", "Get Gyro Parameter", {"index"}, {"parameters"}};
inline constexpr Command<void(unsigned char, unsigned long long)> set_gyro_update_interval{
    0xA105, "Set_Gyro_Update_Interval", "Set Gyro Update Interval", {"index", Value_Name{"interval_msec", "ms"}}};
inline constexpr Command<unsigned long long(unsigned char)> get_gyro_update_interval{
    0xA106, "Get_Gyro_Update_Interval", "Get Gyro Update Interval", {"index"}, {Value_Name{"interval_msec", "ms"}}};
inline constexpr Command<void(unsigned char)> enable_gyro_correction{
    0xA107, "Enable_Gyro_Correction", "Enable Gyro Correction", {"index"}};
inline constexpr Command<void(unsigned char)> disable_gyro_correction{
    0xA108, "Disable_Gyro_Correction", "Disable Gyro Correction", {"index"}};
inline constexpr Command<void(unsigned char)> start_gyro_bias_calculation{
    0xA109, "Start_Gyro_Bias_Calculation", "Start Gyro Bias Calculation", {"index"}};
inline constexpr Command<void(unsigned char, ZAVRA_100_Vector3_float)> set_gyro_bias_value{
    0xA10A, "Set_Gyro_Bias_Value", "Set Gyro Bias Value", {"index", Value_Name{"bias", "rad/s"}}};
inline constexpr Command<ZAVRA_100_Vector3_float(unsigned char)> get_gyro_bias_value{
    0xA10B, "Get_Gyro_Bias_Value", "Get Gyro Bias Value", {"index"}, {Value_Name{"bias", "rad/s"}}};
inline constexpr Command<void(unsigned char)> enable_gyro_bias_removement{
    0xA10C, "Enable_Gyro_Bias_Removement", "Enable Gyro Bias Removement", {"index"}};
inline constexpr Command<void(unsigned char)> disable_gyro_bias_removement{
    0xA10D, "Disable_Gyro_Bias_Removement", "Disable Gyro Bias Removement", {"index"}};
inline constexpr Command<void(unsigned char)> enable_gyro_averaging_filter{
    0xA10E, "Enable_Gyro_Averaging_Filter", "Enable Gyro Averaging Filter", {"index"}};
inline constexpr Command<void(unsigned char)> disable_gyro_averaging_filter{
    0xA10F, "Disable_Gyro_Averaging_Filter", "Disable Gyro Averaging Filter", {"index"}};

inline constexpr Command<void(unsigned char, ZAVRA_100_Vector3_float)> set_magnetometer_values{
    0xA201, "Set_Magnetometer_Values", "Set Magnetometer Value", {"index", Value_Name{"magnetic_field", "T"}}};
inline constexpr Command<Timed_Vector(unsigned char)> get_magnetometer_values{
    0xA202,
    "Get_Magnetometer_Values",
    "Get Magnetometer Value",
    {"index"},
    {Value_Name{"magnetic_field", "T"}, Value_Name{"timestamp", "ms"}}};
// Quirk: the words of these two are the sun vector's.
inline constexpr Command<void(unsigned char, ZAVRA_100_Magnetometer_Parameters)> set_magnetometer_parameters{
    0xA203, "Set_Magnetometer_Parameters", "Set Sun Vector", {"index", "parameters"}};
inline constexpr Command<ZAVRA_100_Magnetometer_Parameters(unsigned char)> get_magnetometer_parameters{
    0xA204, "Get_Magnetometer_Parameters", "Set Sun Vector", {"index"}, {"parameters"}};
inline constexpr Command<void(unsigned char, unsigned long long)> set_magnetometer_update_interval{
    0xA205,
    "Set_Magnetometer_Update_Interval",
    "Set Magnetometer Update Interval",
    {"index", Value_Name{"interval_msec", "ms"}}};
inline constexpr Command<unsigned long long(unsigned char)> get_magnetometer_update_interval{
    0xA206,
    "Get_Magnetometer_Update_Interval",
    "Get Magnetometer Update Interval",
    {"index"},
    {Value_Name{"interval_msec", "ms"}}};
inline constexpr Command<void(unsigned char)> enable_magnetometer_correction{
    0xA207, "Enable_Magnetometer_Correction", "Enable Magnetometer Correction", {"index"}};
inline constexpr Command<void(unsigned char)> disable_magnetometer_correction{
    0xA208, "Disable_Magnetometer_Correction", "Disable Magnetometer Correction", {"index"}};
inline constexpr Command<void(unsigned char)> enable_magnetometer_averaging_filter{
    0xA209, "Enable_Magnetometer_Averaging_Filter", "Enable Magnetometer Averaging Filter", {"index"}};
inline constexpr Command<void(unsigned char)> disable_magnetometer_averaging_filter{
    0xA20A, "Disable_Magnetometer_Averaging_Filter", "Disable Magnetometer Averaging Filter", {"index"}};
inline constexpr Command<void(unsigned char)> enable_magnetometer_moving_averaging_filter{
    0xA20B, "Enable_Magnetometer_Moving_Averaging_Filter", "Enable Moving Magnetometer Averaging Filter", {"index"}};
inline constexpr Command<void(unsigned char)> disable_magnetometer_moving_averaging_filter{
    0xA20C, "Disable_Magnetometer_Moving_Averaging_Filter", "Disable Moving Magnetometer Averaging Filter", {"index"}};

inline constexpr Command<void(ZAVRA_100_Vector3_float, unsigned long long)> set_sun_vector{
    0xA330, "Set_Sun_Vector", "Set Sun Vector", {"sun_vector", Value_Name{"epoch_time_msec", "ms"}}};

static_assert(set_gyro_values.request_size == 13 && get_gyro_values.response_size == 20);
static_assert(set_gyro_parameters.request_size == 112 && set_magnetometer_parameters.request_size == 116);
static_assert(set_sun_vector.request_size == 20);

inline constexpr List sensors_commands{set_gyro_values,
                                       get_gyro_values,
                                       set_gyro_parameters,
                                       get_gyro_parameters,
                                       set_gyro_update_interval,
                                       get_gyro_update_interval,
                                       enable_gyro_correction,
                                       disable_gyro_correction,
                                       start_gyro_bias_calculation,
                                       set_gyro_bias_value,
                                       get_gyro_bias_value,
                                       enable_gyro_bias_removement,
                                       disable_gyro_bias_removement,
                                       enable_gyro_averaging_filter,
                                       disable_gyro_averaging_filter,
                                       set_magnetometer_values,
                                       get_magnetometer_values,
                                       set_magnetometer_parameters,
                                       get_magnetometer_parameters,
                                       set_magnetometer_update_interval,
                                       get_magnetometer_update_interval,
                                       enable_magnetometer_correction,
                                       disable_magnetometer_correction,
                                       enable_magnetometer_averaging_filter,
                                       disable_magnetometer_averaging_filter,
                                       enable_magnetometer_moving_averaging_filter,
                                       disable_magnetometer_moving_averaging_filter,
                                       set_sun_vector};

static_assert(sensors_commands.size == 28);

}

}
