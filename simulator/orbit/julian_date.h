#pragma once

namespace zavra::simulator
{

inline constexpr double julian_1970 = 2440587.5; ///< 01.01.1970 0:00

/// A Julian date in two parts, so that a moment keeps its microseconds.
struct Julian_Date
{
    double day;      ///< Midnight at the start of the day: ends in .5
    double fraction; ///< Days since then

    double value() const { return day + fraction; }
    bool operator==(const Julian_Date&) const = default;
    double days_since_j2000() const { return (day - 2451545.0) + fraction; }
};

inline double minutes_between(const Julian_Date& from, const Julian_Date& to)
{
    constexpr double minutes_per_day = 1440.0;
    return ((to.day - from.day) + (to.fraction - from.fraction)) * minutes_per_day;
}

}
