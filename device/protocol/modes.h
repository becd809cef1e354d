#pragma once

#include "../records/modes.h"
#include "command.h"
#include "vectors.h"

namespace zavra::protocol
{

inline constexpr auto modes_commands = std::tuple<>{};

}
