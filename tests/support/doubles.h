#pragma once

#include "bytes.h"

#include <ZAVRA_100.h>

/// Doubles for the host platform's classes and for usleep(), linked in place of the stand-in. All of them are reached
/// through double_of_platform, which Platform_Test starts afresh for every test.
namespace zavra::test
{

using Device_Failure = ZAVRA_100_Exception;

struct Platform_Double
{
    // The bus: what happens on it, in order, as "connect 10 i2c-0", "write 0210...", "read 9", "sleep 100000".
    Lines events;
    bool recording = true;           ///< off, the bus allocates nothing
    std::deque<Octets> replies;      ///< what the next reads give
    unsigned char unanswered = 0xFF; ///< the bytes of a read when there is no reply
    /// Not empty: the message that the next calls throw.
    std::string connect_failure, write_failure, read_failure;

    /// Queues a response: a payload and its CRC.
    void reply(const std::string& payload) { replies.push_back(with_crc(octets(payload))); }

    /// The frames written, as hexadecimal text.
    Lines frames() const { return events_of("write "); }
    Lines events_of(const std::string& kind) const;

    // The debug stream.
    std::string debug_levels = "1234"; ///< the levels that somebody listens to
    std::string debug;                 ///< what was written to them

    /// The whole lines of level 3 and 4 without colours, but for the transport's own.
    Lines dumped() const;

    // The INI parser's dictionary: "section:key" to text.
    std::map<std::string, std::string> dictionary;
    std::string load_failure, dump_failure;
    std::string section_failure, value_failure; ///< of get_number_of_section_keys and get_value
    Lines parser_calls;                         ///< "load", "dump", "free", "destroy"
};

inline Platform_Double double_of_platform;

struct Platform_Test : testing::Test
{
    Platform_Double& platform = double_of_platform = {};
};

struct Device_Test : Platform_Test
{
    Device_Test() { platform = {}; }

    ZAVRA_100 device;
};

}
