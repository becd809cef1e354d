#pragma once

#include "../unit/clock.h"

#include <optional>
#include <string>
#include <string_view>

namespace zavra::simulator
{

/// What can go wrong on the way between the driver and the unit.
enum class Fault {
    reset,     ///< the unit resets: its time restarts, its settings are lost
    dead_bus,  ///< for a time no transaction on the bus works
    hang,      ///< for a time the unit holds every transaction until the bus controller gives up
    nak_write, ///< a request is not acknowledged
    request,   ///< bits of a request arrive flipped
    nak_read,  ///< a read is not acknowledged
    short_reply,
    stale, ///< the reply to the request before
    crc,   ///< bits of a reply arrive flipped
};

inline constexpr std::size_t number_of_faults = 9;
inline constexpr Clock::Time default_fault_duration{1000};

/// The name on the command line, in scenarios and in the journal, such as "nak-write".
const char* name_of(Fault fault);

/// All of the names.
std::string known_faults();

/// @throws std::invalid_argument  listing the names there are
Fault fault_named(std::string_view name);

/// Whether a fault has a duration: a dead bus and a hang have.
constexpr bool lasts(Fault fault)
{
    return fault == Fault::dead_bus || fault == Fault::hang;
}

/// How likely a fault is in each transaction that it can befall, and how long one that lasts does.
struct Fault_Rate
{
    Fault fault;
    double probability;
    Clock::Time duration = default_fault_duration;
};

/// "crc=0.05", or "hang=0.001:2500" with a duration in ms.
/// @throws std::invalid_argument  saying what is wrong
Fault_Rate parse_fault_rate(const std::string& text);

/// @throws std::invalid_argument  unless the fault is one that lasts, and longer than not at all
Clock::Time checked_duration(Fault fault, Clock::Time duration);

/// @throws std::invalid_argument  unless it is a number from 0 to 1
double checked_probability(double probability);

}
