#include "tests/support/doubles.h"

using namespace zavra::test;

constexpr const char* no_data = "empty data byte array (NULL) but non-zero num_data_bytes parameter";
constexpr const char* no_response = "empty response byte array (NULL) but non-zero num_response_bytes parameter";

struct Transport_Test : Device_Test
{
    unsigned char data[600] = {}, response[600] = {};
};

TEST_F(Platform_Test, a_session_writes_its_lines_and_leaves_the_connection_to_the_base_class)
{
    {
        ZAVRA_100 device(10, "i2c-0");
        device.Disconnect();
        device.Connect(11, "i2c-1");
    }
    EXPECT_EQ(platform.events, (Lines{"description Fine ADCS module", "connect 10 i2c-0", "disconnect",
                                      "connect 11 i2c-1", "base destroyed"}));
    EXPECT_EQ(platform.debug,
              "\033[36m --> P9ZAVRA_100 constructor: unsigned int i2c_address: 10, std::string i2c_device_name: "
              "i2c-0\033[0m\n"
              "\033[36m <-- P9ZAVRA_100 destructor: ZAVRA_100 class destroyed with virtual destructor\033[0m\n");

    platform = {};
    const std::unique_ptr<VELM_I2C_DEV> through_base = std::make_unique<ZAVRA_100>();
    EXPECT_EQ(platform.debug, "\033[36m --> P9ZAVRA_100 constructor: \033[0m\n");
    EXPECT_EQ(platform.events, Lines{"description Fine ADCS module"});
}

TEST_F(Platform_Test, a_session_that_fails_says_what_it_tried)
{
    ZAVRA_100 device;
    platform.connect_failure = "no bus";
    EXPECT_EQ(message_of<Device_Failure>([] { ZAVRA_100(10, "i2c-0"); }),
              "Failed to instantiate ZAVRA I2C Device (no bus)");
    EXPECT_EQ(message_of<Device_Failure>([&] { device.Connect(10, "i2c-0"); }),
              "Failed to connect I2C device (no bus)");
    EXPECT_EQ(message_of<Device_Failure>([&] { device.Disconnect(); }), "Failed to disconnect I2C device (no bus)");
}

TEST_F(Transport_Test, a_request_is_framed_dumped_and_waited_for)
{
    data[0] = 0xAB;
    device.ZAVRA_Generic_Set(0x0210, data, 1);
    device.ZAVRA_Generic_Set(0x0230, nullptr, 0);
    EXPECT_EQ(platform.events, (Lines{"write 02100100ab90", "sleep 100000", "write 02300000cd", "sleep 100000"}));
    const std::string piece = "\033[0m\033[32m";
    EXPECT_EQ(platform.debug, "\033[32mCommand (hex) : " + piece + "02" + piece + "10" + piece + "01" + piece + "00" +
                                  piece + "ab" + piece + "90" + piece + "\n\033[0m" +
                                  "\033[32mCommand (hex) : " + piece + "02" + piece + "30" + piece + "00" + piece +
                                  "00" + piece + "cd" + piece + "\n\033[0m");
}

TEST_F(Transport_Test, sizes_and_null_pointers_are_checked_before_anything_is_written)
{
    device.ZAVRA_Generic_Set(0x0101, data, 512);
    EXPECT_EQ(platform.frames().at(0).substr(0, 8), "01010002");
    platform.replies = {with_crc(Octets(512)), with_crc(Octets(256))};
    EXPECT_NO_THROW(device.ZAVRA_Generic_Get(0x0101, nullptr, 0, response, 512));
    EXPECT_NO_THROW(device.ZAVRA_Startracker_Native_Get(response, 256));
    platform = {};

    const auto set = [&](unsigned char* bytes, unsigned int n) { device.ZAVRA_Generic_Set(1, bytes, n); };
    const auto get = [&](unsigned char* bytes, unsigned int n, unsigned char* reply, unsigned int m) {
        device.ZAVRA_Generic_Get(1, bytes, n, reply, m);
    };
    const std::string in_set = "Failed to use Generic-SET for ZAVRA: ";
    const std::string in_get = "Failed to use Generic-GET for ZAVRA: ";
    const std::pair<std::string, std::function<void()>> cases[] = {
        {in_set + no_data, [&] { set(nullptr, 1); }},
        {in_set + no_data, [&] { set(nullptr, 513); }},
        {in_set + "too many data bytes (>512)", [&] { set(data, 513); }},
        {in_get + no_data, [&] { get(nullptr, 513, nullptr, 513); }},
        {in_get + no_response, [&] { get(data, 513, nullptr, 513); }},
        {in_get + "too many data bytes (>512)", [&] { get(data, 513, response, 513); }},
        {in_get + "too many response bytes (>512)", [&] { get(data, 512, response, 513); }},
        {"Failed to use Native-GET for ZAVRA Star Tracker: too many response bytes (>256)",
         [&] { device.ZAVRA_Startracker_Native_Get(response, 257); }},
    };
    for (const auto& [message, call] : cases)
        EXPECT_EQ(message_of<Device_Failure>(call), message);
    EXPECT_TRUE(platform.events.empty());
}

TEST_F(Transport_Test, a_response_that_arrives_damaged_nine_times_is_asked_for_again)
{
    platform.replies.assign(9, octets("0102ff"));
    platform.reply("0102");
    device.ZAVRA_Generic_Get(0x0211, nullptr, 0, response, 2);
    EXPECT_EQ(hexadecimal({response, response + 3}), "010200");

    Lines expected;
    for (int attempt = 0; attempt < 10; ++attempt) {
        expected.insert(expected.end(), {"write 02110000e5", "sleep 100000", "read 3"});
        if (attempt < 9)
            expected.emplace_back("sleep 300000");
    }
    EXPECT_EQ(platform.events, expected);
}

TEST_F(Transport_Test, ten_damaged_responses_are_ten_requests_ten_warnings_and_an_unwrapped_failure)
{
    response[0] = 0x55;
    EXPECT_EQ(message_of<Device_Failure>([&] { device.ZAVRA_Generic_Get(0x0211, nullptr, 0, response, 2); }),
              "Failed to use Generic-GET for ZAVRA (Bad response CRC, Retry failed)");
    EXPECT_EQ(platform.frames().size(), 10U);
    EXPECT_EQ(platform.events_of("sleep 300000").size(), 10U);
    EXPECT_EQ(platform.dumped(), Lines(10, "WARNING: Retry because of CRC"));
    EXPECT_NE(platform.debug.find("\033[33mWARNING: Retry because of CRC\033[0m\n"), std::string::npos);
    EXPECT_EQ(response[0], 0x55);

    platform = {};
    EXPECT_EQ(message_of<Device_Failure>([&] { device.ZAVRA_Startracker_Native_Get(response, 2); }),
              "Failed to use Native-GET for ZAVRA Star Tracker (Bad response CRC, Retry failed)");
    EXPECT_TRUE(platform.frames().empty()) << "native replies are read without a request";
    EXPECT_EQ(platform.events_of("read ").size(), 10U);
}

TEST_F(Transport_Test, failures_to_read_are_wrapped_once)
{
    platform.read_failure = "not acknowledged";
    EXPECT_EQ(message_of<Device_Failure>([&] { device.ZAVRA_Generic_Get(1, nullptr, 0, response, 2); }),
              "Failed to use Generic-GET for ZAVRA (not acknowledged)");
    EXPECT_EQ(message_of<Device_Failure>([&] { device.ZAVRA_Startracker_Native_Get(response, 2); }),
              "Failed to use Native-GET for ZAVRA Star Tracker (not acknowledged)");
}

TEST_F(Transport_Test, lines_look_the_same_in_every_locale)
{
    struct Grouping : std::numpunct<char>
    {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    device.Set_DCDC_Configuration(1234567);
    std::locale::global(before);
    EXPECT_EQ(platform.dumped(), Lines{"DCDC Register Value: dec = 1234567"});
}
