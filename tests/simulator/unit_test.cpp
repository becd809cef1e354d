#include "simulator/simulated_unit.h"
#include "tests/support/bytes.h"

#include <cerrno>

namespace zavra::test
{

class Unit_Test : public ::testing::Test
{
protected:
    Canned_World world;
    Manual_Clock clock;
    Simulated_Unit unit{world, clock};

    void request(const std::string& frame) { unit.write(with_crc(octets(frame))); }

    std::string reply(std::size_t size)
    {
        clock.advance(Clock::Time(20));
        Octets bytes(size);
        return unit.read(bytes) == 0 ? hexadecimal(bytes) : "not acknowledged";
    }

    std::string answer(const std::string& payload) { return hexadecimal(with_crc(octets(payload))); }
};

TEST_F(Unit_Test, a_reply_is_held_for_the_reads_that_follow_once_it_is_ready)
{
    EXPECT_EQ(reply(3), "ffffff") << "nothing was asked yet";

    request("0229 0400 12345678");
    request("0228 0000");
    clock.advance(Clock::Time(19));
    Octets early(5);
    EXPECT_EQ(unit.read(early), ENXIO);
    clock.advance(Clock::Time(1));
    EXPECT_EQ(reply(5), answer("12345678"));
    EXPECT_EQ(reply(7), answer("12345678") + "ffff") << "a read beyond the reply";
    EXPECT_EQ(reply(2), "1234");

    request("0229 0400 00000000");
    EXPECT_EQ(reply(2), "ffff") << "a setter has no reply, and the old one is gone";
}

TEST_F(Unit_Test, requests_that_are_not_right_are_counted_and_named_in_the_error_register)
{
    const struct
    {
        const char* what;
        Octets frame;
        unsigned int error;
    } cases[] = {
        {"wrong CRC", octets("023000000c"), System::bad_request_crc},
        {"unknown command", with_crc(octets("7fff0000")), System::unknown_command_or_wrong_length},
        {"payload too long", with_crc(octets("0230010000")), System::unknown_command_or_wrong_length},
        {"payload too short", with_crc(octets("021007000102030405 0607")), System::unknown_command_or_wrong_length},
        {"header says more than there is", with_crc(octets("02100800010203")), System::unknown_command_or_wrong_length},
        {"length in the other byte order", with_crc(octets("0210000801020304 05060708")),
         System::unknown_command_or_wrong_length},
        {"no header", with_crc(octets("0230")), System::unknown_command_or_wrong_length},
        {"one byte", octets("01"), System::bad_request_crc},
    };
    unsigned int failed = 0;
    for (const auto& [what, frame, error] : cases) {
        SCOPED_TRACE(what);
        unit.parts.system.error_register = 0;
        EXPECT_EQ(unit.write(frame), 0);
        EXPECT_EQ(unit.parts.system.error_register, error);
        EXPECT_EQ(unit.parts.system.counters.failed_commands, ++failed);
        EXPECT_EQ(reply(1), "ff");
    }
    EXPECT_EQ(unit.parts.system.counters.received_commands, failed);
    EXPECT_EQ(unit.write({}), 0) << "an empty write only asks whether somebody is there";
    EXPECT_EQ(unit.parts.system.counters.received_commands, failed);

    request("0230 0000");
    EXPECT_EQ(unit.parts.system.error_register, 0U);
}

TEST_F(Unit_Test, time_runs_with_the_clock_and_starts_again_at_a_reset)
{
    clock.advance(Clock::Time(1000));
    request("0210 0800 0000016000000000");
    clock.advance(Clock::Time(480));
    request("0211 0000");
    EXPECT_EQ(reply(9), answer("00000160000001e0"));
    request("0212 0000");
    EXPECT_EQ(reply(9), answer("00000000000005dc"));

    unit.reset();
    request("0212 0000");
    EXPECT_EQ(reply(9), answer("0000000000000000"));
    request("0235 0000");
    EXPECT_EQ(reply(9), answer("00000000000003e8")) << "settings are back at their defaults";
}

TEST_F(Unit_Test, telemetry_shows_the_world)
{
    world.temperature = 200.4F;
    world.angular_velocity = {1.0F, 2.0F, 3.0F};
    request("0231 0100 02");
    request("0222 0000");
    const std::string frame = reply(173);
    EXPECT_EQ(frame.substr(2 * 25, 2), "02");
    EXPECT_EQ(frame.substr(2 * 26, 24), "3f8000004000000040400000");
    EXPECT_EQ(frame.substr(2 * 171, 2), "c8");
    EXPECT_EQ(unit.parts.system.error_register, 0U);
}

}
