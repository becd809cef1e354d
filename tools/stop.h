#pragma once

#include <chrono>
#include <csignal>

namespace zavra::tools
{

/// While it lives, SIGINT, SIGTERM and SIGHUP wait: no transaction is broken off half way and no temporary file is left
/// behind. A signal that nobody took is delivered when it ends.
class Held_Signals
{
public:
    Held_Signals();
    ~Held_Signals();
    Held_Signals(const Held_Signals&) = delete;
    Held_Signals& operator=(const Held_Signals&) = delete;

private:
    sigset_t before_;
};

using Steady = std::chrono::steady_clock;

/// Waits until a moment; needs Held_Signals.
/// @return false when a signal asked the program to stop
bool wait_until(Steady::time_point moment);

/// The beats of a repeated reading: absolute moments, so that the time that a reading takes does not add up. A reading
/// that takes longer than the interval skips beats.
class Rhythm
{
public:
    Rhythm(Steady::duration interval, Steady::time_point start) : interval_(interval), beat_(start) {}

    /// The first beat after `now`.
    Steady::time_point next(Steady::time_point now);

private:
    Steady::duration interval_;
    Steady::time_point beat_;
};

}
