#include "../protocol/registers.h"
#include "../device/ZAVRA_100.h"
#include "VELM_ZAVRA_API.h"
#include "VELM_ZAVRA_REGISTER_MAP.h"
#include "call.h"

using namespace zavra;

namespace
{

/// One reading of all registers.
class Reading
{
public:
    Reading(ZAVRA_100& device, const char* action_words)
        : telemetry_(query<ZAVRA_100_Standard_Telemetry>(device, action_words, &ZAVRA_100::Get_Standard_Telemetry))
    {
    }

    VELM_ZAVRA_API_REGISTER operator[](VELM_ZAVRA_API_REGISTERS which) const
    {
        return known_names_.Decode(which, telemetry_.*register_sources[which].word);
    }

private:
    ZAVRA_100_Standard_Telemetry telemetry_;
    VELM_ZAVRA_REGISTER_MAP known_names_;
};

}

VELM_ZAVRA_API_REGISTER VELM_ZAVRA_API::Get_System_Status_Register()
{
    return Reading(*device_, "get system status register")[VELM_ZAVRA_API_SYSTEM_STATUS_REGISTER];
}

VELM_ZAVRA_API_REGISTER VELM_ZAVRA_API::Get_System_Error_Register()
{
    return Reading(*device_, "get system error register")[VELM_ZAVRA_API_SYSTEM_ERROR_REGISTER];
}

VELM_ZAVRA_API_REGISTER VELM_ZAVRA_API::Get_Sensors_Error_Register()
{
    return Reading(*device_, "get sensors error register")[VELM_ZAVRA_API_SENSORS_ERROR_REGISTER];
}

VELM_ZAVRA_API_REGISTER VELM_ZAVRA_API::Get_Actuators_Error_Register()
{
    return Reading(*device_, "get actuators error register")[VELM_ZAVRA_API_ACTUATORS_ERROR_REGISTER];
}

VELM_ZAVRA_API_REGISTER VELM_ZAVRA_API::Get_Livelyhood_Register()
{
    return Reading(*device_, "get livelyhood register")[VELM_ZAVRA_API_LIVELYHOOD_REGISTER];
}

VELM_ZAVRA_API_REGISTER VELM_ZAVRA_API::Get_Scheduler_Register()
{
    return Reading(*device_, "get scheduler register")[VELM_ZAVRA_API_SYSTEM_SCHEDULER_REGISTER];
}

VELM_ZAVRA_API_SATELLITE_REGISTERS VELM_ZAVRA_API::Get_Satellite_Registers()
{
    const Reading reading(*device_, "get satellite registers");
    return {reading[VELM_ZAVRA_API_SAT_MAIN_REGISTER], reading[VELM_ZAVRA_API_SAT_ERROR_REGISTER],
            reading[VELM_ZAVRA_API_SAT_SCHEDULER_REGISTER]};
}

VELM_ZAVRA_API_ALL_REGISTERS VELM_ZAVRA_API::Get_All_Registers()
{
    const Reading reading(*device_, "get all registers");
    VELM_ZAVRA_API_ALL_REGISTERS all;
    for (unsigned int which = 0; which < std::size(register_sources); ++which)
        all.registers[which] = reading[static_cast<VELM_ZAVRA_API_REGISTERS>(which)];
    return all;
}
