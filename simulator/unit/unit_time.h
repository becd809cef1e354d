#pragma once

#include "clock.h"

namespace zavra::simulator
{

/// The unit's system time (since its last reset) and epoch time (since 01.01.1970 0:00:00 UTC), in milliseconds.
class Unit_Time
{
public:
    explicit Unit_Time(const Clock& clock) : clock_(clock), reset_(clock.now()) {}

    unsigned long long system_msec() const { return static_cast<unsigned long long>((clock_.now() - reset_).count()); }
    unsigned long long epoch_msec() const { return epoch_at_reset_ + system_msec(); }

    /// Unsigned arithmetic wraps, so that any epoch may be set.
    void set_epoch_msec(unsigned long long epoch) { epoch_at_reset_ = epoch - system_msec(); }

    void reset()
    {
        reset_ = clock_.now();
        epoch_at_reset_ = 0;
    }

private:
    const Clock& clock_;
    Clock::Time reset_;
    unsigned long long epoch_at_reset_ = 0;
};

}
