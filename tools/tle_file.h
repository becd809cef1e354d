#pragma once

#include "check.h"

#include <string>

namespace zavra::tools
{

/// The two lines of a file that parse_TLE_file finds, and what is wrong with them.
struct Tle_File
{
    std::string line_1;
    std::string line_2;
    std::vector<Finding> findings;
};

/// @throws Usage_Error  when there is no such file
Tle_File read_tle_file(const std::string& file);

}
