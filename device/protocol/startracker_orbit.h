#pragma once

#include "../records/startracker_orbit.h"
#include "command.h"
#include "vectors.h"

namespace zavra::protocol
{

inline constexpr auto startracker_orbit_commands = std::tuple<>{};

}
