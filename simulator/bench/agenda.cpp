#include "agenda.h"

#include <algorithm>
#include <stdexcept>

namespace zavra::simulator
{

double checked_time_factor(double factor, bool with_satellite)
{
    constexpr double satellite_max = 1000; // its control ticks keep up with on one core
    if (with_satellite && factor > satellite_max)
        throw std::invalid_argument("A satellite keeps up with a time factor of at most 1000");
    if (!(factor >= 0.001 && factor <= 1e6))
        throw std::invalid_argument("A time factor is a number from 0.001 to 1000000");
    return factor;
}

Clock::Time Agenda::elapsed_unlocked() const
{
    const auto time = clock_.now() - start_;
    return before_ + (factor_ == 1 ? time : Time(static_cast<Time::rep>(static_cast<double>(time.count()) * factor_)));
}

Clock::Time Agenda::elapsed() const
{
    const std::lock_guard guard(rate_mutex_);
    return elapsed_unlocked();
}

double Agenda::factor() const
{
    const std::lock_guard guard(rate_mutex_);
    return factor_;
}

void Agenda::set_factor(double factor)
{
    checked_time_factor(factor);
    const std::lock_guard guard(rate_mutex_);
    before_ = elapsed_unlocked();
    start_ = clock_.now();
    factor_ = factor;
}

void Agenda::advance(Time time)
{
    const std::lock_guard guard(rate_mutex_);
    before_ += time;
}

Clock::Time Agenda::now() const
{
    const Time::rep held = held_;
    if (held != not_held)
        return Time(held);
    const Time time = elapsed();
    for (Time::rep seen = latest_; seen < time.count() && !latest_.compare_exchange_weak(seen, time.count());)
        ;
    return time;
}

void Agenda::at(Time time, std::function<void()> action)
{
    const std::lock_guard guard(mutex_);
    entries_.emplace(std::max(time, now()), std::move(action));
}

void Agenda::run_due()
{
    const std::lock_guard guard(mutex_);
    run_due(elapsed());
}

void Agenda::run_due(Time time)
{
    const Time::rep held_before = held_;
    while (!entries_.empty() && entries_.begin()->first <= time) {
        const auto entry = entries_.extract(entries_.begin());
        held_ = std::max(entry.key().count(), latest_.load());
        entry.mapped()();
    }
    held_ = held_before;
}

Agenda::Standstill::Standstill(Agenda& agenda) : agenda_(agenda), guard_(agenda.mutex_), held_before_(agenda.held_)
{
    if (held_before_ != not_held)
        return;
    const Time time = agenda.elapsed();
    agenda.run_due(time);
    agenda.held_ = std::max(time.count(), agenda.latest_.load());
}

}
