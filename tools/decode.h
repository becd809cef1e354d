#pragma once

#include <iosfwd>

namespace zavra::tools
{

/// Explains captured frames, one per line in hexadecimal, a log of record_frames(), the simulated unit's journal, or
/// the frames in the library's debug dump: which command, which values, whether the CRC is right.
/// @return whether every line was understood and every CRC is right
bool decode(std::istream& in, std::ostream& out, bool json);

}
