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

/// What may stand next on a command line after `words`: commands, options, and method names after "call".
void write_completions(const CLI::App& program, const std::vector<std::string>& words, std::ostream& out);

}
