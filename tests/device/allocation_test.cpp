#include "tests/support/doubles.h"

static long allocations = 0;

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

using namespace zavra::test;

TEST_F(Device_Test, a_command_that_succeeds_allocates_nothing)
{
    platform.recording = false;
    platform.debug_levels = "";
    platform.unanswered = 0; // a valid response of any size: the CRC of zeros is zero
    unsigned long long time;
    ZAVRA_100_Sensor_Telemetry record;
    ZAVRA_100_Info_Telemetry text;
    const std::pair<const char*, std::function<void()>> commands[] = {
        {"a setter", [&] { device.Set_Epoch_Time(1); }},
        {"a setter that prints", [&] { device.Set_DCDC_Configuration(1); }},
        {"a getter", [&] { device.Get_Epoch_Time(&time); }},
        {"a record", [&] { device.Get_Sensor_Telemetry(&record); }},
        {"text", [&] { device.Get_Info_Frame(&text); }},
        {"registers", [&] { device.Check_Command_Errors(); }},
    };
    for (const auto& [name, call] : commands) {
        const long before = allocations;
        call();
        EXPECT_EQ(allocations - before, 0) << name;
    }

    const long before = allocations;
    EXPECT_THROW(device.Set_Active_Gyroscope(3), ZAVRA_100_Exception);
    EXPECT_GT(allocations, before) << "the count counts";
}
