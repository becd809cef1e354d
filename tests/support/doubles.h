#pragma once

#include "bytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <string>
#include <vector>

/// Doubles for the host platform's classes and for usleep(), linked in place of the stand-in. All of them are reached
/// through double_of_platform(), which Platform_Test starts afresh for every test.
namespace zavra::test
{

struct Platform_Double
{
    // The bus: what happens on it, in order, as "connect 10 i2c-0", "write 0210...", "read 9", "sleep 100000".
    std::vector<std::string> events;
    std::deque<Octets> replies;  ///< what the next reads give; FF bytes when there is none
    std::string connect_failure; ///< non-empty: the message the next calls throw
    std::string write_failure;
    std::string read_failure;

    /// Queues a response: a payload and its CRC.
    void reply(const std::string& payload) { replies.push_back(with_crc(octets(payload))); }

    /// The frames written, as hexadecimal text.
    std::vector<std::string> frames() const { return events_of("write "); }
    std::vector<std::string> events_of(const std::string& kind) const;

    // The debug stream.
    std::string debug_levels = "1234"; ///< the levels that somebody listens to
    std::string debug;                 ///< what was written to them

    /// The whole lines of level 3 and 4 without colours, but for the transport's own.
    std::vector<std::string> dumped() const;

    // The INI parser's dictionary: "section:key" to text.
    std::map<std::string, std::string> dictionary;
    std::string load_failure;
    std::string dump_failure;
    std::string section_failure;           ///< thrown by get_number_of_section_keys
    std::string value_failure;             ///< thrown by get_value
    std::vector<std::string> parser_calls; ///< "load", "dump", "free", "destroy"
};

Platform_Double& double_of_platform();

class Platform_Test : public ::testing::Test
{
protected:
    Platform_Test();
    Platform_Double& platform;
};

}
