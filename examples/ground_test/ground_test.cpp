// Tests of an application on the ground: the real library, a simulated bus, a simulated unit behind it.

#include <VELM_ZAVRA_API.h>

#include <simulator/bench/bus_server.h>
#include <simulator/bench/test_bench.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

using namespace zavra::simulator;

namespace
{

// What is to be tested; here it stands for the application.
bool tumbles(VELM_ZAVRA_API& unit)
{
    const auto rate = unit.Get_Attitude_Telemetry().angular_velocity_radps;
    return rate.x * rate.x + rate.y * rate.y + rate.z * rate.z > 0.05F * 0.05F;
}

class Ground_Test : public ::testing::Test
{
protected:
    // A bus that no other program looks for; the library is pointed at it before it opens it.
    static std::filesystem::path new_directory()
    {
        std::string name = std::filesystem::temp_directory_path() / "ground_test-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("cannot make a directory like " + name);
        ::setenv("VELM_I2C_BUS_DIR", name.c_str(), 1);
        return name;
    }

    ~Ground_Test() override { std::filesystem::remove_all(directory); }

    const std::filesystem::path directory = new_directory();
    Steady_Clock clock;
    Test_Bench bench{clock};
    Bus_Server bus{directory, "i2c-0", bench.devices()};
    VELM_ZAVRA_API unit;
};

}

TEST_F(Ground_Test, a_tumble_is_noticed)
{
    EXPECT_FALSE(tumbles(unit));
    {
        const auto guard = bench.unit().unit.lock(); // the bus is served in another thread
        bench.unit().world.angular_velocity = {0.1F, -0.2F, 0.0F};
    }
    EXPECT_TRUE(tumbles(unit));
}

TEST_F(Ground_Test, a_damaged_reply_is_asked_for_again)
{
    bench.unit().faults.inject(Fault::crc);
    EXPECT_FALSE(tumbles(unit));
}

TEST_F(Ground_Test, a_dead_bus_is_an_exception_and_then_all_is_well)
{
    bench.unit().faults.inject(Fault::dead_bus, Clock::Time(300));
    EXPECT_THROW(tumbles(unit), VELM_ZAVRA_API_Exception);
    bench.time.advance(Clock::Time(300));
    EXPECT_FALSE(tumbles(unit));
}
