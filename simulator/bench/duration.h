#pragma once

#include "../unit/clock.h"

#include <string>

namespace zavra::simulator
{

/// A number and "ms", "s", "min", "h" or "d": "90s", "1.5h".
/// @throws std::invalid_argument  unless it is one, of whole milliseconds and above 0
Clock::Time parse_duration(const std::string& text);

/// In the largest unit that gives a whole number: "90 s", "6 h".
std::string to_string(Clock::Time duration);

}
