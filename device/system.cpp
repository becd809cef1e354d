#include "../protocol/system.h"
#include "../protocol/sensors.h"
#include "debug.h"
#include "exchange.h"

using namespace zavra;

namespace
{

constexpr const char* index_exceeds_limits = "index exceeds limits";

// Quirk: the time and interval getters print the pointer they were given, not the value.
void ask_msec(ZAVRA_100& device, const Command<unsigned long long()>& command, const char* label,
              unsigned long long* msec)
{
    *msec = ask(device, command);
    debug_line(values, label, msec);
}

}

void ZAVRA_100::Set_DCDC_Configuration(unsigned int dcdc_configuration)
{
    send(*this, protocol::set_dcdc_configuration, dcdc_configuration);
    debug_line(values, "DCDC Register Value: dec = ", dcdc_configuration);
}

void ZAVRA_100::Set_Epoch_Time(unsigned long long epoch_time_msec)
{
    send(*this, protocol::set_epoch_time, epoch_time_msec);
}

void ZAVRA_100::Get_Epoch_Time(unsigned long long* epoch_time_msec)
{
    ask_msec(*this, protocol::get_epoch_time, "Time since epoch 01.01.1970 0:00:00 UTC in msec: ", epoch_time_msec);
}

void ZAVRA_100::Get_System_Time(unsigned long long* system_time_msec)
{
    ask_msec(*this, protocol::get_system_time, "System time since last reset in msec: ", system_time_msec);
}

void ZAVRA_100::Get_System_Scheduler_Register(unsigned int* scheduler_register)
{
    *scheduler_register = ask(*this, protocol::get_system_scheduler_register);
    debug_line(values, "SCHEDULER REGISTER: hex = ", hex(*scheduler_register));
}

void ZAVRA_100::Set_System_Scheduler_Register(unsigned int scheduler_register)
{
    send(*this, protocol::set_system_scheduler_register, scheduler_register);
}

void ZAVRA_100::Clear_System_Error_Register()
{
    send(*this, protocol::clear_system_error_register);
}

void ZAVRA_100::Set_Active_Gyroscope(unsigned char gyro_index)
{
    if (gyro_index >= protocol::number_of_gyroscopes)
        reject(protocol::set_active_gyroscope.action, index_exceeds_limits);
    send(*this, protocol::set_active_gyroscope, gyro_index);
}

void ZAVRA_100::Set_Active_Magnetometer(unsigned char magnetometer_index)
{
    if (magnetometer_index >= protocol::number_of_magnetometers)
        reject(protocol::set_active_magnetometer.action, index_exceeds_limits);
    send(*this, protocol::set_active_magnetometer, magnetometer_index);
}

void ZAVRA_100::Set_Temperature_Update_Interval(unsigned long long interval_msec)
{
    send(*this, protocol::set_temperature_update_interval, interval_msec);
}

void ZAVRA_100::Get_Temperature_Update_Interval(unsigned long long* interval_msec)
{
    ask_msec(*this, protocol::get_temperature_update_interval, "Temperature Update Interval in msec: ", interval_msec);
}

void ZAVRA_100::Set_Power_Update_Interval(unsigned long long interval_msec)
{
    send(*this, protocol::set_power_update_interval, interval_msec);
}

void ZAVRA_100::Get_Power_Update_Interval(unsigned long long* interval_msec)
{
    ask_msec(*this, protocol::get_power_update_interval, "System power update interval in msec: ", interval_msec);
}

void ZAVRA_100::Set_HIL_Configuration(unsigned int hil_configuration)
{
    send(*this, protocol::set_hil_configuration, hil_configuration);
}

void ZAVRA_100::Get_HIL_Configuration(unsigned int* hil_configuration)
{
    *hil_configuration = ask(*this, protocol::get_hil_configuration);
    debug_line(values, "HIL Configuration = ", static_cast<int>(*hil_configuration));
}

unsigned int ZAVRA_100::Check_Command_Errors()
{
    constexpr unsigned int command_error_bits = 3;
    return attempt("Check Command Errors", [&] {
        ZAVRA_100_Standard_Telemetry telemetry;
        Get_Standard_Telemetry(&telemetry);
        return telemetry.system_error_register & command_error_bits;
    });
}
