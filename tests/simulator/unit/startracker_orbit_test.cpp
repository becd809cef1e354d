#include "tests/support/simulated_bus.h"

using namespace zavra::test;

TEST_F(Connected_Test, the_star_tracker_gives_what_it_measures_or_what_was_set)
{
    world.quaternion = {0.5F, -0.5F, 0.5F, 0.5F};
    device.Set_Epoch_Time(1516492800000);
    const auto quaternion = read(&ZAVRA_100::Get_Startracker_Quaternion);
    EXPECT_EQ(std::tuple(quaternion.quaternion.q_2, quaternion.epoch_time_msec), std::tuple(-0.5F, 1516492800000U));
    device.Set_Startracker_Quaternion({{1.0F, 2.0F, 3.0F, 4.0F}, 0});
    EXPECT_EQ(read(&ZAVRA_100::Get_Startracker_Quaternion).quaternion.q_2, 2.0F);
}

TEST_F(Connected_Test, the_star_tracker_echoes_native_commands)
{
    const auto native_status = [&] { return read(&ZAVRA_100::Check_Startracker_Native_Reply); };
    const auto native_bytes = [&](std::size_t count) {
        Octets bytes(count);
        for (unsigned char& byte : bytes)
            device.Read_Startracker_Native_Reply(&byte, 1);
        return hexadecimal(bytes);
    };
    EXPECT_EQ(native_status(), 0U);
    unsigned char sent[] = {0xC0, 1, 2, 0, 0xFF, 5};
    device.Send_Startracker_Native_Command(sent, 6);
    EXPECT_EQ(native_status(), 1U);
    EXPECT_EQ(native_bytes(3), "c00102");

    // Another command between two reads has its own reply, as often as it is read.
    unsigned char word[5] = {1, 2, 3, 4};
    device.Set_System_Scheduler_Register(0x12345678);
    device.ZAVRA_Generic_Get(0x0228, nullptr, 0, word, 4);
    device.I2CReadByteArray(word, 5);
    EXPECT_EQ(hexadecimal({word, word + 4}), "12345678");

    EXPECT_EQ(native_status(), 1U);
    device.ZAVRA_Startracker_Native_Get(word, 2);
    EXPECT_EQ(hexadecimal({word, word + 2}) + native_bytes(1), "00ff05");
    EXPECT_EQ(native_status(), 0U);
    EXPECT_THROW(native_bytes(1), ZAVRA_100_Exception);

    device.Send_Startracker_Native_Command(sent, 6);
    device.Send_Startracker_Native_Command(sent, 1);
    EXPECT_EQ(native_bytes(1), "c0") << "without asking whether there is one";
    EXPECT_EQ(native_status(), 0U) << "a new command replaces what was not read";
}

struct Orbit_Module_Test : Connected_Test
{
    unsigned int load(const std::string& first, const std::string& second, unsigned long long interval_msec = 0)
    {
        ZAVRA_100_Orbit_TLE_Data data{};
        first.copy(data.tle_1, sizeof data.tle_1);
        second.copy(data.tle_2, sizeof data.tle_2);
        data.update_interval_msec = interval_msec;
        return static_cast<unsigned int>(module.load(data));
    }

    void expect(float x, float y, float z, double seconds_after_midnight) const
    {
        const auto [position, velocity, julian_date] = module.orbit();
        EXPECT_NEAR(std::hypot(position.x - x, position.y - y, position.z - z), 0, 0.0005F) << "half a metre";
        EXPECT_DOUBLE_EQ(julian_date, 2458139.5 + seconds_after_midnight / 86400.0);
    }

    const std::string line_1 = "1 25544U 98067A   18020.89808844  .00002078  00000-0  38550-4 0  9992";
    const std::string line_2 = "2 25544  51.6424  32.9776 0003646  28.7227  39.5332 15.54190080 95614";
    static constexpr unsigned long long midnight = 1516492800000; // 21.01.2018 0:00:00 UTC
    Startracker_Orbit& module = unit.parts.startracker_orbit;
    Unit_Time& time = unit.parts.time;
};

TEST_F(Orbit_Module_Test, the_state_belongs_to_the_time_at_which_the_update_interval_began)
{
    clock.advance(Clock::Time(700));
    time.set_epoch_msec(midnight);
    expect(0.0F, 0.0F, 0.0F, 0);

    // Expected values are those of the Python package sgp4 2.15 with WGS-72 constants.
    ASSERT_EQ(load(line_1, line_2, 2500), 0U);
    expect(3110.32976F, -2957.45834F, -5259.04047F, 0);
    EXPECT_NEAR(module.orbit().velocity.x, 5.99358258F, 1e-6F);
    clock.advance(Clock::Time(2499));
    expect(3110.32976F, -2957.45834F, -5259.04047F, 0);
    clock.advance(Clock::Time(501));
    expect(3125.30131F, -2945.75790F, -5256.72136F, 2.5);
    ASSERT_EQ(load(line_1, line_2, 0), 0U);
    clock.advance(Clock::Time(1));
    time.set_epoch_msec(midnight + 3000);
    expect(3128.29265F, -2943.41500F, -5256.25251F, 3);

    // The elements do not reach back to 1970, and there is no epoch time before it.
    ASSERT_EQ(load(line_1, line_2, 1000), 0U);
    clock.advance(Clock::Time(900));
    time.set_epoch_msec(0);
    expect(0.0F, 0.0F, 0.0F, -1516492800.0);
}

TEST_F(Orbit_Module_Test, elements_that_are_refused_leave_the_old_ones)
{
    const std::tuple<std::string, std::string, unsigned int> cases[] = {
        {"", "", 1},
        {line_1 + "x", line_2, 1}, // no terminator
        {line_1, line_2.substr(0, 68) + "5", 7},
        {line_1, "2 25544  34.2682 348.7242 1859667 331.7664  19.3264  6.00000000413660", 10}, // deep space
    };
    time.set_epoch_msec(midnight);
    ASSERT_EQ(load(line_1, line_2), 0U);
    for (const auto& [first, second, code] : cases) {
        EXPECT_EQ(load(first, second), code);
        expect(3110.32976F, -2957.45834F, -5259.04047F, 0);
    }
    module.reset();
    expect(0.0F, 0.0F, 0.0F, 0);
}
