#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

/// What is wrong with a file, and where.
namespace zavra::tools
{

struct Finding
{
    std::size_t line; ///< 0 where it concerns the whole file
    std::string text;
};

/// "FILE:LINE: text"
std::string located(const std::string& file, const Finding& finding);

/// What an INI file has that would keep Initialize_Device from configuring a sensor.
/// @throws Usage_Error  when there is no such file, as all of these
std::vector<Finding> check_ini(const std::string& file);

/// What keeps the lines of a two-line element file from being taken by parse_TLE_file and by the simulated unit.
std::vector<Finding> check_tle(const std::string& file);

/// What keeps a register map from being read.
std::vector<Finding> check_map(const std::string& file);

/// What does not make sense in a scenario of the simulated unit.
std::vector<Finding> check_scenario(const std::string& file);

/// What keeps a satellite file from being read, and what makes little sense in it.
std::vector<Finding> check_satellite(const std::string& file);

/// A file to be read as it comes.
/// @throws Usage_Error  naming the file and the system's reason
std::ifstream open_file(const std::string& file);

/// All text of a stream.
/// @throws Usage_Error  naming it, when there are more than 16 MB
std::string read_stream(std::istream& stream, const std::string& name);

/// The text of a file of no more than 16 MB.
/// @throws Usage_Error  naming the file and the system's reason
std::string read_file(const std::string& file);

/// Lines without their ends.
std::vector<std::string> lines_of(const std::string& text);

}
