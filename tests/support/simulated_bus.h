#pragma once

#include "bytes.h"
#include "simulator/bus_server.h"
#include "simulator/simulated_unit.h"

#include <cstdlib>
#include <filesystem>

namespace zavra::test
{

/// A directory of buses that the platform finds, and a unit to put on one.
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
    Steady_Clock clock;
    Simulated_Unit unit{world, clock, {.latency = Clock::Time(0)}};
};

}
