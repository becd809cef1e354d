#pragma once

#include "../../protocol/records/telemetry.h"
#include "command_table.h"
#include "unit_parts.h"
#include "world.h"

namespace zavra::simulator
{

/// The simulated unit's telemetry frames, put together from what the other parts of the unit know.
///
/// Where the unit's own software runs, the attitude frame shows what it believes: zeros for an attitude that it does
/// not know. sat_main_register is its Determination_Status, sat_error_register its Determination_Error.
class Telemetry
{
public:
    Telemetry(Command_Table& commands, const Unit_Parts& parts, const World& world);

    ZAVRA_100_Standard_Telemetry standard() const;
    ZAVRA_100_Sensor_Telemetry sensor() const;
    ZAVRA_100_Actuator_Telemetry actuator() const;
    ZAVRA_100_Attitude_Telemetry attitude() const;
    ZAVRA_100_Power_Telemetry power() const;

private:
    const Unit_Parts& parts_;
    const World& world_;
};

}
