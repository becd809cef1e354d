#pragma once

#include "../records/actuators.h"
#include "command.h"
#include "vectors.h"

namespace zavra::protocol
{

inline constexpr auto actuators_commands = std::tuple<>{};

}
