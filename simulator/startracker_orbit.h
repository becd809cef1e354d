#pragma once

#include "command_table.h"
#include "unit_time.h"
#include "world.h"

namespace zavra
{

class Startracker_Orbit
{
public:
    Startracker_Orbit(Command_Table& commands, const Unit_Time& time, World& world);

    void reset();
};

}
