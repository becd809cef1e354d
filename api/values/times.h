#pragma once

#include <chrono>
#include <limits>
#include <stdexcept>

/// @file
/// The milliseconds of the API as std::chrono has them.

namespace velm_zavra
{

/// A moment by the unit's clock or by the system's; both count from 01.01.1970 0:00:00 UTC.
typedef std::chrono::time_point<std::chrono::system_clock, std::chrono::milliseconds> Epoch;

/// @return milliseconds for an interval, offset or wait of the API, rounded down
/// @throws std::invalid_argument when it is negative, not a number, or more than 64 bits hold
template <class Rep, class Period>
unsigned long long to_msec(std::chrono::duration<Rep, Period> interval)
{
    const double msec = std::chrono::duration<double, std::milli>(interval).count();
    if (!(msec >= 0 && msec < 18446744073709551616.0))
        throw std::invalid_argument("not a number of milliseconds from 0 to 2^64 - 1");
    return std::chrono::duration_cast<std::chrono::duration<unsigned long long, std::milli>>(interval).count();
}

/// @return an epoch time of the API
/// @throws std::invalid_argument when it is before 1970
template <class Duration>
unsigned long long to_msec(std::chrono::time_point<std::chrono::system_clock, Duration> time)
{
    return to_msec(time.time_since_epoch());
}

/// @throws std::out_of_range when std::chrono cannot hold it
inline std::chrono::milliseconds interval(unsigned long long msec)
{
    typedef std::chrono::milliseconds::rep Rep;
    if (msec > static_cast<unsigned long long>(std::numeric_limits<Rep>::max()))
        throw std::out_of_range("more milliseconds than std::chrono holds");
    return std::chrono::milliseconds(static_cast<Rep>(msec));
}

/// @param msec  an epoch time of the API
/// @throws std::out_of_range when std::chrono cannot hold it
inline Epoch epoch(unsigned long long msec)
{
    return Epoch(interval(msec));
}

/// The system's clock, for Set_Epoch_Time() and for the start and stop of a mode.
inline Epoch now()
{
    return std::chrono::time_point_cast<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

}
