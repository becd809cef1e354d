#include "dump.h"

#include "../common/text.h"

#include <algorithm>
#include <string_view>

namespace zavra
{

/// A label with the names before it.
struct Dump::Label
{
    const Dump& dump;
    const char* label;
};

std::ostream& operator<<(std::ostream& stream, const Dump::Label& label)
{
    label.dump.print(stream, label.label);
    return stream;
}

void Dump::print(std::ostream& stream, const char* label) const
{
    if (outer_ != nullptr)
        outer_->print(stream, name_);
    else if (name_ != nullptr)
        stream << name_;
    if (name_ != nullptr)
        stream << joint_;
    for (const char* c = label; *c != '\0'; ++c)
        stream << (lower_ ? lower_case(*c) : *c);
}

void Dump::number(const char* label, unsigned long long value, const char* separator) const
{
    debug_line(values, Label{*this, label}, separator, value);
}

void Dump::number(const char* label, float value, const char* separator) const
{
    debug_line(values, Label{*this, label}, separator, value);
}

void Dump::number(const char* label, double value, const char* separator) const
{
    debug_line(values, Label{*this, label}, separator, value);
}

void Dump::number(const char* label, const Hex& value, const char* separator) const
{
    debug_line(values, Label{*this, label}, separator, value);
}

void Dump::element(const char* label, std::size_t index, float value) const
{
    debug_line(values, Label{*this, label}, '[', index, "]: dec = ", value);
}

void Dump::character(const char* label, char value) const
{
    debug_line(values, Label{*this, label}, ": dec = ", value);
}

void Dump::text(const char* label, const char* separator, const char* characters, std::size_t size) const
{
    debug_line(values, Label{*this, label}, separator,
               std::string_view(characters, std::find(characters, characters + size, '\0')));
}

}
