#pragma once

#include "perform.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace zavra::tools
{

/// A command for the surroundings of a simulated unit that is running; without values it shows them.
struct Sim_Command
{
    const char* words; ///< "sim fault"
    const char* help;
    const char* values;
    /// @throws Usage_Error  when a value is not right
    /// @throws Failure      when no simulated unit is running there
    void (*run)(const std::vector<std::string>& values, const Options& options, std::ostream& out);
};

std::vector<Sim_Command> sim_commands();

}
