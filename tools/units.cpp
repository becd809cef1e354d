#include "units.h"

#include "../common/text.h"

#include <charconv>
#include <cmath>
#include <numbers>

namespace zavra::tools
{

namespace
{

struct Conversion
{
    const char* from;
    const char* to;
    double factor;
};

constexpr double degree = std::numbers::pi / 180;

constexpr Conversion conversions[] = {
    {"rpm", "rad/s", std::numbers::pi / 30},
    {"deg/s", "rad/s", degree},
    {"deg", "rad", degree},
    {"mT", "T", 1e-3},
    {"uT", "T", 1e-6},
    {"nT", "T", 1e-9},
    {"s", "ms", 1e3},
    {"min", "ms", 60e3},
    {"h", "ms", 3600e3},
    {"Nm", "N m", 1},
    {"mNm", "N m", 1e-3},
    {"Am2", "A m^2", 1},
    {"mA", "A", 1e-3},
};

}

std::optional<Number_With_Unit> number_with_unit(const std::string& text)
{
    const char* const begin = text.data() + (text.starts_with('+') ? 1 : 0);
    const char* const end = text.data() + text.size();
    Number_With_Unit number{};
    const auto [stop, error] = std::from_chars(begin, end, number.value);
    if (error == std::errc::invalid_argument)
        return std::nullopt;
    if (error == std::errc::result_out_of_range)
        number.value = *begin == '-' ? -HUGE_VAL : HUGE_VAL;
    number.unit = trimmed(std::string(stop, end));
    return number;
}

std::optional<double> conversion(const std::string& from, const std::string& to)
{
    if (from == to)
        return 1;
    for (const Conversion& each : conversions)
        if (from == each.from && to == each.to)
            return each.factor;
    return std::nullopt;
}

std::string other_units(const std::string& to)
{
    std::string units;
    for (const Conversion& each : conversions)
        if (to == each.to)
            units += (units.empty() ? "" : ", ") + std::string(each.from);
    return units;
}

}
