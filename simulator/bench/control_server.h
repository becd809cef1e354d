#pragma once

#include "event.h"
#include "packet_server.h"

#include <filesystem>
#include <string>

namespace zavra::simulator
{

/// The door of a running bench for people: a socket beside the bus's, "i2c-0.control". A packet is a JSON object with
/// the keys of an Event but `at`, which happens at once to the unit at `address`, or to all of them; and
///
///     "time": {"factor": 10, "advance": 60}    how fast time runs from now on; seconds to leap ahead
///
/// The answer is the state after it, or the reason of a failure; a request that makes no sense does nothing:
///
///     {"time_msec": 61200, "time_factor": 10, "units": {"10": {"world": {...}, "faults": {"crc": 0.1}}}}
///     {"error": "event: there is no key \"fualt\""}
class Control_Server
{
public:
    /// @param bus  the bus's socket
    /// @throws std::runtime_error  when the socket cannot be made
    Control_Server(Test_Bench& bench, const std::filesystem::path& bus);

    /// The socket of a bus.
    static std::filesystem::path path(const std::filesystem::path& bus);

    /// What a request does, and what is answered.
    static Json answer(Test_Bench& bench, const std::string& request);

private:
    Packet_Server server_;
};

}
