#include "failure.h"
#include "leaf.h"
#include "moment.h"
#include "units.h"

#include "../common/text.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>

namespace zavra::tools
{

namespace
{

/// "a whole number from 0 to 255"; "a number in rad/s (or rpm, deg/s)".
std::string expectation(const Leaf& leaf)
{
    if (is_epoch_time(leaf))
        return known_moments;
    std::string text = "a number";
    if (leaf.kind == Leaf::Kind::unsigned_integer)
        text = "a whole number from 0 to " + std::to_string(~0ULL >> (64 - leaf.size));
    else if (leaf.kind == Leaf::Kind::signed_integer)
        text = "a whole number";
    for (const Enumerator& each : leaf.names)
        text += (&each == leaf.names.data() ? " or " : ", ") + std::string(each.name);
    if (const std::string others = other_units(leaf.unit); !leaf.unit.empty())
        text += " in " + leaf.unit + (others.empty() ? "" : " (or " + others + ')');
    return text;
}

[[noreturn]] void refuse(const Leaf& leaf, const std::string& text)
{
    throw Usage_Error(leaf.path + ": expected " + expectation(leaf) + ", got \"" + text + '"');
}

[[noreturn]] void refuse_range(const Leaf& leaf, const std::string& text)
{
    throw Usage_Error(leaf.path + ": " + text + " is out of range: " +
                      (leaf.size == 32 ? "a float goes up to 3.4e38" : "a double goes up to 1.7e308"));
}

template <class T>
std::pair<T, bool> number(std::string_view text, int base)
{
    T value = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    return {value, error == std::errc() && stop == text.data() + text.size()};
}

/// A number with another unit behind it.
double converted(const Leaf& leaf, const std::string& text)
{
    const auto given = number_with_unit(text);
    if (!given)
        refuse(leaf, text);
    const auto factor = given->unit.empty() ? 1 : conversion(given->unit, leaf.unit);
    if (!factor)
        refuse(leaf, text);
    return given->value * *factor;
}

Json parse_integer(const Leaf& leaf, const std::string& text)
{
    for (const Enumerator& each : leaf.names) {
        std::string lower = text;
        make_lower_case(lower);
        if (lower == each.name)
            return each.value;
    }
    if (text == "on" || text == "true")
        return 1U;
    if (text == "off" || text == "false")
        return 0U;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        if (const auto [value, good] = number<unsigned long long>(std::string_view(text).substr(2), 16); good)
            return value;
    } else if (text.starts_with('-')) {
        if (const auto [value, good] = number<long long>(text, 10); good)
            return value;
    } else if (const auto [value, good] = number<unsigned long long>(text, 10); good) {
        return value;
    }
    // "1.5s" is a whole number of milliseconds; "1.5" is none of anything.
    constexpr double largest = 9e15;
    const double value = leaf.unit.empty() ? -1 : converted(leaf, text);
    const bool has_unit = !leaf.unit.empty() && !number_with_unit(text)->unit.empty();
    if (!has_unit || !(value >= 0) || value > largest || value != std::floor(value))
        refuse(leaf, text);
    return static_cast<unsigned long long>(value);
}

Json parse_real(const Leaf& leaf, const std::string& text)
{
    const double value = converted(leaf, text);
    const auto given = number_with_unit(text);
    const bool named_infinity = text.find_first_of("0123456789") == std::string::npos;
    if (std::isinf(given->value) && !named_infinity)
        refuse_range(leaf, text);
    if (leaf.size == 32 && std::isfinite(value) && std::abs(value) > std::numeric_limits<float>::max())
        refuse_range(leaf, text);
    return json::number(value);
}

}

Json parse_text(const Leaf& leaf, const std::string& text)
{
    switch (leaf.kind) {
    case Leaf::Kind::unsigned_integer:
    case Leaf::Kind::signed_integer:
        return is_epoch_time(leaf) && !text.starts_with("0x") ? Json(epoch_msec(leaf.path, text))
                                                              : parse_integer(leaf, text);
    case Leaf::Kind::real:
        return parse_real(leaf, text);
    case Leaf::Kind::bytes:
        if (const auto digits = hexadecimal_digits(text))
            return *digits;
        throw Usage_Error(leaf.path + ": expected bytes in hexadecimal, got \"" + text + '"');
    default:
        return text;
    }
}

void check_range(const Leaf& leaf, const Json& value)
{
    if (leaf.kind == Leaf::Kind::real && leaf.size == 32 && value.is_number() &&
        std::abs(value.get<double>()) > std::numeric_limits<float>::max())
        refuse_range(leaf, json::shown(value));
    if (leaf.kind != Leaf::Kind::unsigned_integer || !value.is_number_integer())
        return;
    const bool negative = !value.is_number_unsigned() && value.get<long long>() < 0;
    if (negative || value.get<unsigned long long>() > ~0ULL >> (64 - leaf.size))
        refuse(leaf, json::shown(value));
}

std::optional<std::string> hexadecimal_digits(const std::string& text)
{
    std::string digits;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (text.compare(i, 2, "0x") == 0 || text.compare(i, 2, "0X") == 0)
            ++i;
        else if (std::isxdigit(c) != 0)
            digits += text[i];
        else if (std::isspace(c) == 0 && c != ':' && c != ',')
            return std::nullopt;
    }
    return digits;
}

}
