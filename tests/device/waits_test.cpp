#include "tests/support/interval_timer.h"
#include "tests/support/simulated_bus.h"

using namespace zavra::test;

TEST_F(Connected_Test, waits_last_their_whole_time_when_signals_interrupt_them)
{
    const Interval_Timer timer;
    const auto start = std::chrono::steady_clock::now();
    device.Set_Epoch_Time(1234);
    unsigned long long time = 0;
    device.Get_Epoch_Time(&time);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200));
    EXPECT_EQ(time, 1234U);
    EXPECT_GE(timer.count, 20);
}
