#include "duration.h"

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <string_view>

namespace zavra::simulator
{

namespace
{

constexpr struct
{
    std::string_view name;
    long long msec;
} units[] = {{"d", 86'400'000}, {"h", 3'600'000}, {"min", 60'000}, {"s", 1000}, {"ms", 1}};

}

Clock::Time parse_duration(const std::string& text)
{
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    for (const auto& unit : units) {
        const double msec = number * static_cast<double>(unit.msec);
        if (error == std::errc() && unit.name == end && msec >= 1 && msec <= 1e15)
            if (const double whole = std::round(msec); std::abs(msec - whole) < 1e-6 * whole)
                return Clock::Time(static_cast<Clock::Time::rep>(whole));
    }
    throw std::invalid_argument("\"" + text + "\" is no duration; one is written like 500ms, 90s, 30min, 6h or 2d");
}

std::string to_string(Clock::Time duration)
{
    for (const auto& unit : units)
        if (duration.count() % unit.msec == 0)
            return std::to_string(duration.count() / unit.msec) + ' ' + std::string(unit.name);
    return {};
}

}
