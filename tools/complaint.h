#pragma once

#include <string>

namespace CLI
{
class App;
class ParseError;
}

namespace zavra::tools
{

/// What is wrong with the command line; where a command is missing, which ones there are.
std::string complaint(const CLI::App& program, const CLI::ParseError& error);

}
