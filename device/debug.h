#pragma once

#include <VELM_API_Debug.h>

#include <ostream>
#include <sstream>
#include <string>

/// Lines on the platform's debug stream.
namespace zavra
{

struct Debug_Channel
{
    VELM_API_Debug::Level level;
    int colour;
};

inline constexpr Debug_Channel constructors{1, 36};
inline constexpr Debug_Channel destructors{2, 36};
inline constexpr Debug_Channel values{3, 32};
inline constexpr Debug_Channel warnings{4, 33};

/// The channel's stream, or null where nobody would see what is written: then nothing is formatted at all.
inline std::ostream* open(const Debug_Channel& channel)
{
    std::ostream& stream = VELM_API_Debug::dout(channel.level);
    return stream ? &stream : nullptr;
}

/// Writes one line. It is formatted aside, so that neither the state the stream was left in nor the application's
/// locale changes how numbers look.
void write_line(std::ostream& stream, int colour, const std::string& text);

/// Text in the classic locale with default formatting.
std::ostringstream plain_text();

template <class... Part>
void debug_line(const Debug_Channel& channel, const Part&... parts)
{
    if (std::ostream* stream = open(channel)) {
        std::ostringstream line = plain_text();
        (line << ... << parts);
        write_line(*stream, channel.colour, line.str());
    }
}

template <class... Part>
void warn(const Part&... parts)
{
    debug_line(warnings, "WARNING: ", parts...);
}

/// Writes bytes as one line of pieces: the label, two hexadecimal digits for each byte, and an empty piece.
void write_bytes(std::ostream& stream, const char* label, const unsigned char* bytes, unsigned int length);

inline void debug_bytes(const char* label, const unsigned char* bytes, unsigned int length)
{
    if (std::ostream* stream = open(values))
        write_bytes(*stream, label, bytes, length);
}

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
