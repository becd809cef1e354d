#pragma once

#include "../unit/clock.h"

#include <functional>
#include <map>
#include <mutex>

namespace zavra::simulator
{

/// The time of a simulation: it starts at 0 and runs a number of times as fast as the clock beneath. Things can be put
/// on the agenda; they are done, each at its own time, before the next transaction after it.
class Agenda : public Clock
{
public:
    explicit Agenda(const Clock& clock, double factor = 1) : clock_(clock), start_(clock.now()), factor_(factor) {}

    Time wall() const override { return clock_.now(); }

    double factor() const;

    /// From now on.
    /// @throws std::invalid_argument  unless it is a number from 0.001 to 1000000
    void set_factor(double factor);

    /// Leaps ahead; what lies between is done, each at its time, before the next transaction.
    void advance(Time time);

    /// While an action runs, the time that the action was put down for, so that it does not depend on when somebody
    /// looks; but never a time before one that was given already.
    Time now() const override;

    void at(Time time, std::function<void()> action);

    /// Does what is due.
    void run_due();

    /// Does what is due, and lets the time stand still while the object lives: what happens meanwhile happens after all
    /// that was due and before all that will be, however fast the time runs.
    class [[nodiscard]] Standstill
    {
    public:
        explicit Standstill(Agenda& agenda);
        ~Standstill() { agenda_.held_ = held_before_; }
        Standstill(const Standstill&) = delete;
        Standstill& operator=(const Standstill&) = delete;

    private:
        Agenda& agenda_;
        std::lock_guard<std::recursive_mutex> guard_;
        Time::rep held_before_;
    };

private:
    Time elapsed() const;
    void run_due(Time time);
    Time elapsed_unlocked() const;

    const Clock& clock_;
    mutable std::mutex rate_mutex_;
    Time before_{0}; ///< what had passed when the factor was set
    Time start_;     ///< when that was
    double factor_;
    std::multimap<Time, std::function<void()>> entries_;
    std::recursive_mutex mutex_; // an action may put down others
    std::atomic<Time::rep> held_ = not_held;
    mutable std::atomic<Time::rep> latest_ = 0;

    static constexpr Time::rep not_held = -1;
};

/// @throws std::invalid_argument  unless it is a number from 0.001 to 1000000, or to 1000 with a satellite
double checked_time_factor(double factor, bool with_satellite = false);

}
