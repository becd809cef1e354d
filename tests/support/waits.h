#pragma once

#include "simulator/unit/clock.h"

/// A usleep() for test programs, linked in place of the system's: the library's waits take no time.
namespace zavra::test
{

/// The clock that a wait moves, so that the unit sees the time pass; null: none.
inline simulator::Manual_Clock* clock_of_waits = nullptr;

}
