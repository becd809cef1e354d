#include "device/protocol/crc8.h"
#include "device/protocol/frame.h"
#include "device/protocol/json.h"
#include "simulator/test_bench.h"
#include "tests/support/bytes.h"

#include <algorithm>
#include <map>

namespace zavra::test
{

namespace
{

Octets request(unsigned short identifier, const Octets& payload)
{
    Octets frame(frame_header_bytes);
    put(frame.data(), identifier);
    put_little_endian(frame.data() + 2, static_cast<unsigned short>(payload.size()));
    frame.insert(frame.end(), payload.begin(), payload.end());
    return with_crc(frame);
}

/// A unit that never makes one wait for a reply.
struct Bench_Unit
{
    Manual_Clock clock;
    Test_Bench bench{clock, {.unit = {.latency = Clock::Time(0)}}};
    Simulated_Unit& unit = bench.unit().unit;

    /// The bits that a request sets in the error register.
    unsigned int errors_of(unsigned short identifier, const Octets& payload)
    {
        unit.parts.system.error_register = 0;
        unit.write(request(identifier, payload));
        return unit.parts.system.error_register;
    }

    /// The payload of the reply.
    Octets reply(std::size_t size)
    {
        Octets bytes(size + crc_bytes);
        unit.read(bytes);
        EXPECT_EQ(crc8(bytes), 0);
        bytes.pop_back();
        return bytes;
    }
};

}

TEST(Protocol_Coverage_Test, the_unit_takes_every_command_at_its_length_and_at_no_other)
{
    std::size_t longest = 0;
    std::multimap<unsigned short, std::size_t> sizes;
    for (const Described_Command& entry : described_commands()) {
        longest = std::max(longest, entry.request_size);
        sizes.emplace(entry.identifier, entry.request_size);
    }
    Bench_Unit bench;
    for (const Described_Command& entry : described_commands()) {
        SCOPED_TRACE(entry.method);
        for (std::size_t size = 0; size <= longest + 2; ++size) {
            const auto [first, last] = sizes.equal_range(entry.identifier);
            const bool known = std::any_of(first, last, [&](const auto& each) { return each.second == size; }) ||
                               entry.any_request_size;
            const unsigned int errors = bench.errors_of(entry.identifier, Octets(size));
            EXPECT_EQ((errors & System::unknown_command_or_wrong_length) == 0, known) << size << " bytes";
        }
        bench.errors_of(entry.identifier, Octets(entry.request_size));
        if (entry.response_size != 0 && bench.unit.parts.system.error_register == 0)
            bench.reply(entry.response_size);
    }
}

namespace
{

/// Gives each number a value of its own, not 0 and small enough for every range.
void number_leaves(Json& value, unsigned int& next)
{
    if (value.is_structured())
        for (Json& each : value)
            number_leaves(each, next);
    else if (value.is_number_float())
        value = next++ * 1e-3;
    else if (value.is_number())
        value = next++;
}

}

TEST(Protocol_Coverage_Test, what_is_set_is_what_is_read)
{
    const auto counterpart = [](const Described_Command& set) {
        return std::find_if(described_commands().begin(), described_commands().end(),
                            [&](const Described_Command& get) {
                                return std::string(get.method) == std::string("Get_") + (set.method + 4) &&
                                       get.request_size + get.response_size == set.request_size;
                            });
    };
    std::size_t pairs = 0;
    for (const Described_Command& set : described_commands()) {
        if (!std::string(set.method).starts_with("Set_"))
            continue;
        const auto get = counterpart(set);
        if (get == described_commands().end())
            continue;
        SCOPED_TRACE(set.method);
        ++pairs;
        for (unsigned int next : {1U, 2U}) {
            Bench_Unit bench;
            const Octets index(get->request_size);
            Json arguments = set.decode_request(Octets(set.request_size));
            const Json kept = get->decode_request(index);
            for (auto& [name, value] : arguments.items())
                if (!kept.contains(name))
                    number_leaves(value, next);
            const Octets payload = set.encode_request(arguments);
            EXPECT_EQ(bench.errors_of(set.identifier, payload), 0U);
            const auto read = [&] {
                EXPECT_EQ(bench.errors_of(get->identifier, index), 0U);
                Octets both = index;
                const Octets value = bench.reply(get->response_size);
                both.insert(both.end(), value.begin(), value.end());
                return hexadecimal(both);
            };
            std::string value = read();
            if (value != hexadecimal(payload)) {
                bench.clock.advance(Clock::Time(60'000)); // a wheel takes its time
                value = read();
            }
            EXPECT_EQ(value, hexadecimal(payload));
        }
    }
    EXPECT_EQ(pairs, 27U) << "a pair that the test no longer finds is not tested";
}

}
