#pragma once

namespace zavra::tools
{

/// A telemetry frame and the method that reads it.
struct Frame
{
    const char* name;
    const char* getter;
};

inline constexpr Frame frames[] = {
    {"info", "Get_Info_Frame"},
    {"standard", "Get_Standard_Telemetry"},
    {"sensor", "Get_Sensor_Telemetry"},
    {"actuator", "Get_Actuator_Telemetry"},
    {"attitude", "Get_Attitude_Telemetry"},
    {"power", "Get_Power_Telemetry"},
};

}
