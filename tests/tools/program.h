#pragma once

#include "tools/command_line.h"

#include <gmock/gmock.h>
#include <sstream>
#include <string>
#include <vector>

namespace zavra::test
{

struct Ran
{
    int status;
    std::string out;
    std::string errors;
};

/// Runs the program inside the test, with the words of a command line that has no quotes.
inline Ran zavractl(const std::string& command_line)
{
    std::istringstream stream(command_line);
    std::vector<std::string> words{"zavractl"};
    for (std::string word; stream >> word;)
        words.push_back(word);
    std::vector<const char*> argv;
    for (const std::string& word : words)
        argv.push_back(word.c_str());
    std::ostringstream out;
    std::ostringstream errors;
    const int status = tools::run(static_cast<int>(argv.size()), argv.data(), out, errors);
    return {status, out.str(), errors.str()};
}

}
