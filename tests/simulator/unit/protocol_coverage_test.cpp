#include "tests/simulator/settings.h"
#include "tests/support/simulated_bus.h"

using namespace zavra;
using namespace zavra::test;

struct Protocol_Coverage_Test : Bus_Test
{
    /// The bits that a request sets in the error register.
    unsigned int errors_of(const Described_Command& command, const Octets& payload)
    {
        Octets frame(frame_header_bytes);
        put(frame.data(), command.identifier);
        put_little_endian(frame.data() + 2, static_cast<unsigned short>(payload.size()));
        frame.insert(frame.end(), payload.begin(), payload.end());
        unit.parts.system.error_register = 0;
        unit.write(with_crc(frame));
        return unit.parts.system.error_register;
    }

    /// The payload of the reply to a request.
    Octets answer(const Described_Command& get, const Octets& payload)
    {
        EXPECT_EQ(errors_of(get, payload), 0U);
        Octets bytes(wire_bytes(get.response) + crc_bytes);
        unit.read(bytes);
        EXPECT_EQ(reference_crc(bytes), 0);
        bytes.pop_back();
        return bytes;
    }
};

TEST_F(Protocol_Coverage_Test, the_unit_takes_every_command_at_its_length_and_at_no_other)
{
    const auto commands = described_commands();
    for (const Described_Command& command : commands) {
        SCOPED_TRACE(command.method);
        for (std::size_t size = 0; size <= 300; ++size) {
            const bool known =
                any_size(command.request) || std::ranges::any_of(commands, [&](const Described_Command& each) {
                    return each.identifier == command.identifier && wire_bytes(each.request) == size;
                });
            const unsigned int errors = errors_of(command, Octets(size));
            EXPECT_EQ((errors & System::unknown_command_or_wrong_length) == 0, known) << size << " bytes";
        }
        if (wire_bytes(command.response) != 0)
            answer(command, Octets(wire_bytes(command.request)));
    }
}

TEST_F(Protocol_Coverage_Test, what_is_set_is_what_is_read_and_of_that_sensor_or_axis_alone)
{
    EXPECT_EQ(settings().size(), 27U) << "a pair that the test no longer finds is not tested";
    for (const auto& [set, get, index_bytes, value_bytes] : settings())
        for (const std::size_t seed : {1, 2}) {
            SCOPED_TRACE(set.method);
            unit.reset();
            const Octets other_index(index_bytes, 0);
            Octets index(index_bytes, 1);
            if (errors_of(get, index) != 0)
                index = other_index; // of some there is one only
            Octets value(value_bytes);
            for (std::size_t i = 0; i < value.size(); ++i)
                value[i] = static_cast<unsigned char>(seed + i % 61); // a small number, whatever it is read as
            Octets payload = index;
            payload.insert(payload.end(), value.begin(), value.end());

            const Octets other = answer(get, other_index);
            EXPECT_EQ(errors_of(set, payload), 0U);
            Octets read = answer(get, index);
            if (read != value) {
                clock.advance(Clock::Time(60'000)); // a wheel takes its time
                read = answer(get, index);
            }
            EXPECT_EQ(hexadecimal(read), hexadecimal(value));
            EXPECT_EQ(answer(get, other_index), index == other_index ? value : other);
        }
}
