#include "sensors.h"

#include "../device/protocol/sensors.h"

namespace zavra
{

Sensors::Sensors(Command_Table&, const Unit_Time&, World&) {}

void Sensors::reset() {}

}
