#pragma once

#include <string>

/// Times as people write them.
namespace zavra::tools
{

/// What epoch_msec() takes, for messages and help.
inline constexpr const char* known_moments = "milliseconds since 1970, now, +60s, a date like 2026-11-21T12:00:00Z";

/// Milliseconds since 01.01.1970 0:00:00 UTC of a number of them, of "now", "now+2min" or "+60s" by this computer's
/// clock, or of a date in UTC.
/// @throws Usage_Error  naming `where`
unsigned long long epoch_msec(const std::string& where, const std::string& text);

/// Milliseconds in a span of time like "1s", "500ms", "2min", "1h"; a number alone counts in `unit`.
/// @return a negative number for everything else
double span_msec(const std::string& text, const std::string& unit);

/// "2026-11-21T12:00:00.000Z"; empty for years beyond 9999.
std::string utc(unsigned long long epoch_msec);

/// Milliseconds since 01.01.1970 0:00:00 UTC by this computer's clock.
unsigned long long host_epoch_msec();

}
