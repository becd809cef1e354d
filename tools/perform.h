#pragma once

#include "check.h"
#include "commands.h"
#include "session.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace zavra::tools
{

/// What the options of the command line say, whichever command it is.
struct Options
{
    Target target;
    bool json = false;
    bool csv = false;
    bool influx = false;
    bool prometheus = false;
    std::string prometheus_file; ///< instead of standard output
    std::string words;           ///< of the command
    bool follow = false;
    std::string interval = "1s";
    unsigned int count = 0;
    bool no_verify = false;
};

/// Connects to a unit and does it: once, repeatedly, or without a unit in a dry run. Writes the answer.
/// @return the exit status
int perform(const Device_Action& action, const Options& options, std::ostream& out, std::ostream& errors);

/// The monitor on the unit that the options name.
/// @param names  of frames; none for all
void monitor(const Options& options, const std::vector<std::string>& names);

/// Records the telemetry frames in a file that is not there yet; "-" is the answer.
/// @return the exit status
int record(const Options& options, const std::string& file, std::ostream& out, std::ostream& errors);

/// Writes what was found in a file.
/// @return the exit status
int report(const std::string& file, const std::vector<Finding>& findings, bool json, std::ostream& out);

}
