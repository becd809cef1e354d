#pragma once

#include <VELM_API_Debug.h>

#include <ostream>

/// Lines on the platform's debug stream.
namespace zavra
{

struct Debug_Channel
{
    unsigned int level;
    int colour;
};

inline constexpr Debug_Channel constructors{1, 36};
inline constexpr Debug_Channel destructors{2, 36};
inline constexpr Debug_Channel values{3, 32};
inline constexpr Debug_Channel warnings{4, 33};

/// Writes one line, for which the platform is asked for its stream once. It is formatted aside, so that neither the
/// state the stream was left in nor the application's locale changes how numbers look; where nobody would see it, it is
/// not formatted at all. There are many kinds of lines; what they share is in this function, once.
void write_line(const Debug_Channel& channel, void (*print)(std::ostream&, const void*), const void* line,
                const char* end = "\033[0m\n");

template <class... Part>
void debug_line(const Debug_Channel& channel, const Part&... parts)
{
    const auto line = [&](std::ostream& stream) { (stream << ... << parts); };
    using Line = decltype(line);
    write_line(
        channel, [](std::ostream& stream, const void* it) { (*static_cast<Line*>(it))(stream); }, &line);
}

template <class... Part>
void warn(const Part&... parts)
{
    debug_line(warnings, "WARNING: ", parts...);
}

/// Writes a label and bytes in hexadecimal, each as a coloured piece of its own.
void debug_bytes(const char* label, const unsigned char* bytes, unsigned int length);

/// A number that prints as "0x" and all digits of its type, leading zeros included.
struct Hex
{
    unsigned long long value;
    unsigned int digits;
};

std::ostream& operator<<(std::ostream& stream, const Hex& number);

template <class T>
Hex hex(T value)
{
    return {value, 2 * sizeof(T)};
}

}
