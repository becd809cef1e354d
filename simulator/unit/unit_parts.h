#pragma once

#include "../onboard/flight_software.h"
#include "actuators.h"
#include "controllers.h"
#include "modes.h"
#include "sensors.h"
#include "startracker_orbit.h"
#include "system.h"
#include "unit_time.h"

namespace zavra::simulator
{

/// The parts of the simulated unit, each with the commands it executes and the settings it keeps.
struct Unit_Parts
{
    Unit_Parts(Command_Table& commands, const Clock& clock, World& world)
        : time(clock),
          system(commands, time),
          sensors(commands, time, world),
          startracker_orbit(commands, time, world),
          actuators(commands, time, world),
          controllers(commands, time, world),
          modes(commands, time, world, actuators, report)
    {
    }

    /// Power cycle: time restarts, settings are lost.
    void reset()
    {
        time.reset();
        system.reset();
        sensors.reset();
        startracker_orbit.reset();
        actuators.reset();
        controllers.reset();
        modes.reset();
        report.reset();
    }

    /// One control tick: what the on-board software gets for what the sensors gave. Injected values stand for measured
    /// ones, and both are processed as the sensors' parameters say.
    Measurements measurements(const Measurements& sensed);

    /// What the on-board software is to go by.
    Flight_Settings flight_settings() const;

    Unit_Time time;
    std::optional<Onboard_Software::Report> report; ///< Of the on-board software's last control tick, if it gave one
    System system;
    Sensors sensors;
    Startracker_Orbit startracker_orbit;
    Actuators actuators;
    Controllers controllers;
    Modes modes;
};

}
