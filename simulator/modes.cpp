#include "modes.h"

#include "../device/protocol/modes.h"

namespace zavra
{

Modes::Modes(Command_Table&, const Unit_Time&, World&) {}

void Modes::reset() {}

}
