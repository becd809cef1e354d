#include "fault.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>

namespace zavra::simulator
{

namespace
{

constexpr std::array<const char*, number_of_faults> names{"reset",    "dead-bus", "hang",  "nak-write", "request",
                                                          "nak-read", "short",    "stale", "crc"};

template <class T>
T number(std::string_view text, const std::string& whole)
{
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || text.empty())
        throw std::invalid_argument("\"" + whole +
                                    "\" is no fault; expected KIND=PROBABILITY or "
                                    "KIND=PROBABILITY:MILLISECONDS, for example crc=0.05");
    return value;
}

}

const char* name_of(Fault fault)
{
    return names[static_cast<std::size_t>(fault)];
}

std::string known_faults()
{
    std::string known;
    for (const char* name : names)
        known += (known.empty() ? "" : ", ") + std::string(name);
    return known;
}

Fault fault_named(std::string_view name)
{
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end())
        throw std::invalid_argument("There is no fault \"" + std::string(name) + "\" (there are: " + known_faults() +
                                    ")");
    return static_cast<Fault>(found - names.begin());
}

double checked_probability(double probability)
{
    if (!(probability >= 0 && probability <= 1))
        throw std::invalid_argument("A fault's probability is a number from 0 to 1");
    return probability;
}

Clock::Time checked_duration(Fault fault, Clock::Time duration)
{
    if (!lasts(fault))
        throw std::invalid_argument(std::string("The fault ") + name_of(fault) +
                                    " has no duration; hang and dead-bus have one");
    if (duration <= Clock::Time(0))
        throw std::invalid_argument(std::string("The fault ") + name_of(fault) + " lasts 1 ms at least");
    return duration;
}

Fault_Rate parse_fault_rate(const std::string& text)
{
    const std::string_view view = text;
    const auto equals = std::min(view.find('='), view.size());
    const auto colon = std::min(view.find(':', equals), view.size());
    Fault_Rate rate{fault_named(view.substr(0, equals)), 0};
    rate.probability =
        checked_probability(number<double>(view.substr(std::min(equals + 1, colon), colon - equals - 1), text));
    if (colon != view.size())
        rate.duration = checked_duration(rate.fault, Clock::Time(number<unsigned int>(view.substr(colon + 1), text)));
    return rate;
}

}
