#pragma once

#include <array>

namespace zavra
{

/// x, y, z.
using Orbit_Vector = std::array<double, 3>;

}
