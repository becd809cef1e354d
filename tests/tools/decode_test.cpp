#include "program.h"

#include "tools/decode.h"

using namespace zavra;
using namespace zavra::test;

static Ran decoded(const std::string& text)
{
    std::istringstream in(text);
    std::ostringstream out;
    const bool good = tools::decode(in, out, false);
    return {good ? 0 : 1, out.str(), ""};
}

TEST(Decode_Test, explains_frames_and_says_what_is_wrong_with_them)
{
    const std::tuple<const char*, int, const char*> cases[] = {
        {"0229 0400 12345678 0a", 0,
         "line 1: request 0x0229 Set_System_Scheduler_Register, CRC right\n    scheduler_register  0x12345678\n"},
        {"02:29:04:00:12:34:56:78:0b", 1,
         "line 1: request 0x0229 Set_System_Scheduler_Register, CRC WRONG\n    scheduler_register  0x12345678\n"},
        {"# a comment\n\n0x02 0x11 0x00 0x00 0xe5\n00 00 00 00 00 00 03 e8 a9\n", 0,
         "line 3: request 0x0211 Get_Epoch_Time, CRC right\n"
         "line 4: response to Get_Epoch_Time, CRC right\n"
         "    epoch_time_msec  1000 ms  (1970-01-01T00:00:01.000Z)\n"},
        {"< 01", 1, "line 1: response of 0 bytes to no known request, CRC WRONG\n"},
        {"> 0211 0100 f0", 1, "line 1: request 0x0211 with 0 bytes of payload, but a header for 1, CRC right\n"},
        {"0211 00", 1, "line 1: response of 2 bytes to no known request, CRC WRONG\n"},
        {"12 3", 1, "line 1: not hexadecimal: 12 3\n"},
        {"hello", 1, "line 1: not hexadecimal: hello\n"},
        {"\xFF\x01 \xC3\xA9", 1, "line 1: not hexadecimal: ?? ??\n"},
        {":", 1, "line 1: no bytes\n"},
        {"0x", 1, "line 1: no bytes\n"},
        {"2026-11-21T12:00:00.000Z > 02110000e5\n[12.5] 02110000e5\n", 0,
         "line 1: 2026-11-21T12:00:00.000Z request 0x0211 Get_Epoch_Time, CRC right\n"
         "line 2: [12.5] request 0x0211 Get_Epoch_Time, CRC right\n"},
        // Journals tell the units apart.
        {R"({"time_msec":5,"bus":"i2c-0","address":10,"direction":"write","bytes":"02110000e5"}
{"time_msec":5,"bus":"i2c-0","address":11,"direction":"write","bytes":"02250000af"}
{"time_msec":6,"bus":"i2c-0","address":10,"direction":"read","bytes":"00000000000003e8a9"}
{"time_msec":7,"bus":"i2c-0","address":10,"direction":"read","bytes":"","fault":"nak-read","error":"No such device"}
)",
         1,
         "line 1: 5 ms request 0x0211 Get_Epoch_Time, CRC right\n"
         "line 2: 5 ms request 0x0225 Get_Power_Telemetry, CRC right\n"
         "line 3: 6 ms response to Get_Epoch_Time, CRC right\n"
         "    epoch_time_msec  1000 ms  (1970-01-01T00:00:01.000Z)\n"
         "line 4: 7 ms no answer: No such device, fault nak-read\n"},
        {"{\"direction\": [", 1, "line 1: not hexadecimal: {\"direction\": [\n"},
    };
    for (const auto& [text, status, expected] : cases) {
        SCOPED_TRACE(text);
        const Ran ran = decoded(text);
        EXPECT_EQ(ran.status, status);
        EXPECT_EQ(ran.out, expected);
    }
}

TEST(Decode_Test, the_response_tells_commands_with_the_same_request_apart)
{
    const std::string request = hexadecimal(with_crc(octets("c012 0100 00"))) + "\n";
    const std::string zeros(64, '0');
    EXPECT_THAT(decoded(request + zeros + "00\n").out,
                AllOf(HasSubstr("Get_SingleAxis_AngularVelocity_Controller_Parameters or "
                                "Get_SingleAxis_AngleStep_Controller_Parameters"),
                      HasSubstr("response to Get_SingleAxis_AngularVelocity_Controller_Parameters")));
    EXPECT_THAT(decoded(request + zeros + std::string(40, '0') + "00\n").out,
                HasSubstr("response to Get_SingleAxis_AngleStep_Controller_Parameters"));
}
