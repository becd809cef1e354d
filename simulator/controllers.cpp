#include "controllers.h"

#include "../device/protocol/controllers.h"

namespace zavra
{

Controllers::Controllers(Command_Table&, const Unit_Time&, World&) {}

void Controllers::reset() {}

}
