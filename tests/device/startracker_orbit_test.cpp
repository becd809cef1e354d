#include "tests/support/command_cases.h"

namespace zavra::test
{

TEST_F(Command_Test, star_tracker_commands)
{
    ZAVRA_100_Startracker_Quaternion quaternion{};
    unsigned char mode = 0;
    unsigned int status = 0;
    unsigned char native[] = {0xC0, 0x00, 0xDB};
    const std::string floats = Payload().f32_range(1, 4).hexadecimal();
    check({
        {"Set_Startracker_Quaternion",
         [](auto& d) {
             d.Set_Startracker_Quaternion({{1.0F, 2.0F, 3.0F, 4.0F}, 99});
         },
         "ab01 1000" + floats, "", "Set Startracker Quaternion"},
        {"Get_Startracker_Quaternion",
         [&](auto& d) { d.Get_Startracker_Quaternion(&quaternion); },
         "ab02 0000",
         floats + "00000160000001e0",
         "Get Startracker Quaternion",
         {"STARTRACKER QUATERNION: ", "STARTRACKER.QUATERNION.Q_1: dec = 1", "STARTRACKER.QUATERNION.Q_2: dec = 2",
          "STARTRACKER.QUATERNION.Q_3: dec = 3", "STARTRACKER.QUATERNION.Q_4: dec = 4",
          "STARTRACKER.EPOCH_TIME_MSEC: dec = 1511828488672"}},
        {"Set_Startracker_Operation_Mode", [](auto& d) { d.Set_Startracker_Operation_Mode(0xFE); }, "ab11 0100 fe", "",
         "Set Startracker Operation Mode"},
        {"Get_Startracker_Operation_Mode", [&](auto& d) { d.Get_Startracker_Operation_Mode(&mode); }, "ab12 0000", "fe",
         "Get Startracker Operation Mode"},
        {"Send_Startracker_Native_Command", [&](auto& d) { d.Send_Startracker_Native_Command(native, 3); },
         "ab20 0300 c000db", "", "Send Startracker Native Command"},
        {"Check_Startracker_Native_Reply", [&](auto& d) { d.Check_Startracker_Native_Reply(&status); }, "ab21 0000",
         "ff", "Get Startracker Operation Mode"},
    });
    EXPECT_EQ(quaternion.quaternion.q_4, 4.0F);
    EXPECT_EQ(quaternion.epoch_time_msec, 1511828488672U);
    EXPECT_EQ(mode, 0xFE);
    EXPECT_EQ(status, 255U);
}

TEST_F(Command_Test, event_list)
{
    ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST list;
    list.xisf[2] = list.yisf[22] = 99;
    // Event 22 fills the bytes 178 to 185.
    const std::string events = "01020300ffffffff0000008007000000" + std::string(2 * 160, '0') + "15cd5b07ebffffff55";
    check({{"Get_Startracker_Event_List",
            [&](auto& d) { d.Get_Startracker_Event_List(&list); },
            "ab04 0000",
            "0a02" + events,
            "Get Startracker Event List",
            {"REDUCED_EVENT_LIST.HEADER: hex = 0x0a", "REDUCED_EVENT_LIST.NUM_EVENT: hex = 0x02",
             "REDUCED_EVENT_LIST.XISF 0: dec = 197121", "REDUCED_EVENT_LIST.YISF 0: dec = -1",
             "REDUCED_EVENT_LIST.XISF 1: dec = -2147483648", "REDUCED_EVENT_LIST.YISF 1: dec = 7"}}});
    EXPECT_EQ(list.yisf[1], 7);
    EXPECT_EQ(list.xisf[2], 99) << "what the unit does not give stays";

    for (const auto& [announced, events_found, lines, first_line] :
         {std::tuple{"00", 0, 2, "REDUCED_EVENT_LIST.HEADER: hex = 0x0a"},
          std::tuple{"17", 23, 48, "REDUCED_EVENT_LIST.HEADER: hex = 0x0a"},
          std::tuple{"18", 23, 49, "WARNING: Event list of 24 events cut to 23"},
          std::tuple{"ff", 23, 49, "WARNING: Event list of 255 events cut to 23"}}) {
        SCOPED_TRACE(announced);
        platform = {};
        platform.reply("0a" + std::string(announced) + events);
        device.Get_Startracker_Event_List(&list);
        EXPECT_EQ(list.num_event, events_found);
        EXPECT_EQ(list.yisf[22], events_found == 0 ? 99 : -21);
        EXPECT_EQ(platform.dumped().size(), static_cast<std::size_t>(lines));
        EXPECT_EQ(platform.dumped().at(0), first_line);
    }
}

TEST_F(Command_Test, orbit_commands)
{
    // Lines without a terminator travel as they are and are shown no further than they go.
    const std::string tle_1 = "1 25544U 98067A   18020.89808844", tle_2(70, 'x');
    ZAVRA_100_Orbit_TLE_Data tle{};
    tle_1.copy(tle.tle_1, sizeof tle.tle_1);
    tle_2.copy(tle.tle_2, sizeof tle.tle_2);
    tle.update_interval_msec = 1000;
    unsigned char response = 0;
    ZAVRA_100_Orbit_Propagation_Data orbit{};
    check({
        {"Init_Orbit_Module",
         [&](auto& d) { d.Init_Orbit_Module(tle, &response); },
         "ac01 9400" + Payload().text(tle_1, 70).text(tle_2, 70).hexadecimal() + "00000000000003e8",
         "0b",
         "Init Orbit Module",
         {"TLE_1: ascii = " + tle_1, "TLE_2: ascii = " + tle_2, "UPDATE_INTERVAL_MSEC: dec = 1000", "Response = 11"}},
        {"Get_Orbit_Data",
         [&](auto& d) { d.Get_Orbit_Data(&orbit); },
         "ac02 0000",
         Payload().f32_range(1, 6).f64(0.5).hexadecimal(),
         "Get Orbit Data",
         {"ZAVRA_100_Orbit_Propagation_Data", "POSITION.X: dec = 1", "POSITION.Y: dec = 2", "POSITION.Z: dec = 3",
          "VELOCITY.X: dec = 4", "VELOCITY.Y: dec = 5", "VELOCITY.Z: dec = 6", "JULIAN_DATE: dec = 0.5"}},
    });
    EXPECT_EQ(response, 11);
    EXPECT_EQ(orbit.velocity.z, 6.0F);
    EXPECT_EQ(orbit.julian_date, 0.5);
}

}
