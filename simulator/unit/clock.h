#pragma once

#include <atomic>
#include <chrono>

namespace zavra::simulator
{

/// Where the simulated unit takes its time from.
class Clock
{
public:
    using Time = std::chrono::milliseconds;

    virtual ~Clock() = default;

    /// Time since any fixed moment; never runs backwards.
    virtual Time now() const = 0;

    /// The time of those at the other end of the bus, who know nothing of a simulation that runs faster or slower.
    virtual Time wall() const { return now(); }
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
    Time now() const override { return Time(now_); }
    void advance(Time time) { now_ += time.count(); }

private:
    std::atomic<Time::rep> now_ = 0; // advanced by a test while a bus server's thread looks
};

}
