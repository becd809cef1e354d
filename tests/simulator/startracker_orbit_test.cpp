#include "simulator/startracker_orbit.h"
#include "tests/support/simulated_bus.h"

#include <ZAVRA_100.h>

namespace zavra::test
{

namespace
{

const std::string line_1 = "1 25544U 98067A   18020.89808844  .00002078  00000-0  38550-4 0  9992";
const std::string line_2 = "2 25544  51.6424  32.9776 0003646  28.7227  39.5332 15.54190080 95614";

std::string native_bytes(ZAVRA_100& device, std::size_t count)
{
    Octets bytes(count);
    for (unsigned char& byte : bytes)
        device.Read_Startracker_Native_Reply(&byte, 1);
    return hexadecimal(bytes);
}

unsigned int native_status(ZAVRA_100& device)
{
    unsigned int status = 99;
    device.Check_Startracker_Native_Reply(&status);
    return status;
}

}

TEST_F(Bus_Test, the_star_tracker_gives_what_it_measures_or_what_was_set)
{
    world.quaternion = {0.5F, -0.5F, 0.5F, 0.5F};
    auto& list = unit.parts.startracker_orbit.event_list;
    list.num_event = 255;
    list.xisf[0] = -123456789;
    list.yisf[22] = 7;
    Bus_Server server{directory, "i2c-0", {{10, &unit}}};
    ZAVRA_100 device(10, "i2c-0");

    device.Set_Epoch_Time(1516492800000);
    ZAVRA_100_Startracker_Quaternion quaternion{};
    device.Get_Startracker_Quaternion(&quaternion);
    EXPECT_EQ(quaternion.quaternion.q_2, -0.5F);
    EXPECT_GE(quaternion.epoch_time_msec, 1516492800000U);
    device.Set_Startracker_Quaternion({{1.0F, 2.0F, 3.0F, 4.0F}, 0});
    device.Get_Startracker_Quaternion(&quaternion);
    EXPECT_EQ(quaternion.quaternion.q_2, 2.0F);

    unsigned char mode = 0;
    device.Set_Startracker_Operation_Mode(3);
    device.Get_Startracker_Operation_Mode(&mode);
    EXPECT_EQ(mode, 3);

    ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST events;
    device.Get_Startracker_Event_List(&events);
    EXPECT_EQ(events.num_event, 23);
    EXPECT_EQ(events.xisf[0], -123456789);
    EXPECT_EQ(events.yisf[22], 7);
}

TEST_F(Bus_Test, the_star_tracker_echoes_native_commands)
{
    Bus_Server server{directory, "i2c-0", {{10, &unit}}};
    ZAVRA_100 device(10, "i2c-0");
    EXPECT_EQ(native_status(device), 0U);
    unsigned char sent[] = {0xC0, 1, 2, 0, 0xFF, 5};
    device.Send_Startracker_Native_Command(sent, 6);
    EXPECT_EQ(native_status(device), 1U);
    EXPECT_EQ(native_bytes(device, 3), "c00102");

    // Another command between two reads has its own reply, as often as it is read.
    unsigned char word[5] = {1, 2, 3, 4};
    device.Set_System_Scheduler_Register(0x12345678);
    device.ZAVRA_Generic_Get(0x0228, nullptr, 0, word, 4);
    device.I2CReadByteArray(word, 5);
    EXPECT_EQ(hexadecimal({word, word + 4}), "12345678");

    EXPECT_EQ(native_status(device), 1U);
    device.ZAVRA_Startracker_Native_Get(word, 2);
    EXPECT_EQ(hexadecimal({word, word + 2}) + native_bytes(device, 1), "00ff05");
    EXPECT_EQ(native_status(device), 0U);
    EXPECT_THROW(native_bytes(device, 1), ZAVRA_100_Exception);

    device.Send_Startracker_Native_Command(sent, 6);
    device.Send_Startracker_Native_Command(sent, 1);
    EXPECT_EQ(native_bytes(device, 1), "c0") << "without asking whether there is one";
    EXPECT_EQ(native_status(device), 0U) << "a new command replaces what was not read";
}

class Orbit_Module_Test : public ::testing::Test
{
protected:
    Tle_Error load(const std::string& first, const std::string& second, unsigned long long interval_msec = 0)
    {
        ZAVRA_100_Orbit_TLE_Data data{};
        first.copy(data.tle_1, sizeof data.tle_1);
        second.copy(data.tle_2, sizeof data.tle_2);
        data.update_interval_msec = interval_msec;
        return module.load(data);
    }

    void expect(float x, float y, float z, double julian_date) const
    {
        constexpr float half_metre = 0.0005F;
        const auto orbit = module.orbit();
        EXPECT_NEAR(orbit.position.x, x, half_metre);
        EXPECT_NEAR(orbit.position.y, y, half_metre);
        EXPECT_NEAR(orbit.position.z, z, half_metre);
        EXPECT_DOUBLE_EQ(orbit.julian_date, julian_date);
    }

    static constexpr unsigned long long midnight = 1516492800000; // 21.01.2018 0:00:00 UTC
    static constexpr double midnight_jd = 2458139.5;
    Command_Table commands;
    Manual_Clock clock;
    Unit_Time time{clock};
    Canned_World world;
    Startracker_Orbit module{commands, time, world};
};

TEST_F(Orbit_Module_Test, the_state_belongs_to_the_time_at_which_the_update_interval_began)
{
    clock.advance(Clock::Time(700));
    time.set_epoch_msec(midnight);
    expect(0.0F, 0.0F, 0.0F, midnight_jd);

    // Expected values are those of the Python package sgp4 2.15 with WGS-72 constants.
    ASSERT_EQ(load(line_1, line_2, 2500), Tle_Error::none);
    expect(3110.32976F, -2957.45834F, -5259.04047F, midnight_jd);
    EXPECT_NEAR(module.orbit().velocity.x, 5.99358258F, 1e-6F);
    clock.advance(Clock::Time(2499));
    expect(3110.32976F, -2957.45834F, -5259.04047F, midnight_jd);
    clock.advance(Clock::Time(501));
    expect(3125.30131F, -2945.75790F, -5256.72136F, midnight_jd + 2.5 / 86400.0);
    ASSERT_EQ(load(line_1, line_2, 0), Tle_Error::none);
    clock.advance(Clock::Time(1));
    time.set_epoch_msec(midnight + 3000);
    expect(3128.29265F, -2943.41500F, -5256.25251F, midnight_jd + 3.0 / 86400.0);

    // The elements do not reach back to 1970, and there is no epoch time before it.
    ASSERT_EQ(load(line_1, line_2, 1000), Tle_Error::none);
    clock.advance(Clock::Time(900));
    time.set_epoch_msec(0);
    expect(0.0F, 0.0F, 0.0F, 2440587.5);
}

TEST_F(Orbit_Module_Test, elements_are_checked_and_the_old_ones_kept_when_they_are_refused)
{
    const struct
    {
        const char* what;
        std::string line_1, line_2;
        unsigned int code;
    } cases[] = {
        {"nothing", "", "", 1},
        {"no terminator", line_1 + "x", line_2, 1},
        {"changed digit", line_1, line_2.substr(0, 68) + "5", 7},
        {"deep space", line_1, "2 25544  34.2682 348.7242 1859667 331.7664  19.3264  6.00000000413660", 10},
    };
    time.set_epoch_msec(midnight);
    ASSERT_EQ(load(line_1, line_2), Tle_Error::none);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(static_cast<unsigned int>(load(c.line_1, c.line_2)), c.code);
        expect(3110.32976F, -2957.45834F, -5259.04047F, midnight_jd);
    }
    module.reset();
    expect(0.0F, 0.0F, 0.0F, midnight_jd);
}

}
