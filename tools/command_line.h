#pragma once

#include <iosfwd>

namespace zavra::tools
{

/// The whole program: reads the command line, does what it says, writes the answer to `out` and everything else to
/// `errors`.
/// @return the exit status: 0 done, 1 the unit or the bus failed (or a checked file is wrong), 2 wrong usage
/// @throws Output_Failure  when the answer cannot be written and `out` passes exceptions on
int run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors);

}
