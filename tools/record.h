#pragma once

#include "unit.h"

#include <chrono>
#include <iosfwd>

namespace zavra::tools
{

/// Reads all telemetry frames at an interval until a signal or, unless it is 0, `count` times, and writes requests and
/// responses with their times as decode() reads them. A frame that fails becomes a comment.
/// @return the program's exit status: 0 when at least one frame came through
int record_frames(Unit& unit, std::chrono::nanoseconds interval, unsigned int count, std::ostream& out,
                  std::ostream& errors);

}
