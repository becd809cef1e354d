#pragma once

#include "method.h"
#include "output.h"
#include "unit.h"

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
    std::function<Answer(Unit& unit)> run;
    bool reads = true;
};

/// Values as they stand on the command line.
struct Values
{
    std::vector<std::string> words;
    std::optional<std::string> json_file;
    bool force = false; ///< values that are no numbers are meant
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

/// Telemetry by the names of frames, of fields or "all"; a field's name may be cut short.
Device_Action telemetry_action(const std::vector<std::string>& names);
/// The names of all fields with that of their frame in front.
std::vector<std::string> telemetry_fields();

/// The operation mode, by name where it has one.
Device_Action mode_status_action();

/// The addresses of a bus that answer. Only reads.
Device_Action scan_action(const std::string& bus);

/// The unit's clock, and how far it is ahead of this computer's.
Device_Action time_action();
/// @param time  as epoch_msec() takes it; empty for this computer's clock at the moment of sending
Device_Action set_time_action(const std::string& time);

/// Loads the two-line element set of a file.
Device_Action load_orbit_action(const std::string& file, const std::string& update_interval);

/// Configures the sensors from an INI file, as applications do when they start.
Device_Action init_action(const std::string& file);

/// Repeats a reading; single failures are reported and survived.
/// @param count  0: until a signal stops it
/// @return the program's exit status: 0 when at least one reading came through
int follow(Unit& unit, const Device_Action& action, std::chrono::nanoseconds interval, unsigned int count,
           const std::function<void(const Answer&)>& write, std::ostream& errors);

/// For help: the values that an everyday command takes, with types and units; empty where it takes none.
std::string values_of(const Everyday& command);

/// All methods whose names contain one of the words, with their arguments and results.
void list_methods(std::ostream& out, const std::vector<std::string>& words, bool json);

}
