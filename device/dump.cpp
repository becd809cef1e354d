#include "dump.h"

#include <cctype>

namespace zavra
{

namespace
{

std::string in_case(const char* label, bool lower)
{
    std::string text = label;
    if (lower)
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

template <class T>
std::string formatted(T value)
{
    std::ostringstream text = plain_text();
    text << value;
    return text.str();
}

}

Dump Dump::inside(const char* label, bool lower, char joint) const
{
    return {stream_, prefix_ + in_case(label, lower_) + joint, lower};
}

void Dump::number(const char* label, unsigned long long value) const
{
    line(label, ": dec = ", formatted(value));
}

void Dump::number(const char* label, float value) const
{
    line(label, ": dec = ", formatted(value));
}

void Dump::number(const char* label, double value) const
{
    line(label, ": dec = ", formatted(value));
}

void Dump::number(const char* label, const Hex& value) const
{
    line(label, ": hex = ", formatted(value));
}

void Dump::characters(const char* label, const char* separator, const char* text, std::size_t size, bool whole) const
{
    line(label, separator, {text, whole ? text + size : std::find(text, text + size, '\0')});
}

void Dump::line(const char* label, const char* separator, const std::string& value) const
{
    write_line(stream_, values.colour, prefix_ + in_case(label, lower_) + separator + value);
}

}
