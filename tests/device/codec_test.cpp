#include "tests/support/doubles.h"

using namespace zavra::test;

struct Codec_Test : Device_Test
{
    unsigned char buffer[9] = {};

    std::string written(std::size_t size) { return hexadecimal({buffer, buffer + size}); }
};

TEST_F(Codec_Test, crc_of_known_data)
{
    const std::pair<std::string, unsigned char> cases[] = {
        {"", 0x00}, {"01", 0x07}, {"313233343536373839", 0xF4}, {"021008000102030405060708", 0x3A}};
    for (const auto& [data, crc] : cases) {
        SCOPED_TRACE(data);
        const Octets bytes = octets(data);
        EXPECT_EQ(device.crc8_ccitt(bytes.data(), static_cast<unsigned int>(bytes.size())), crc);
        EXPECT_EQ(reference_crc(bytes), crc);
    }
    const unsigned char rest[] = {'4', '5', '6', '7', '8', '9'};
    const unsigned char first[] = {'1', '2', '3'};
    EXPECT_EQ(device.crc8_ccitt_generic(rest, 6, device.crc8_ccitt(first, 3)), 0xF4)
        << "a CRC goes on from a start value";
}

TEST_F(Codec_Test, message_check_finds_every_flipped_bit_and_prints_both_crcs)
{
    Octets message = with_crc(octets("0a0b0c"));
    EXPECT_TRUE(device.check_message_crc8(message.data(), 3));
    for (std::size_t bit = 0; bit < 8 * message.size(); ++bit) {
        message[bit / 8] ^= static_cast<unsigned char>(1U << bit % 8);
        EXPECT_FALSE(device.check_message_crc8(message.data(), 3)) << "bit " << bit;
        message[bit / 8] ^= static_cast<unsigned char>(1U << bit % 8);
    }

    platform.debug.clear();
    unsigned char wrong[] = {0x01, 0x0A};
    device.check_message_crc8(wrong, 1);
    EXPECT_EQ(platform.debug, "\033[32mCRC received: hex = 0x0a, dec = 10\033[0m\n"
                              "\033[32mCRC calculated: hex = 0x07, dec = 7\033[0m\n");
}

TEST_F(Codec_Test, integers_travel_big_endian)
{
    device.FromUInt64(buffer, 0x0102030405060708);
    EXPECT_EQ(written(8), "0102030405060708");
    EXPECT_EQ(device.ToUInt64(buffer), 0x0102030405060708U);
    EXPECT_EQ(device.ToUInt32(buffer), 0x01020304U);
    EXPECT_EQ(device.ToUInt16(buffer), 0x0102U);
    EXPECT_EQ(device.ToInt32_ST(buffer), 0x04030201) << "the star tracker's words are little-endian";
    device.FromUInt32(buffer, 0xA1B2C3D4);
    EXPECT_EQ(written(4), "a1b2c3d4");
    device.FromUInt16(buffer, 0x12345);
    EXPECT_EQ(written(2), "2345");
    unsigned char negative[] = {0xFE, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(device.ToInt32_ST(negative), -2);
    EXPECT_EQ(buffer[8], 0) << "nothing is written beyond a value";
}

TEST_F(Codec_Test, floating_point_bit_patterns_pass_unchanged)
{
    device.FromFloat32(buffer, 1.0F);
    EXPECT_EQ(written(4), "3f800000");
    device.FromFloat64(buffer, 1.0);
    EXPECT_EQ(written(8), "3ff0000000000000");
    for (const unsigned long long bits : {0x7FF8000000000001ULL, 0xFFF0000000000000ULL, 0x8000000000000000ULL, 1ULL}) {
        device.FromFloat64(buffer, std::bit_cast<double>(bits));
        EXPECT_EQ(std::bit_cast<unsigned long long>(device.ToFloat64(buffer)), bits);
    }
    for (const unsigned int bits : {0x7FC00001U, 0xFF800000U, 0x80000000U, 1U}) {
        device.FromFloat32(buffer, std::bit_cast<float>(bits));
        EXPECT_EQ(std::bit_cast<unsigned int>(device.ToFloat32(buffer)), bits);
    }
}
