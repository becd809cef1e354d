#include "../protocol/telemetry.h"
#include "dump.h"
#include "exchange.h"

using namespace zavra;

namespace
{

template <class Telemetry>
void read_frame(ZAVRA_100& device, const Command<Telemetry()>& command, const char* name, Telemetry* telemetry)
{
    *telemetry = ask(device, command);
    debug_line(values, name, ":");
    dump_fields(*telemetry, name);
}

}

void ZAVRA_100::Get_Info_Frame(ZAVRA_100_Info_Telemetry* telemetry)
{
    read_frame(*this, protocol::get_info_frame, "INFO_FRAME", telemetry);
}

void ZAVRA_100::Get_Standard_Telemetry(ZAVRA_100_Standard_Telemetry* telemetry)
{
    read_frame(*this, protocol::get_standard_telemetry, "STANDARD_TELEMETRY", telemetry);
}

void ZAVRA_100::Get_Sensor_Telemetry(ZAVRA_100_Sensor_Telemetry* telemetry)
{
    read_frame(*this, protocol::get_sensor_telemetry, "SENSOR_TELEMETRY", telemetry);
}

void ZAVRA_100::Get_Actuator_Telemetry(ZAVRA_100_Actuator_Telemetry* telemetry)
{
    read_frame(*this, protocol::get_actuator_telemetry, "ACTUATOR_TELEMETRY", telemetry);
}

void ZAVRA_100::Get_Attitude_Telemetry(ZAVRA_100_Attitude_Telemetry* telemetry)
{
    read_frame(*this, protocol::get_attitude_telemetry, "ATTITUDE_TELEMETRY", telemetry);
}

void ZAVRA_100::Get_Power_Telemetry(ZAVRA_100_Power_Telemetry* telemetry)
{
    read_frame(*this, protocol::get_power_telemetry, "POWER_STATUS_TELEMETRY", telemetry);
}
