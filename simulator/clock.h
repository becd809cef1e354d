#pragma once

#include <chrono>

namespace zavra
{

/// Where the simulated unit takes its time from.
class Clock
{
public:
    using Time = std::chrono::milliseconds;

    virtual ~Clock() = default;

    /// Time since any fixed moment; never runs backwards.
    virtual Time now() const = 0;
};

class Steady_Clock : public Clock
{
public:
    Time now() const override
    {
        return std::chrono::duration_cast<Time>(std::chrono::steady_clock::now().time_since_epoch());
    }
};

/// Stands still until it is told to go on.
class Manual_Clock : public Clock
{
public:
    Time now() const override { return now_; }
    void advance(Time time) { now_ += time; }

private:
    Time now_{0};
};

}
