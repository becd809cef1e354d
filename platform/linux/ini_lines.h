#pragma once

#include <string>
#include <vector>

namespace zavra::platform
{

/// What the iniparser library does not say of a file, or says only to one function for the whole process.
struct Ini_Findings
{
    std::string error;                    ///< why the library will not load the file; empty when it will
    std::vector<std::string> repetitions; ///< each section and key that merges with one before it, and its line
};

/// Reads a file's lines as the iniparser library takes them.
Ini_Findings examine_ini_file(const char* path);

}
