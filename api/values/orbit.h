#pragma once

#include "../VELM_ZAVRA_API.h"
#include "constants.h"
#include "times.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <string>

/// @file
/// Two-line element sets as Init_Orbit_Module() takes them.

namespace velm_zavra
{

/// @param update_interval  of the propagation
/// @throws std::invalid_argument when a line has not 69 characters or does not start with its number, or the interval
///         is negative; the unit checks the rest
inline VELM_ZAVRA_API_ORBIT_TLE_DATA orbit_elements(const std::string& line_1, const std::string& line_2,
                                                    std::chrono::milliseconds update_interval)
{
    VELM_ZAVRA_API_ORBIT_TLE_DATA elements = {};
    static_assert(sizeof elements.tle_1 == tle_line_length + 1, "a line and a NUL");
    if (line_1.size() != tle_line_length || line_1[0] != '1')
        throw std::invalid_argument("line 1 of the elements is not 69 characters that start with 1");
    if (line_2.size() != tle_line_length || line_2[0] != '2')
        throw std::invalid_argument("line 2 of the elements is not 69 characters that start with 2");
    std::copy(line_1.begin(), line_1.end(), elements.tle_1);
    std::copy(line_2.begin(), line_2.end(), elements.tle_2);
    elements.update_interval_msec = to_msec(update_interval);
    return elements;
}

/// Reads a file with VELM_ZAVRA_API::parse_TLE_file(); the unit is not involved.
/// @throws VELM_ZAVRA_API_Exception when the file cannot be opened
/// @throws std::invalid_argument    when it has not both lines, line 1 before line 2, each of 69 characters or more
inline VELM_ZAVRA_API_ORBIT_TLE_DATA read_orbit_elements(VELM_ZAVRA_API& unit, std::string file_name,
                                                         std::chrono::milliseconds update_interval)
{
    const VELM_ZAVRA_API_TLE_FILE_DATA file = unit.parse_TLE_file(&file_name[0]);
    if (file.status != 2 || file.tle_line_1[0] == '\0')
        throw std::invalid_argument(file_name + ": no complete element set, line 1 before line 2 (status " +
                                    std::to_string(file.status) + ")");
    return orbit_elements(file.tle_line_1, file.tle_line_2, update_interval);
}

}
