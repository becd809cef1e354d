#pragma once

#include "actuators.h"
#include "controllers.h"
#include "modes.h"
#include "sensors.h"
#include "startracker_orbit.h"
#include "system.h"
#include "telemetry.h"

namespace zavra::protocol
{

/// Every command of the unit.
inline constexpr auto commands = system_commands + telemetry_commands + sensors_commands + startracker_orbit_commands +
                                 actuators_commands + controllers_commands + modes_commands;

}
