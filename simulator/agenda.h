#pragma once

#include "clock.h"

#include <functional>
#include <map>
#include <mutex>

namespace zavra
{

/// The time of a simulation: it starts at 0 and runs a number of times as fast as the clock beneath. Things can be put
/// on the agenda; they are done, each at its own time, before the next transaction after it.
class Agenda : public Clock
{
public:
    explicit Agenda(const Clock& clock, double factor = 1) : clock_(clock), start_(clock.now()), factor_(factor) {}

    /// While an action runs, the time that the action was put down for, so that it does not depend on when somebody
    /// looks; but never a time before one that was given already.
    Time now() const override;

    void at(Time time, std::function<void()> action);

    /// Does what is due.
    void run_due();

private:
    Time elapsed() const;

    const Clock& clock_;
    const Time start_;
    const double factor_;
    std::multimap<Time, std::function<void()>> entries_;
    std::recursive_mutex mutex_; // an action may put down others
    std::atomic<Time::rep> held_ = not_held;
    mutable std::atomic<Time::rep> latest_ = 0;

    static constexpr Time::rep not_held = -1;
};

}
