#pragma once

#include "bytes.h"
#include "simulator/bus_server.h"
#include "simulator/simulated_unit.h"

#include <ZAVRA_100.h>

#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace zavra::test
{

/// A directory of buses that the platform finds, and a unit whose time stands still until the clock is advanced.
class Bus_Test : public ::testing::Test
{
protected:
    Bus_Test()
    {
        char name[] = "/tmp/zavra_test_XXXXXX";
        directory = ::mkdtemp(name);
        ::setenv("VELM_I2C_BUS_DIR", directory.c_str(), 1);
    }

    ~Bus_Test() override { std::filesystem::remove_all(directory); }

    std::filesystem::path directory;
    Canned_World world;
    Manual_Clock clock;
    Simulated_Unit unit{world, clock, {.latency = Clock::Time(0)}};
};

/// The library's device layer, connected to the unit over a bus.
class Connected_Test : public Bus_Test
{
protected:
    void advance(unsigned int msec)
    {
        const auto guard = unit.lock();
        clock.advance(Clock::Time(msec));
    }

    Bus_Server server{directory, "i2c-0", {{10, &unit}}};
    ZAVRA_100 device{10, "i2c-0"};
};

}
