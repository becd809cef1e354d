#pragma once

#include <span>

/// The smallest platform: a bus in memory that answers every read with the same bytes, no waits, nobody at the debug
/// stream. It allocates nothing, so that the library's own cost can be seen.
namespace zavra::test
{

void answer_with(std::span<const unsigned char> response);

}
