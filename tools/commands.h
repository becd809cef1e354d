#pragma once

#include "method.h"
#include "output.h"

#include <chrono>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

/// What zavractl can do with a unit.
namespace zavra::tools
{

/// Something to do with a unit. What only reads may be repeated.
struct Device_Action
{
    std::function<Answer(ZAVRA_100& device)> run;
    bool reads = true;
};

/// Values as they stand on the command line.
struct Values
{
    std::vector<std::string> words;
    std::optional<std::string> json_file;
};

/// A command for every day: a name for a getter, a setter or both. With values for more than the getter's arguments it
/// sets; parameters that are not given then keep the values that the unit has.
struct Everyday
{
    const char* words; ///< "wheel speed"
    const char* help;
    const char* getter; ///< device method, or null
    const char* setter;
};

std::vector<Everyday> everyday_commands();

/// @param keep  read the parameters that are not given from the unit; otherwise all must be given
Device_Action everyday_action(const Everyday& command, const Values& values, bool keep);

Device_Action call_action(const Method& method, const Values& values);

/// The standard telemetry's registers as flags; names from a map file, if one is given.
Device_Action registers_action(const std::string& map_file);

/// The unit's clock, and how far it is ahead of this computer's.
Device_Action time_action();
/// @param time  milliseconds since 01.01.1970 0:00:00 UTC or "2026-11-21T12:00:00Z"; empty for this computer's clock
Device_Action set_time_action(const std::string& time);

/// Loads the two-line element set of a file.
Device_Action load_orbit_action(const std::string& file, unsigned long long update_interval_msec);

/// Configures the sensors from an INI file, as applications do when they start.
Device_Action init_action(const std::string& file);

/// Repeats a reading; single failures are reported and survived.
/// @param count  0: until a signal stops it
/// @return the program's exit status: 0 when at least one reading came through
int follow(ZAVRA_100& device, const Device_Action& action, std::chrono::nanoseconds interval, unsigned int count,
           Answer_Writer& writer, std::ostream& errors);

/// All methods whose names contain one of the words, with their arguments and results.
void list_methods(std::ostream& out, const std::vector<std::string>& words, bool json);

}
