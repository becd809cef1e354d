#include "VELM_ZAVRA_API.h"

#include "../device/ZAVRA_100.h"
#include "call.h"
#include "like_telemetry.h"

using namespace zavra;

VELM_ZAVRA_API_INFO_TELEMETRY VELM_ZAVRA_API::Get_Info_Frame()
{
    return query<VELM_ZAVRA_API_INFO_TELEMETRY>(*device_, "get info frame", &ZAVRA_100::Get_Info_Frame);
}

VELM_ZAVRA_API_STANDARD_TELEMETRY VELM_ZAVRA_API::Get_Standard_Telemetry()
{
    return query<VELM_ZAVRA_API_STANDARD_TELEMETRY>(*device_, "get standard telemetry",
                                                    &ZAVRA_100::Get_Standard_Telemetry);
}

VELM_ZAVRA_API_SENSOR_TELEMETRY VELM_ZAVRA_API::Get_Sensor_Telemetry()
{
    return regroup<VELM_ZAVRA_API_SENSOR_TELEMETRY>(
        query<ZAVRA_100_Sensor_Telemetry>(*device_, "get sensor telemetry", &ZAVRA_100::Get_Sensor_Telemetry));
}

VELM_ZAVRA_API_ACTUATOR_TELEMETRY VELM_ZAVRA_API::Get_Actuator_Telemetry()
{
    return regroup<VELM_ZAVRA_API_ACTUATOR_TELEMETRY>(
        query<ZAVRA_100_Actuator_Telemetry>(*device_, "get actuator telemetry", &ZAVRA_100::Get_Actuator_Telemetry));
}

VELM_ZAVRA_API_ATTITUDE_TELEMETRY VELM_ZAVRA_API::Get_Attitude_Telemetry()
{
    return regroup<VELM_ZAVRA_API_ATTITUDE_TELEMETRY>(
        query<ZAVRA_100_Attitude_Telemetry>(*device_, "get attitude telemetry", &ZAVRA_100::Get_Attitude_Telemetry));
}

VELM_ZAVRA_API_POWER_TELEMETRY VELM_ZAVRA_API::Get_Power_Telemetry()
{
    return query<VELM_ZAVRA_API_POWER_TELEMETRY>(*device_, "get power telemetry", &ZAVRA_100::Get_Power_Telemetry);
}
