#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include <stdlib.h>

/// A directory of the test's own, removed with everything in it.
struct Temporary_Directory
{
    std::string path = "/tmp/velm_platform_XXXXXX";

    Temporary_Directory() { path = ::mkdtemp(path.data()); }
    ~Temporary_Directory() { std::filesystem::remove_all(path); }

    std::string file(const std::string& name, const std::string& content) const
    {
        std::ofstream(path + "/" + name) << content;
        return path + "/" + name;
    }
};

/// The message of the exception that an action must throw.
template <class Exception, class Action>
std::string message(Action action)
{
    try {
        action();
    } catch (const Exception& exception) {
        return exception.what();
    }
    return "nothing was thrown";
}
