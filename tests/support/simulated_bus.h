#pragma once

#include "simulator/bench/bus_server.h"
#include "simulator/unit/simulated_unit.h"
#include "temporary_directory.h"

#include <ZAVRA_100.h>

namespace zavra::test
{

using Device_Failure = ZAVRA_100_Exception;

using namespace simulator;

/// A directory of buses that the platform finds, and a unit whose time stands still until the clock is advanced.
struct Bus_Test : testing::Test
{
    Bus_Test() { ::setenv("VELM_I2C_BUS_DIR", directory.c_str(), 1); }

    const Temporary_Directory temporary;
    const std::filesystem::path directory = temporary.path;
    Canned_World world;
    Manual_Clock clock;
    Simulated_Unit unit{world, clock, {.latency = Clock::Time(0)}};
};

/// The library's device layer, connected to the unit over a bus.
struct Connected_Test : Bus_Test
{
    void advance(unsigned int msec)
    {
        const auto guard = unit.lock();
        clock.advance(Clock::Time(msec));
    }

    template <class Record>
    Record read(void (ZAVRA_100::*get)(Record*))
    {
        Record record;
        (device.*get)(&record);
        return record;
    }

    Bus_Server server{directory, "i2c-0", {{10, &unit}}};
    ZAVRA_100 device{10, "i2c-0"};
};

}
