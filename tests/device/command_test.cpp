#include "tests/support/doubles.h"

using namespace zavra::test;

// What no operation of the API reaches; the commands themselves are tested through it.

TEST_F(Device_Test, the_currents_of_the_magnetorquers)
{
    const Payload currents = Payload().f32_range(1, 3);
    platform.reply(currents.hexadecimal());
    ZAVRA_100_Vector3_float read{};
    device.Get_Magnettorquer_All_Currents(&read);
    currents.expect(Layer::device, read);
    EXPECT_EQ(platform.frames(), Lines{hexadecimal(with_crc(octets("b1080000")))});
    EXPECT_EQ(platform.dumped(),
              (Lines{"target_current_A.x: dec = 1", "target_current_A.y: dec = 2", "target_current_A.z: dec = 3"}));
    platform.write_failure = "no bus";
    EXPECT_THAT(message_of<Device_Failure>([&] { device.Get_Magnettorquer_All_Currents(&read); }),
                StartsWith("Failed to Get Currents of All Magnetorquers (Failed to use Generic-GET "));
}

TEST_F(Device_Test, a_getter_that_fails_leaves_the_callers_variables)
{
    unsigned long long msec = 77;
    EXPECT_EQ(message_of<Device_Failure>([&] { device.Get_Power_Update_Interval(&msec); }),
              "Failed to Get System Time (Failed to use Generic-GET for ZAVRA (Bad response CRC, Retry failed))");
    EXPECT_EQ(msec, 77U);

    ZAVRA_100_Power_Telemetry power{};
    power.epoch_time_msec = 99;
    EXPECT_THROW(device.Get_Power_Telemetry(&power), ZAVRA_100_Exception);
    EXPECT_EQ(power.epoch_time_msec, 99U);

    float speed = 7;
    EXPECT_THROW(device.Get_ReactionWheel_Speed(6, &speed), ZAVRA_100_Exception);
    EXPECT_EQ(speed, 7.0F);
}

TEST_F(Device_Test, an_event_list_has_room_for_23)
{
    ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST list;
    list.xisf[2] = list.yisf[22] = 99;
    // Event 22 fills the bytes 178 to 185.
    const char* const header = "REDUCED_EVENT_LIST.HEADER: hex = 0x0a";
    const std::string events = "01020300ffffffff0000008007000000" + std::string(2 * 160, '0') + "15cd5b07ebffffff55";
    for (const auto& [announced, events_found, lines, first_line] :
         {std::tuple{"02", 2, 6, header}, std::tuple{"00", 0, 2, header}, std::tuple{"17", 23, 48, header},
          std::tuple{"18", 23, 49, "WARNING: Event list of 24 events cut to 23"},
          std::tuple{"ff", 23, 49, "WARNING: Event list of 255 events cut to 23"}}) {
        SCOPED_TRACE(announced);
        platform = {};
        platform.reply("0a" + std::string(announced) + events);
        device.Get_Startracker_Event_List(&list);
        EXPECT_EQ(list.num_event, events_found);
        EXPECT_EQ(list.xisf[2], events_found < 23 ? 99 : 0) << "what the unit does not give stays";
        EXPECT_EQ(list.yisf[22], events_found < 23 ? 99 : -21);
        ASSERT_EQ(platform.dumped().size(), static_cast<std::size_t>(lines));
        EXPECT_EQ(platform.dumped()[0], first_line);
        if (events_found == 2) {
            EXPECT_THAT(platform.dumped(), testing::Contains("REDUCED_EVENT_LIST.XISF 1: dec = -2147483648"));
            EXPECT_EQ(platform.dumped()[5], "REDUCED_EVENT_LIST.YISF 1: dec = 7");
        }
    }
}
