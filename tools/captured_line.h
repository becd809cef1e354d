#pragma once

#include "../catalogue/json.h"

#include <iosfwd>
#include <optional>
#include <string>

namespace zavra::tools
{

enum class Direction { unknown, request, response };

/// A line of captured traffic.
struct Captured_Line
{
    Direction direction = Direction::unknown;
    bool of_dump = false;
    std::string time;
    std::string unit;    ///< whose frame it is, where that is said
    std::string problem; ///< why there are no bytes, where that is said
    std::string text;    ///< hexadecimal digits, if it is what it should be

    std::optional<Octets> bytes() const;
};

/// Understands a line in hexadecimal with or without a time and a direction in front, one of the library's debug dump,
/// and one of the simulated unit's journal.
Captured_Line understand(const std::string& raw);

/// The next line.
/// @return false at the end
/// @throws Usage_Error  when the line is longer than any capture's
bool read_line(std::istream& in, std::string& line);

}
