#include "agenda.h"

#include <algorithm>

namespace zavra
{

Clock::Time Agenda::elapsed() const
{
    const auto time = clock_.now() - start_;
    return factor_ == 1 ? time : Time(static_cast<Time::rep>(static_cast<double>(time.count()) * factor_));
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
    const Time time = elapsed();
    while (!entries_.empty() && entries_.begin()->first <= time) {
        const auto entry = entries_.extract(entries_.begin());
        held_ = std::max(entry.key().count(), latest_.load());
        entry.mapped()();
    }
    held_ = not_held;
}

}
