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
    bool follow = false;
    std::string interval = "1s";
    unsigned int count = 0;
};

/// Connects to a unit and does it: once, repeatedly, or without a unit in a dry run. Writes the answer.
/// @return the exit status
int perform(const Device_Action& action, const Options& options, std::ostream& out, std::ostream& errors);

/// The monitor on the unit that the options name.
void monitor(const Options& options);

/// Writes what was found in a file.
/// @return the exit status
int report(const std::string& file, const std::vector<Finding>& findings, bool json, std::ostream& out);

}
