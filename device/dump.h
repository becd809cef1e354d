#pragma once

#include "debug.h"
#include "protocol/field.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

/// Records on the debug stream, one line per field.
namespace zavra
{

/// Writes the lines of one record, or of one record inside another: `prefix` stands before each label.
class Dump
{
public:
    Dump(std::ostream& stream, std::string prefix, bool lower)
        : stream_(stream),
          prefix_(std::move(prefix)),
          lower_(lower)
    {
    }

    template <class List>
    void list(const List& list_of_fields) const
    {
        for_each_field(list_of_fields, [this](const auto& field) { this->field(field); });
    }

private:
    template <class F>
    void field(const F& field) const
    {
        using Style = typename F::Style;
        if constexpr (std::same_as<Style, Skipped> || std::same_as<Style, Unprinted>)
            return;
        else if constexpr (requires { field.list; })
            inside(field.label, false).list(field.list);
        else if constexpr (Record<typename F::Value>)
            inside(field.label, std::same_as<Style, Lower_Case>, std::same_as<Style, Underscored> ? '_' : '.')
                .list(fields(field.value));
        else if constexpr (std::same_as<Style, Bare>)
            debug_line(values, prefix_, field.label, " = ", field.value);
        else if constexpr (std::same_as<Style, Text>)
            characters(field.label, ": ", field.value, std::extent_v<typename F::Value>);
        else if constexpr (std::same_as<Style, Raw_Text>)
            characters(field.label, ": ascii = ", field.value, std::extent_v<typename F::Value>);
        else if constexpr (std::is_array_v<typename F::Value>)
            for (std::size_t i = 0; i < std::extent_v<typename F::Value>; ++i)
                number((std::string(field.label) + '[' + std::to_string(i) + ']').c_str(), field.value[i]);
        else if constexpr (std::same_as<Style, Hexadecimal>)
            number(field.label, hex(field.value));
        else if constexpr (std::same_as<Style, Character>)
            characters(field.label, ": dec = ", reinterpret_cast<const char*>(&field.value), 1, true);
        else if constexpr (std::same_as<Style, Single_Byte>)
            number(field.label, static_cast<unsigned long long>(field.value));
        else
            number(field.label, field.value);
    }

    // Out of line, so that a field costs one call.
    Dump inside(const char* label, bool lower, char joint = '.') const;
    void number(const char* label, unsigned long long value) const;
    void number(const char* label, unsigned int value) const { number(label, static_cast<unsigned long long>(value)); }
    void number(const char* label, unsigned short value) const
    {
        number(label, static_cast<unsigned long long>(value));
    }
    void number(const char* label, unsigned char value) const { number(label, static_cast<unsigned long long>(value)); }
    void number(const char* label, float value) const;
    void number(const char* label, double value) const;
    void number(const char* label, const Hex& value) const;
    void characters(const char* label, const char* separator, const char* text, std::size_t size,
                    bool whole = false) const;
    void line(const char* label, const char* separator, const std::string& value) const;

    std::ostream& stream_;
    std::string prefix_;
    bool lower_;
};

/// Dumps a record's fields, or a list of fields made for the occasion; `name` and a dot stand before each label.
template <class T>
void dump_fields(const T& record_or_list, const char* name = nullptr)
{
    if (std::ostream* stream = open(values)) {
        const Dump dump{*stream, name == nullptr ? "" : std::string(name) + '.', false};
        if constexpr (Record<T>)
            dump.list(fields(record_or_list));
        else
            dump.list(record_or_list);
    }
}

/// The same below a title line.
template <class T>
void dump(const char* title, const T& record_or_list, const char* name = nullptr)
{
    debug_line(values, title);
    dump_fields(record_or_list, name);
}

}
