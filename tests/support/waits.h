#pragma once

#include "simulator/clock.h"

#include <functional>

/// A usleep() for test programs, linked in place of the system's: the library's waits take no time, or the time that
/// the test says.
namespace zavra::test
{

/// Says so for as long as it lives.
class Waits
{
public:
    using Wait = std::function<void(std::chrono::microseconds)>;

    explicit Waits(Wait wait);
    ~Waits();
    Waits(const Waits&) = delete;
    Waits& operator=(const Waits&) = delete;

    /// A wait moves the clock, so that the unit sees the time pass.
    static Wait advancing(Manual_Clock& clock);

    /// A wait is slept in a fraction of the time: for a unit whose time runs as many times as fast.
    static Wait divided_by(double factor);
};

}
