#pragma once

#include "test_bench.h"

#include "../device/protocol/json.h"

#include <filesystem>
#include <functional>
#include <vector>

namespace zavra
{

/// What happens to the units of a bench and when, as a TOML file tells it: a table [[event]] each, with `at` in seconds
/// of simulated time and `address` for one unit only, and then
///
///     world = { magnetic_field_t = { x = 2e-5 } }           what it measures from now on; what is not named stays
///     startracker_events = [[120, -40], [7, 311]]           x and y of what the star tracker sees from now on
///     command = "Set_Epoch_Time"                            executed as if it had come over the bus
///     arguments = { epoch_time_msec = 1000 }                all of its arguments
///     fault = "crc"                                         once
///     fault = "crc", probability = 0.1                      from now on
///     fault = "hang", for = 2.5                             for that many seconds
class Scenario
{
public:
    /// @throws std::runtime_error  when the file cannot be read or does not make sense, with the line
    explicit Scenario(const std::filesystem::path& file);

    /// Puts all of it on the bench's agenda. What a unit refuses to do is told on standard error when its time comes.
    void play(Test_Bench& bench, const std::vector<unsigned int>& addresses) const;

private:
    struct Event
    {
        Clock::Time time{};
        std::optional<unsigned int> address;
        std::vector<std::function<void(Test_Bench::Unit&)>> actions;
    };

    static Event event(const Json& source);

    std::vector<Event> events_;
};

}
