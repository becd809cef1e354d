#pragma once

#include "test_bench.h"

#include "../../catalogue/json.h"

#include <functional>
#include <optional>
#include <vector>

namespace zavra::simulator
{

/// Something that happens to the units of a bench:
///
///     "world": {"magnetic_field_t": {"x": 2e-5}}      what it measures from now on; what is not named stays
///     "satellite": {"torque_nm": [0, 0, 1e-5]}        and others, see satellite_action()
///     "startracker_events": [[120, -40], [7, 311]]    x and y of what the star tracker sees from now on
///     "command": "Set_Epoch_Time"                     executed as if it had come over the bus
///     "arguments": {"epoch_time_msec": 1000}          all of its arguments
///     "fault": "crc"                                  once
///     "fault": "crc", "probability": 0.1              from now on
///     "fault": "hang", "for": 2.5                     for that many seconds
///     "at": 30                                        in seconds of simulated time, 0 if left out
///     "address": 10                                   this unit only
struct Event
{
    /// @throws std::invalid_argument  saying which key is wrong, or that nothing would happen
    explicit Event(const Json& source);

    /// To a unit, at once.
    /// @throws std::runtime_error  when the unit refuses it
    void happen(Test_Bench::Unit& unit) const;

    Clock::Time time{};
    std::optional<unsigned int> address;

private:
    std::vector<std::function<void(Test_Bench::Unit&)>> actions_;
};

/// What a unit measures.
Json to_json(Test_Bench::Unit& unit);

/// A number of seconds that is not negative.
/// @throws std::invalid_argument
Clock::Time seconds_of(const Json& value, const std::string& where);

}
