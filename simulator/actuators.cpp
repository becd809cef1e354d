#include "actuators.h"

#include "../device/protocol/actuators.h"

namespace zavra
{

Actuators::Actuators(Command_Table&, const Unit_Time&, World&) {}

void Actuators::reset() {}

}
