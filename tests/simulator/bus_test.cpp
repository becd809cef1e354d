#include "tests/support/simulated_bus.h"

#include <VELM_I2C_DEV.h>
#include <VELM_ZAVRA_API.h>

#include <fstream>
#include <gmock/gmock.h>
#include <memory>
#include <thread>

namespace zavra::test
{

TEST_F(Bus_Test, the_library_talks_to_the_unit)
{
    Bus_Server server{directory, "i2c-0", {{10, &unit}}};
    ZAVRA_100 device(10, "i2c-0");
    device.Set_System_Scheduler_Register(0xCAFE);
    unsigned int read = 0;
    device.Get_System_Scheduler_Register(&read);
    EXPECT_EQ(read, 0xCAFEU);

    ZAVRA_100_Info_Telemetry info;
    device.Get_Info_Frame(&info);
    EXPECT_STREQ(info.device_name, "ZAVRA-SIM");

    unsigned char nonsense[] = {1, 2, 3};
    device.I2CWriteByteArray(nonsense, 3);
    EXPECT_EQ(device.Check_Command_Errors(), 1U);
    device.Clear_System_Error_Register();
    EXPECT_EQ(device.Check_Command_Errors(), 0U);

    ZAVRA_100 elsewhere(11, "i2c-0");
    EXPECT_THAT(
        message_of<ZAVRA_100_Exception>([&] { elsewhere.Clear_System_Error_Register(); }),
        testing::AllOf(testing::StartsWith("Failed to clear error register (Failed to use Generic-SET for ZAVRA ("),
                       testing::HasSubstr("acknowledged")));
}

TEST_F(Bus_Test, a_unit_that_vanishes_between_two_calls_is_an_error_and_its_successor_is_found)
{
    auto server = std::make_unique<Bus_Server>(directory, "i2c-0", Bus_Server::Devices{{10, &unit}});
    ZAVRA_100 device(10, "i2c-0");
    device.Set_Epoch_Time(1);
    server.reset();
    EXPECT_THAT(message_of<ZAVRA_100_Exception>([&] { device.Set_Epoch_Time(1); }),
                testing::StartsWith("Failed to Set Epoch Time (Failed to use Generic-SET for ZAVRA ("));
    server = std::make_unique<Bus_Server>(directory, "i2c-0", Bus_Server::Devices{{10, &unit}});
    EXPECT_NO_THROW(device.Set_Epoch_Time(1));
}

TEST_F(Bus_Test, construction_without_a_bus_says_so)
{
    testing::internal::CaptureStdout();
    EXPECT_THAT(
        message_of<VELM_ZAVRA_API_Exception>([] { VELM_ZAVRA_API(); }),
        testing::AllOf(testing::StartsWith("Failed to instantiate ZAVRA API (Failed to instantiate ZAVRA I2C Device ("),
                       testing::HasSubstr((directory / "i2c-0").string())));
    testing::internal::GetCapturedStdout();
}

TEST_F(Bus_Test, a_socket_is_taken_over_only_from_the_dead)
{
    {
        Bus_Server first{directory, "i2c-0", {{10, &unit}}};
        EXPECT_THAT(message_of<std::runtime_error>([&] {
                        Bus_Server(directory, "i2c-0", {{10, &unit}});
                    }),
                    testing::HasSubstr("another simulated bus is running there"));
        EXPECT_NO_THROW(ZAVRA_100(10, "i2c-0").Clear_System_Error_Register()) << "the first goes on";
        std::filesystem::create_hard_link(first.path(), directory / "kept");
    }
    EXPECT_FALSE(std::filesystem::exists(directory / "i2c-0"));
    std::filesystem::rename(directory / "kept", directory / "i2c-0");
    Bus_Server second{directory, "i2c-0", {{10, &unit}}};
    EXPECT_NO_THROW(ZAVRA_100(10, "i2c-0").Clear_System_Error_Register());

    std::ofstream(directory / "i2c-1") << "somebody's file";
    EXPECT_THAT(message_of<std::runtime_error>([&] {
                    Bus_Server(directory, "i2c-1", {{10, &unit}});
                }),
                testing::HasSubstr("something else than a socket"));
    EXPECT_TRUE(std::filesystem::exists(directory / "i2c-1"));
}

TEST_F(Bus_Test, two_units_and_several_clients_share_a_bus)
{
    Simulated_Unit other{world, clock, {.latency = Clock::Time(0)}};
    Bus_Server server{directory, "i2c-0", {{10, &unit}, {11, &other}}};
    const auto work = [](unsigned int address) {
        ZAVRA_100 device(address, "i2c-0");
        for (unsigned int i = 0; i < 50; ++i) {
            unsigned int read = 0;
            device.Set_HIL_Configuration(address << 8U | i);
            device.Get_HIL_Configuration(&read);
            EXPECT_EQ(read, address << 8U | i);
        }
    };
    std::thread thread(work, 11);
    work(10);
    thread.join();
}

}
