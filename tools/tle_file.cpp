#include "tle_file.h"

#include "../simulator/orbit/sgp4.h"

namespace zavra::tools
{

using namespace simulator;

namespace
{

constexpr std::size_t tle_length = 69;

/// Element sets are judged in the order in which the unit does it.
Finding judged(Tle_Error error, std::size_t number_1, std::size_t number_2)
{
    const bool in_line_1 = error <= Tle_Error::line_1_field;
    const bool in_line_2 = error >= Tle_Error::line_2_length && error <= Tle_Error::satellite_numbers_differ;
    return {in_line_1 ? number_1 : in_line_2 ? number_2 : 0, to_string(error)};
}

}

Tle_File read_tle_file(const std::string& file)
{
    Tle_File found;
    std::size_t number_1 = 0;
    std::size_t number_2 = 0;
    std::size_t number = 0;
    for (const std::string& line : lines_of(read_file(file))) {
        ++number;
        const bool first = line.starts_with('1');
        if (!first && !line.starts_with('2'))
            continue;
        (first ? found.line_1 : found.line_2) = line.substr(0, tle_length);
        (first ? number_1 : number_2) = number;
        if (line.size() < tle_length) {
            found.findings.push_back({number, "line " + line.substr(0, 1) + " has " + std::to_string(line.size()) +
                                                  " characters instead of 69"});
            return found;
        }
        // What follows the first complete line 2 is not read.
        if (!first)
            break;
    }
    if (number_1 == 0)
        found.findings.push_back({0, number_2 == 0 ? "no line starts with \"1\"" : "no line 1 stands before line 2"});
    if (number_2 == 0)
        found.findings.push_back({0, "no line starts with \"2\""});
    if (!found.findings.empty())
        return found;

    Two_Line_Elements elements;
    Orbit_State state;
    Tle_Error error = parse_tle(found.line_1, found.line_2, elements);
    if (error == Tle_Error::none)
        error = Sgp4(elements).propagate(0.0, state);
    if (error != Tle_Error::none)
        found.findings.push_back(judged(error, number_1, number_2));
    return found;
}

std::vector<Finding> check_tle(const std::string& file)
{
    return read_tle_file(file).findings;
}

}
