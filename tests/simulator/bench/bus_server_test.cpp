#include "simulator/bench/test_bench.h"
#include "tests/support/simulated_bus.h"

using namespace zavra::test;

TEST_F(Bus_Test, a_socket_is_taken_over_only_from_the_dead)
{
    Simulated_Unit own; // which needs no surroundings to be served
    {
        Bus_Server first{own, directory, "i2c-0"};
        EXPECT_THAT(message_of<std::runtime_error>([&] { Bus_Server(unit, directory, "i2c-0"); }),
                    HasSubstr("another simulated bus is running there"));
        EXPECT_NO_THROW(ZAVRA_100(10, "i2c-0").Clear_System_Error_Register()) << "the first goes on";
        std::filesystem::create_hard_link(first.path(), directory / "kept");
    }
    EXPECT_FALSE(std::filesystem::exists(directory / "i2c-0"));
    std::filesystem::rename(directory / "kept", directory / "i2c-0");
    Bus_Server second{own, directory, "i2c-0"};
    EXPECT_NO_THROW(ZAVRA_100(10, "i2c-0").Clear_System_Error_Register());

    std::ofstream(directory / "i2c-1") << "somebody's file";
    EXPECT_THAT(message_of<std::runtime_error>([&] { Bus_Server(unit, directory, "i2c-1"); }),
                HasSubstr("something else than a socket"));
    EXPECT_TRUE(std::filesystem::exists(directory / "i2c-1"));
}

TEST_F(Bus_Test, two_units_on_each_of_two_buses_at_the_same_time)
{
    const Test_Bench::Options options{.addresses = {10, 11}, .unit = {.latency = Clock::Time(0)}};
    Test_Bench first{clock, options};
    Test_Bench second{clock, options};
    for (Test_Bench* bench : {&first, &second})
        for (const unsigned int address : options.addresses)
            bench->unit(address).faults.set_rate({Fault::crc, 0.1});
    const Bus_Server servers[]{{directory, "i2c-0", first.devices()}, {directory, "i2c-1", second.devices()}};
    const auto work = [](const std::string& bus, unsigned int address, unsigned int value) {
        ZAVRA_100 device(address, bus);
        for (unsigned int i = 0; i < 100; ++i) {
            unsigned int read = 0;
            device.Set_HIL_Configuration(value + i);
            device.Get_HIL_Configuration(&read);
            EXPECT_EQ(read, value + i) << bus << ' ' << address;
        }
    };
    {
        const std::jthread threads[]{std::jthread(work, "i2c-0", 10, 1000), std::jthread(work, "i2c-0", 11, 2000),
                                     std::jthread(work, "i2c-1", 10, 3000), std::jthread(work, "i2c-1", 11, 4000)};
    }
    EXPECT_THAT(message_of<Device_Failure>([] { ZAVRA_100(12, "i2c-0").Clear_System_Error_Register(); }),
                HasSubstr("not acknowledged"))
        << "nobody has that address";
    EXPECT_EQ(second.unit(11).unit.parts.system.settings.hil_configuration, 4099U);
}
