#pragma once

#include <stdexcept>
#include <string>

namespace zavra::tools
{

/// The command line, or a file that it names, is not right: exit status 2.
class Usage_Error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The unit, the bus or a file that was checked is not right: exit status 1.
class Failure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The answer cannot be written; the message is the system's reason.
class Output_Failure : public std::runtime_error
{
public:
    explicit Output_Failure(int error);
    const int error;
};

/// Whether a method refused an argument.
bool is_refusal(const std::exception& error);

/// A nested message with its middle layers left out: what was tried, and the innermost reason.
std::string in_short(const std::string& message);

}
