#pragma once

#include "command_table.h"
#include "unit_time.h"
#include "world.h"

namespace zavra
{

class Controllers
{
public:
    Controllers(Command_Table& commands, const Unit_Time& time, World& world);

    void reset();
};

}
