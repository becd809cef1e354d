#pragma once

#include "command.h"

namespace zavra::protocol
{

using Msec = unsigned long long;
using Register = unsigned int;

inline constexpr Command<void(Register)> set_dcdc_configuration{
    0x0101, "Set_DCDC_Configuration", "Set DCDC Configuration", {Value_Name{"dcdc_configuration", "", 16}}};

inline constexpr Command<void(Msec)> set_epoch_time{
    0x0210, "Set_Epoch_Time", "Set Epoch Time", {Value_Name{"epoch_time_msec", "ms"}}};
inline constexpr Command<Msec()> get_epoch_time{
    0x0211, "Get_Epoch_Time", "Get Epoch Time", {}, {Value_Name{"epoch_time_msec", "ms"}}};
inline constexpr Command<Msec()> get_system_time{
    0x0212, "Get_System_Time", "Get System Time", {}, {Value_Name{"system_time_msec", "ms"}}};

inline constexpr Command<Register()> get_system_scheduler_register{
    0x0228, "Get_System_Scheduler_Register", "Get Scheduler Register", {}, {Value_Name{"scheduler_register", "", 16}}};
inline constexpr Command<void(Register)> set_system_scheduler_register{
    0x0229, "Set_System_Scheduler_Register", "Set Scheduler Register", {Value_Name{"scheduler_register", "", 16}}};
inline constexpr Command<void()> clear_system_error_register{0x0230, "Clear_System_Error_Register",
                                                             "clear error register"};

inline constexpr Command<void(unsigned char)> set_active_gyroscope{
    0x0231, "Set_Active_Gyroscope", "Set Gyro Index", {"gyro_index"}};
inline constexpr Command<void(unsigned char)> set_active_magnetometer{
    0x0232, "Set_Active_Magnetometer", "Set Magnetometer Index", {"magnetometer_index"}};

inline constexpr Command<void(Msec)> set_temperature_update_interval{
    0x0234, "Set_Temperature_Update_Interval", "Set Temperature Update Interval", {Value_Name{"interval_msec", "ms"}}};
inline constexpr Command<Msec()> get_temperature_update_interval{0x0235,
                                                                 "Get_Temperature_Update_Interval",
                                                                 "Get Temperatuer Update Interval",
                                                                 {},
                                                                 {Value_Name{"interval_msec", "ms"}}};
inline constexpr Command<void(Msec)> set_power_update_interval{
    0x0236, "Set_Power_Update_Interval", "Set Power Update Interval", {Value_Name{"interval_msec", "ms"}}};
// Quirk: the words are the system time's.
inline constexpr Command<Msec()> get_power_update_interval{
    0x0237, "Get_Power_Update_Interval", "Get System Time", {}, {Value_Name{"interval_msec", "ms"}}};

inline constexpr Command<void(Register)> set_hil_configuration{
    0xAD01, "Set_HIL_Configuration", "Set HIL Configuration", {Value_Name{"hil_configuration", "", 16}}};
inline constexpr Command<Register()> get_hil_configuration{
    0xAD02, "Get_HIL_Configuration", "Get HIL Configuration", {}, {Value_Name{"hil_configuration", "", 16}}};

inline constexpr List system_commands{set_dcdc_configuration,
                                      set_epoch_time,
                                      get_epoch_time,
                                      get_system_time,
                                      get_system_scheduler_register,
                                      set_system_scheduler_register,
                                      clear_system_error_register,
                                      set_active_gyroscope,
                                      set_active_magnetometer,
                                      set_temperature_update_interval,
                                      get_temperature_update_interval,
                                      set_power_update_interval,
                                      get_power_update_interval,
                                      set_hil_configuration,
                                      get_hil_configuration};

static_assert(system_commands.size == 15);

}
