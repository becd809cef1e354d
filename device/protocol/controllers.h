#pragma once

#include "../records/controllers.h"
#include "command.h"
#include "vectors.h"

namespace zavra::protocol
{

inline constexpr auto controllers_commands = std::tuple<>{};

}
