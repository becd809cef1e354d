#pragma once

#include "../onboard/flight_settings.h"
#include "command_table.h"
#include "unit_time.h"
#include "world.h"

namespace zavra::simulator
{

/// The simulated unit's controllers: their parameters, and which of them runs on which axis. The unit's own software
/// has them turn a satellite; without one they turn nothing.
class Controllers
{
public:
    using Settings = Controller_Settings;
    using Axis = Settings::Axis;
    using Running = Settings::Running;

    Controllers(Command_Table& commands, const Unit_Time& time, World& world);

    void reset();

    Settings settings;

private:
    Axis& axis(unsigned char index);
    /// A controller that is started takes its axis over from the other one.
    void start(unsigned char index, Running controller, float target);
    /// Stopping a controller that does not run does nothing.
    void stop(unsigned char index, Running controller);
};

}
