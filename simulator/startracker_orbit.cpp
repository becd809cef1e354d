#include "startracker_orbit.h"

#include "../device/protocol/startracker_orbit.h"

namespace zavra
{

Startracker_Orbit::Startracker_Orbit(Command_Table&, const Unit_Time&, World&) {}

void Startracker_Orbit::reset() {}

}
