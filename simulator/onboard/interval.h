#pragma once

#include "../satellite/measurements.h"

#include <optional>

namespace zavra::simulator
{

/// Whether it is time to update something again.
class Interval
{
public:
    /// The seconds since the last time, and `first` at the beginning; nothing before the interval is over.
    std::optional<double> due(std::chrono::milliseconds now, unsigned long long interval_msec, double first)
    {
        if (last_ && static_cast<unsigned long long>((now - *last_).count()) < interval_msec)
            return std::nullopt;
        const double elapsed = last_ ? seconds_of(now - *last_) : first;
        last_ = now;
        return elapsed;
    }

private:
    std::optional<std::chrono::milliseconds> last_;
};

}
