#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace zavra::tools
{

/// What the last of the words may become: a command, an option that is not there yet, a method, a field of telemetry or
/// the name of a value, whatever its case. Nothing where a file is expected: the shell knows those.
void write_completions(const CLI::App& program, const std::vector<std::string>& words, std::ostream& out);

}
