#include "tests/support/quiet_platform.h"

#include <ZAVRA_100.h>

#include <cstdlib>
#include <gtest/gtest.h>
#include <new>

namespace
{

long allocations = 0;

}

[[gnu::noinline]] void* operator new(std::size_t size)
{
    ++allocations;
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

TEST(Allocation_Test, a_command_that_succeeds_allocates_nothing)
{
    ZAVRA_100 device;
    const unsigned char zeros[513] = {}; // a valid response of any size: the CRC of zeros is zero
    zavra::test::answer_with(zeros);

    const std::pair<const char*, void (*)(ZAVRA_100&)> commands[] = {
        {"a setter", [](ZAVRA_100& d) { d.Set_Epoch_Time(1); }},
        {"a setter that prints", [](ZAVRA_100& d) { d.Set_DCDC_Configuration(1); }},
        {"a getter",
         [](ZAVRA_100& d) {
             unsigned long long time;
             d.Get_Epoch_Time(&time);
         }},
        {"a record",
         [](ZAVRA_100& d) {
             ZAVRA_100_Sensor_Telemetry t;
             d.Get_Sensor_Telemetry(&t);
         }},
        {"text",
         [](ZAVRA_100& d) {
             ZAVRA_100_Info_Telemetry t;
             d.Get_Info_Frame(&t);
         }},
        {"registers", [](ZAVRA_100& d) { d.Check_Command_Errors(); }},
    };
    for (const auto& [name, call] : commands) {
        const long before = allocations;
        call(device);
        EXPECT_EQ(allocations - before, 0) << name;
    }

    const long before = allocations;
    EXPECT_THROW(device.Set_Active_Gyroscope(3), ZAVRA_100_Exception);
    EXPECT_GT(allocations, before) << "the count counts";
}
