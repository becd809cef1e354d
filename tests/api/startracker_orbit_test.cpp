#include "tests/support/cases.h"
#include "tests/support/temporary_directory.h"

using namespace zavra::test;

TEST_F(Operation_Test, star_tracker)
{
    const Payload quaternion = Payload().quaternion(1).u64(1511828488672);
    constexpr auto mode_fe = static_cast<VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE>(0x1FE); // cut to 8 bits
    const Payload mode = Payload().u8_as<unsigned int>(0xFE), status = Payload().u8_as<unsigned int>(255);
    unsigned char native[] = {0xC0, 0x00, 0xDB};
    check({
        // The time is not sent.
        set(call(BOTH(Set_Startracker_Quaternion), quaternion), "set star tracker quaternion",
            "Set Startracker Quaternion", "ab01 1000 3f800000 40000000 40400000 40800000", {}),
        get(call(BOTH(Get_Startracker_Quaternion)), "set star tracker quaternion", "Get Startracker Quaternion",
            "ab02 0000", quaternion,
            dump("STARTRACKER QUATERNION: ", "STARTRACKER.", "QUATERNION.Q_{1234} EPOCH_TIME_MSEC=1511828488672")),
        set(call(&Api::Set_Startracker_Operation_Mode, mode_fe), "set star tracker operation mode",
            "Set Startracker Operation Mode", "ab11 0100 fe"),
        get(call(&Api::Get_Startracker_Operation_Mode), "get star tracker operation mode",
            "Get Startracker Operation Mode", "ab12 0000", mode),
        set(call(&Api::Send_Startracker_Native_Command, &native[0], 3), "send star tracker native command",
            "Send Startracker Native Command", "ab20 0300 c000db"),
        get(call(&Api::Check_For_Startracker_Native_Reply), "check star tracker native reply",
            "Get Startracker Operation Mode", "ab21 0000", status),
    });
}

TEST_F(Operation_Test, orbit_module)
{
    // Lines without a terminator travel as they are and are shown no further than they go.
    const std::string tle_1 = "1 25544U 98067A   18020.89808844", tle_2(70, 'x');
    const Payload tle = Payload().text(tle_1, 70).text(tle_2, 70).u64(1000);
    const Payload orbit = Payload().f32_range(1, 6).f64(0.5);
    const Lines shown{"TLE_1: ascii = " + tle_1, "TLE_2: ascii = " + tle_2, "UPDATE_INTERVAL_MSEC: dec = 1000"};
    Case initialize = get(call(BOTH(Init_Orbit_Module), tle), "initialize orbit module", "Init Orbit Module",
                          "ac01 9400" + tle, Payload().u8(11), {"Response = 11"});
    initialize.printed_before = shown;
    check({
        initialize,
        get(call(BOTH(Get_Orbit_Data)), "get orbit data", "ac02 0000", orbit,
            dump("ZAVRA_100_Orbit_Propagation_Data", "", "POSITION.{XYZ} VELOCITY.{XYZ} JULIAN_DATE=0.5")),
    });
}

TEST_F(Operation_Test, a_native_reply_is_read_byte_by_byte_without_a_request)
{
    platform = {};
    platform.reply("42");
    unsigned char data[] = {1, 2};
    api.Read_Startracker_Native_Reply(data, 2);
    EXPECT_EQ(platform.events, Lines{"read 2"});
    platform.read_failure = "no bus";
    EXPECT_EQ(message_of<Api_Failure>([&] { api.Read_Startracker_Native_Reply(data, 2); }),
              "Failed to read star tracker native reply (Failed to Read Startracker Native Reply "
              "(Failed to use Native-GET for ZAVRA Star Tracker (no bus)))");
    EXPECT_EQ(hexadecimal({data, data + 2}), "4202");
}

TEST_F(Operation_Test, of_the_event_list_23_bytes_come_through)
{
    Payload events = Payload().u8(0x0A).u8(7);
    Lines lines{"REDUCED_EVENT_LIST.HEADER: hex = 0x0a", "REDUCED_EVENT_LIST.NUM_EVENT: hex = 0x07"};
    for (int i = 0; i < 7; ++i) {
        events.wire(octets("01020384 ffffffff"));
        lines.push_back("REDUCED_EVENT_LIST.XISF " + std::to_string(i) + ": dec = -2080177663");
        lines.push_back("REDUCED_EVENT_LIST.YISF " + std::to_string(i) + ": dec = -1");
    }
    events.wire(Octets(129));
    for (const auto& [whole, sixth] : {std::pair{-2080177663, 0x030201}, std::pair{-1, 0xFFFFFF}})
        for (int i = 0; i < 23; ++i)
            events.member(i < 5 ? whole : i == 5 ? sixth : 0);
    check({get(call(&Api::Get_Startracker_Event_List), "get star tracker event list", "Get Startracker Event List",
               "ab04 0000", events, lines)});
}

TEST_F(Operation_Test, tle_files)
{
    const Temporary_Directory directory;

    const std::string one = "1 25544U 98067A   18020.89808844  .00002078  00000-0  38550-4 0  9992", short_1(68, '1'),
                      two = "2 25544  51.6424  32.9776 0003646  28.7227  39.5332 15.54190080 95614", short_2(68, '2'),
                      long_1(300, '1'), cut_1(69, '1');
    const std::string found_1 = "TLE line 1 found: ", found_2 = "TLE line 2 found: ",
                      bad_2 = "ERROR: TLE line 2 too short: ";
    const std::tuple<const char*, std::string, int, std::string, std::string, Lines> cases[] = {
        {"title", "ISS\n" + one + "\n" + two + "\n", 2, one, two, {found_1 + one, found_2 + two}},
        {"no newline at the end", one + "\n" + two, 2, one, two, {found_1 + one, found_2 + two}},
        {"CR LF", one + "\r\n" + two + "\r\n", 2, one, two, {found_1 + one, found_2 + two}},
        {"a CR is a character", short_1 + "\r\n", 1, short_1 + "\r", "", {found_1 + short_1 + "\r"}},
        {"byte order mark before line 1", "\xEF\xBB\xBF" + one + "\n" + two, 2, "", two, {found_2 + two}},
        {"empty", "", 0, "", "", {}},
        {"neither line", "\n 1\nISS\n", 0, "", "", {}},
        {"line 1 only", one + "\n", 1, one, "", {found_1 + one}},
        {"line 2 ends it", two + "\n" + one, 2, "", two, {found_2 + two}},
        {"two lines 1", long_1 + "\n" + one, 1, one, "", {found_1 + cut_1, found_1 + one}},
        {"short line 1", short_1 + "\n" + two, -3, short_1, "", {"TLE line 1 too short: 1 " + short_1}},
        {"short after long", one + "\n1 2", -3, "1 2", "", {found_1 + one, "TLE line 1 too short: 1 1 2"}},
        {"short line 2", one + "\n" + short_2, -4, one, short_2, {found_1 + one, bad_2 + one}},
    };
    for (const auto& [what, contents, status, line_1, line_2, printed] : cases) {
        SCOPED_TRACE(what);
        platform = {};
        const auto data = api.parse_TLE_file(directory.file("elements.tle", contents).data());
        EXPECT_EQ(data.status, status);
        EXPECT_EQ(std::string(data.tle_line_1, 71), line_1 + std::string(71 - line_1.size(), '\0'));
        EXPECT_EQ(std::string(data.tle_line_2, 71), line_2 + std::string(71 - line_2.size(), '\0'));
        EXPECT_EQ(platform.dumped(), printed);
    }

    // A directory can be opened, but nothing be read from it.
    std::string name = directory.path;
    EXPECT_EQ(api.parse_TLE_file(name.data()).status, 0);
    name += "/none";
    EXPECT_EQ(message_of<Api_Failure>([&] { api.parse_TLE_file(name.data()); }),
              "ERROR: Not able to open TLE file. Check TLE file name and access rights.");
}
