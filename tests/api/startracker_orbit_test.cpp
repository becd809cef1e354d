#include "tests/support/operation_cases.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace zavra::test
{

namespace
{

using Api = VELM_ZAVRA_API;

}

TEST_F(Operation_Test, star_tracker_and_orbit_operations)
{
    VELM_ZAVRA_API_STARTRACKER_QUATERNION quaternion{};
    quaternion.quaternion.q_1 = 1.0F;
    quaternion.quaternion.q_2 = 2.0F;
    quaternion.quaternion.q_3 = 3.0F;
    quaternion.quaternion.q_4 = 4.0F;
    VELM_ZAVRA_API_ORBIT_TLE_DATA tle{};
    std::fill(std::begin(tle.tle_1), std::end(tle.tle_1), 'a');
    std::fill(std::begin(tle.tle_2), std::end(tle.tle_2), 'b');
    tle.update_interval_msec = 1000;
    unsigned char native[] = {0xC0, 0xDB};
    check({
        {[&](Api& a) { a.Set_Startracker_Quaternion(quaternion); },
         "ab01 1000" + Payload().f32_range(1, 4).hexadecimal(), "", "set star tracker quaternion",
         "Set Startracker Quaternion"},
        {[](Api& a) {
             const auto got = a.Get_Startracker_Quaternion();
             EXPECT_EQ(got.quaternion.q_2, 6.0F);
             EXPECT_EQ(got.quaternion.q_3, 7.0F);
             EXPECT_EQ(got.epoch_time_msec, 9U);
         },
         "ab02 0000", Payload().f32_range(5, 8).u64(9).hexadecimal(), "set star tracker quaternion",
         "Get Startracker Quaternion"},
        {[](Api& a) {
             a.Set_Startracker_Operation_Mode(static_cast<VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE>(0x1FE));
         },
         "ab11 0100 fe", "", "set star tracker operation mode", "Set Startracker Operation Mode"},
        {[](Api& a) { EXPECT_EQ(a.Get_Startracker_Operation_Mode(), 0xFEU); }, "ab12 0000", "fe",
         "get star tracker operation mode", "Get Startracker Operation Mode"},
        {[&](Api& a) { a.Send_Startracker_Native_Command(native, 2); }, "ab20 0200 c0db", "",
         "send star tracker native command", "Send Startracker Native Command"},
        {[](Api& a) { EXPECT_EQ(a.Check_For_Startracker_Native_Reply(), 255U); }, "ab21 0000", "ff",
         "check star tracker native reply", "Get Startracker Operation Mode"},
        {[&](Api& a) { EXPECT_EQ(a.Init_Orbit_Module(tle), 11U); },
         "ac01 9400" + Payload().text(std::string(70, 'a') + std::string(70, 'b'), 140).u64(1000).hexadecimal(), "0b",
         "initialize orbit module", "Init Orbit Module"},
        {[](Api& a) {
             const auto orbit = a.Get_Orbit_Data();
             EXPECT_EQ(orbit.position.x, 1.0F);
             EXPECT_EQ(orbit.velocity.z, 6.0F);
             EXPECT_EQ(orbit.julian_date, 0.5);
         },
         "ac02 0000", Payload().f32_range(1, 6).f64(0.5).hexadecimal(), "get orbit data", "Get Orbit Data"},
    });
}

TEST_F(Operation_Test, a_native_reply_is_read_byte_by_byte_without_a_request)
{
    platform = {};
    platform.reply("42");
    unsigned char data[] = {1, 2};
    api.Read_Startracker_Native_Reply(data, 2);
    EXPECT_EQ(platform.events, std::vector<std::string>{"read 2"});
    platform.read_failure = "no bus";
    EXPECT_EQ(message_of<VELM_ZAVRA_API_Exception>([&] { api.Read_Startracker_Native_Reply(data, 2); }),
              "Failed to read star tracker native reply (Failed to Read Startracker Native Reply "
              "(Failed to use Native-GET for ZAVRA Star Tracker (no bus)))");
    EXPECT_EQ(hexadecimal({data, data + 2}), "4202");
}

TEST_F(Operation_Test, of_the_event_list_23_bytes_come_through)
{
    std::string response = "0a07";
    for (int event = 0; event < 7; ++event)
        response += "01020384 ffffffff";
    response += std::string(2 * 129, '0');
    const int x = static_cast<int>(0x84030201);
    check({{[&](Api& a) {
                const auto list = a.Get_Startracker_Event_List();
                EXPECT_EQ(list.header, 0x0A);
                EXPECT_EQ(list.num_event, 7);
                EXPECT_THAT(std::vector<int>(list.xisf, list.xisf + 8),
                            testing::ElementsAre(x, x, x, x, x, 0x030201, 0, 0));
                EXPECT_THAT(std::vector<int>(list.yisf + 4, list.yisf + 7), testing::ElementsAre(-1, 0xFFFFFF, 0));
            },
            "ab04 0000", response, "get star tracker event list", "Get Startracker Event List"}});
}

TEST_F(Operation_Test, tle_files)
{
    char directory[] = "/tmp/zavra_test_XXXXXX";
    ASSERT_NE(::mkdtemp(directory), nullptr);
    std::string name = std::string(directory) + "/elements.tle";

    const std::string one = "1 25544U 98067A   18020.89808844  .00002078  00000-0  38550-4 0  9992", short_1(68, '1'),
                      two = "2 25544  51.6424  32.9776 0003646  28.7227  39.5332 15.54190080 95614", short_2(68, '2'),
                      long_1(300, '1'), cut_1(69, '1');
    const std::string found_1 = "TLE line 1 found: ", found_2 = "TLE line 2 found: ";
    using Lines = std::vector<std::string>;
    const struct
    {
        const char* what;
        std::string contents;
        int status;
        std::string line_1, line_2;
        Lines printed;
    } cases[] = {
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
        {"short line 2",
         one + "\n" + short_2,
         -4,
         one,
         short_2,
         {found_1 + one, "ERROR: TLE line 2 too short: " + one}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::ofstream(name, std::ios::binary) << c.contents;
        platform = {};
        const auto data = api.parse_TLE_file(name.data());
        EXPECT_EQ(data.status, c.status);
        EXPECT_EQ(std::string(data.tle_line_1, 71), c.line_1 + std::string(71 - c.line_1.size(), '\0'));
        EXPECT_EQ(std::string(data.tle_line_2, 71), c.line_2 + std::string(71 - c.line_2.size(), '\0'));
        EXPECT_EQ(platform.dumped(), c.printed);
    }

    // A directory can be opened, but nothing be read from it.
    EXPECT_EQ(api.parse_TLE_file(directory).status, 0);
    std::filesystem::remove_all(directory);
    EXPECT_EQ(message_of<VELM_ZAVRA_API_Exception>([&] { api.parse_TLE_file(name.data()); }),
              "ERROR: Not able to open TLE file. Check TLE file name and access rights.");
}

}
