#pragma once

#include "../records/sensors.h"
#include "command.h"
#include "vectors.h"

namespace zavra::protocol
{

inline constexpr auto sensors_commands = std::tuple<>{};

}
