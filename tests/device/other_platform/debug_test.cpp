#include "device/dump.h"
#include "protocol/vectors.h"

static std::ostringstream output;

std::ostream& VELM_API_Debug::dout(Level level)
{
    output << static_cast<char>('0' + static_cast<int>(level)) << '>';
    output << std::hex << std::showbase << std::setfill('*') << std::setw(40);
    return output;
}

using namespace zavra;

TEST(Other_Platform, each_line_is_one_call_and_leaves_the_stream_in_order)
{
    const ZAVRA_100_Vector3_float vector{0, 0.5F, -10};
    const float array[] = {16, 17};
    const unsigned char bytes[] = {0x0A, 0xFF};
    dump("Title",
         List{Field{"Vector", vector, style::lower_case}, Field{"ARRAY", array},
              Group{"GROUP", List{Field{"BYTE", bytes[0], style::hexadecimal}}}},
         "NAME");
    debug_bytes("Bytes : ", bytes, 2);
    warn(12, " events");
    EXPECT_EQ(output.str(), "3>\033[32mTitle\033[0m\n"
                            "3>\033[32mNAME.Vector.x: dec = 0\033[0m\n"
                            "3>\033[32mNAME.Vector.y: dec = 0.5\033[0m\n"
                            "3>\033[32mNAME.Vector.z: dec = -10\033[0m\n"
                            "3>\033[32mNAME.ARRAY[0]: dec = 16\033[0m\n"
                            "3>\033[32mNAME.ARRAY[1]: dec = 17\033[0m\n"
                            "3>\033[32mNAME.GROUP.BYTE: hex = 0x0a\033[0m\n"
                            "3>\033[32mBytes : \033[0m\033[32m0a\033[0m\033[32mff\033[0m\033[32m\n\033[0m"
                            "4>\033[33mWARNING: 12 events\033[0m\n");
    EXPECT_EQ(output.flags() & std::ios_base::basefield, std::ios_base::dec);
    EXPECT_EQ(output.fill(), ' ');
    EXPECT_EQ(output.width(), 0);
}
