#include "catalogue/commands.h"
#include "protocol/vectors.h"
#include "tests/support/bytes.h"

namespace zavra
{

struct Sample
{
    unsigned char count;
    float ratio;
    double special;
    float channels[2];
    char name[5];
    float degrees;
    Bytes<2> raw;
    ZAVRA_100_Vector3_float rate;
};

template <>
inline constexpr auto field_list<Sample> = [](auto& r) {
    return List{Field{"COUNT", r.count},
                Field{"RATIO", r.ratio},
                Skip<3>{},
                Field{"SPECIAL", r.special},
                Field{"CHANNELS", r.channels},
                Field{"NAME", r.name, style::text},
                Field{"DEGREES", r.degrees, style::single_byte},
                Field{"RAW", r.raw},
                Group{"RATE", List{Field{"X", r.rate.x}.labelled("Q"), Field{"Y", r.rate.y}}}};
};

}

using namespace zavra;
using namespace zavra::test;

TEST(Json_Test, a_record_becomes_its_fields_and_back)
{
    const Sample sample{200, 0.1F, -HUGE_VAL, {1.5F, 3e-7F}, {'a', '"', '\xE9', 0, 0}, 21, {0xAB, 1}, {1, -2, 0}};
    const std::string text = to_json(sample).dump();
    EXPECT_EQ(text, R"({"count":200,"ratio":0.1,"special":"-inf","channels":[1.5,3e-07],"name":"a\"é",)"
                    R"("degrees":21,"raw":"ab01","rate":{"x":1.0,"y":-2.0}})");
    Sample copy{};
    from_json(Json::parse(text), copy);
    EXPECT_EQ(to_json(copy), to_json(sample));
    EXPECT_EQ(copy.ratio, 0.1F);
    EXPECT_STREQ(copy.name, "a\"\xE9");
}

TEST(Json_Test, what_does_not_fit_a_record_is_refused_by_name)
{
    const Json good = to_json(Sample{});
    const std::tuple<const char*, Json, const char*> cases[] = {
        {"/count", 256, "s.count: expected a whole number up to 255, got 256"},
        {"/count", -1, "s.count: expected a whole number up to 255, got -1"},
        {"/count", 1.5, "s.count: expected a whole number up to 255, got 1.5"},
        {"/ratio", "much", "s.ratio: expected a number, got \"much\""},
        {"/channels", Json::array({1}), "s.channels: expected an array of 2, got [1]"},
        {"/name", "abcde", "s.name: expected at most 4 characters, got \"abcde\""},
        {"/name", "\u20AC", "s.name: expected characters up to U+00FF, got \"\u20AC\""},
        {"/raw", "abcg", "s.raw: expected hexadecimal digits, got \"abcg\""},
        {"/raw", "ab", "s.raw: expected 2 bytes"},
        {"/rate", Json{{"x", 1}}, "s.rate: \"y\" is missing"},
        {"/rate/z", 1, "s.rate: has members that are none of its fields: {\"z\":1}"},
    };
    for (const auto& [pointer, value, message] : cases) {
        Json bad = good;
        bad[Json::json_pointer(pointer)] = value;
        Sample sample{};
        EXPECT_EQ(message_of<std::invalid_argument>([&] { from_json(bad, sample, "s"); }), message);
    }
}

TEST(Json_Test, commands_are_found_decoded_and_encoded_without_their_types)
{
    const Described_Command* set = find_command("Set_Epoch_Time");
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(find_requests(0x0210, 8), std::vector{set});
    EXPECT_TRUE(find_requests(0x0210, 7).empty());
    EXPECT_EQ(find_command("Set_Everything"), nullptr);

    const Octets payload = octets("0000000000000102");
    EXPECT_EQ(set->decode_request(payload).dump(), R"({"epoch_time_msec":258})");
    EXPECT_EQ(set->encode_request({{"epoch_time_msec", 258}}), payload);
    EXPECT_EQ(message_of<std::invalid_argument>([&] { set->decode_request(octets("00")); }),
              "Set_Epoch_Time: expected 8 bytes of payload, got 1");
    EXPECT_EQ(message_of<std::invalid_argument>([&] { set->encode_request(Json::object()); }),
              "Set_Epoch_Time: \"epoch_time_msec\" is missing");
    EXPECT_EQ(find_command("Get_Power_Telemetry")->decode_response(Octets(56))["zavra_supply_voltage_v"], 0.0);
    EXPECT_EQ(find_command("Clear_System_Error_Register")->decode_response({}), Json::object());
}
