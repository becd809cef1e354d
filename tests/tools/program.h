#pragma once

#include "tests/support/temporary_directory.h"
#include "tools/command_line.h"

namespace zavra::test
{

struct Ran
{
    int status;
    std::string out, errors;
};

/// Runs the program inside the test, with the words of a command line that has no quotes.
inline Ran zavractl(const std::string& command_line)
{
    std::istringstream stream(command_line);
    const Lines words(std::istream_iterator<std::string>(stream), {});
    std::vector<const char*> argv{"zavractl"};
    for (const std::string& word : words)
        argv.push_back(word.c_str());
    std::ostringstream out, errors;
    const int status = tools::run(static_cast<int>(argv.size()), argv.data(), out, errors);
    return {status, out.str(), errors.str()};
}

}
