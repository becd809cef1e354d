#include "VELM_ZAVRA_API.h"

#include "../device/ZAVRA_100.h"
#include "../device/debug.h"
#include "call.h"

using namespace zavra;

namespace
{

unsigned long long query_msec(ZAVRA_100& device, const char* action_words,
                              void (ZAVRA_100::*method)(unsigned long long*), const char* label)
{
    const auto msec = query<unsigned long long>(device, action_words, method);
    debug_line(values, label, msec);
    return msec;
}

}

void VELM_ZAVRA_API::Set_Epoch_Time(unsigned long long epoch_time_msec)
{
    command(*device_, "set epoch time", &ZAVRA_100::Set_Epoch_Time, epoch_time_msec);
}

unsigned long long VELM_ZAVRA_API::Get_Epoch_Time()
{
    return query_msec(*device_, "get epoch time", &ZAVRA_100::Get_Epoch_Time,
                      "Milliseconds since epoch 01.01.1970 0:00:00 UTC: ");
}

unsigned long long VELM_ZAVRA_API::Get_System_Time()
{
    return query_msec(*device_, "get system time", &ZAVRA_100::Get_System_Time, "Milliseconds since last reset: ");
}

void VELM_ZAVRA_API::Set_Temperature_Update_Interval(unsigned long long interval_msec)
{
    command(*device_, "set temperature update interval", &ZAVRA_100::Set_Temperature_Update_Interval, interval_msec);
}

unsigned long long VELM_ZAVRA_API::Get_Temperature_Update_Interval()
{
    return query_msec(*device_, "get temperature update interval", &ZAVRA_100::Get_Temperature_Update_Interval,
                      "Milliseconds between temperature updates: ");
}

void VELM_ZAVRA_API::Set_Power_Update_Interval(unsigned long long interval_msec)
{
    command(*device_, "set power update interval", &ZAVRA_100::Set_Power_Update_Interval, interval_msec);
}

unsigned long long VELM_ZAVRA_API::Get_Power_Update_Interval()
{
    return query_msec(*device_, "get power update interval", &ZAVRA_100::Get_Power_Update_Interval,
                      "Milliseconds between power updates: ");
}

void VELM_ZAVRA_API::Set_Active_Gyroscope(VELM_ZAVRA_API_GYROSCOPES gyro)
{
    command(*device_, "set active gyroscope", &ZAVRA_100::Set_Active_Gyroscope, gyro);
}

void VELM_ZAVRA_API::Set_Active_Magnetometer(VELM_ZAVRA_API_MAGNETOMETERS magnetometer)
{
    command(*device_, "set active magnetometer", &ZAVRA_100::Set_Active_Magnetometer, magnetometer);
}

void VELM_ZAVRA_API::Set_DCDC_Configuration(unsigned int dcdc_configuration)
{
    command(*device_, "set dcdc configuration", &ZAVRA_100::Set_DCDC_Configuration, dcdc_configuration);
}

void VELM_ZAVRA_API::Set_HIL_Configuration(unsigned int hil_configuration)
{
    command(*device_, "set hil configuration", &ZAVRA_100::Set_HIL_Configuration, hil_configuration);
}

unsigned int VELM_ZAVRA_API::Get_HIL_Configuration()
{
    return query<unsigned int>(*device_, "get hil configuration", &ZAVRA_100::Get_HIL_Configuration);
}

void VELM_ZAVRA_API::Set_System_Scheduler_Register(unsigned int scheduler_register)
{
    command(*device_, "set system scheduler register", &ZAVRA_100::Set_System_Scheduler_Register, scheduler_register);
}

unsigned int VELM_ZAVRA_API::Get_System_Scheduler_Register()
{
    return query<unsigned int>(*device_, "get system scheduler register", &ZAVRA_100::Get_System_Scheduler_Register);
}

void VELM_ZAVRA_API::Clear_System_Error_Register()
{
    command(*device_, "clear system error register", &ZAVRA_100::Clear_System_Error_Register);
}

unsigned int VELM_ZAVRA_API::Check_Command_Errors()
{
    return operation("check command errors", [this] { return device_->Check_Command_Errors(); });
}
