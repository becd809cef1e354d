#include "moment.h"
#include "failure.h"
#include "units.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <optional>

#include <time.h>

namespace zavra::tools
{

namespace
{

/// Numbers beyond which a double has no whole milliseconds.
constexpr double longest_msec = 9e15;

std::optional<unsigned long long> parse_date(const std::string& text)
{
    for (const char* const format : {"%Y-%m-%dT%H:%M:%S", "%Y-%m-%d %H:%M:%S", "%Y-%m-%dT%H:%M", "%Y-%m-%d"}) {
        std::tm parts{};
        const char* rest = ::strptime(text.c_str(), format, &parts);
        if (rest == nullptr)
            continue;
        unsigned int msec = 0;
        if (*rest == '.') {
            unsigned int place = 100;
            for (++rest; *rest >= '0' && *rest <= '9'; ++rest, place /= 10)
                msec += place * static_cast<unsigned int>(*rest - '0');
        }
        const std::string zone = rest;
        const bool day_alone = std::string(format) == "%Y-%m-%d" && zone.empty();
        const int day = parts.tm_mday;
        const std::time_t seconds = ::timegm(&parts);
        // The 30th of February would quietly become a day in March.
        if ((zone == "Z" || day_alone) && seconds >= 0 && parts.tm_mday == day)
            return static_cast<unsigned long long>(seconds) * 1000 + msec;
    }
    return std::nullopt;
}

/// Of "now", "now+2min", "now-5s", "+60s".
std::optional<unsigned long long> parse_relative(const std::string& text)
{
    std::string rest = text;
    if (text.starts_with("now"))
        rest.erase(0, 3);
    else if (!text.starts_with('+'))
        return std::nullopt;
    const auto now = static_cast<double>(host_epoch_msec());
    if (rest.empty())
        return static_cast<unsigned long long>(now);
    const bool back = rest.front() == '-';
    const double span = back || rest.front() == '+' ? span_msec(rest.substr(1), "") : -1;
    const double moment = back ? now - span : now + span;
    if (span < 0 || moment < 0 || moment > longest_msec)
        return std::nullopt;
    return static_cast<unsigned long long>(moment);
}

}

unsigned long long epoch_msec(const std::string& where, const std::string& text)
{
    const char* const end = text.data() + text.size();
    unsigned long long msec = 0;
    const auto [stop, error] = std::from_chars(text.data(), end, msec);
    if (stop == end && error == std::errc())
        return msec;
    if (stop == end && error == std::errc::result_out_of_range)
        throw Usage_Error(where + ": " + text + " is out of range: milliseconds go up to 18446744073709551615");
    if (const auto found = parse_relative(text))
        return *found;
    if (const auto found = parse_date(text))
        return *found;
    throw Usage_Error(where + ": expected " + known_moments + ", got \"" + text + '"');
}

double span_msec(const std::string& text, const std::string& unit)
{
    const auto number = number_with_unit(text);
    if (!number)
        return -1;
    const auto factor = conversion(number->unit.empty() ? unit : number->unit, "ms");
    return factor && number->value >= 0 && std::isfinite(number->value) ? number->value * *factor : -1;
}

std::string utc(unsigned long long epoch_msec)
{
    constexpr unsigned long long last_msec = 253'402'300'799'999; // in the year 9999
    if (epoch_msec > last_msec)
        return "";
    const auto seconds = static_cast<std::time_t>(epoch_msec / 1000);
    std::tm parts{};
    ::gmtime_r(&seconds, &parts);
    char date[sizeof "2026-11-21T12:00:00"];
    std::strftime(date, sizeof date, "%FT%T", &parts);
    char milliseconds[sizeof ".000Z"];
    std::snprintf(milliseconds, sizeof milliseconds, ".%03uZ", static_cast<unsigned int>(epoch_msec % 1000));
    return std::string(date) + milliseconds;
}

unsigned long long host_epoch_msec()
{
    using namespace std::chrono;
    return static_cast<unsigned long long>(duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count());
}

}
