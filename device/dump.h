#pragma once

#include "../protocol/field.h"
#include "debug.h"

#include <cstddef>

/// Records on the debug stream, one line per field.
namespace zavra
{

/// Writes the lines of one record, or of one record inside another. The names of the records around a field stand
/// before its label; they are put together only where somebody sees the line.
class Dump
{
public:
    explicit Dump(const char* name) : name_(name) {}

    template <class Fields>
    void list(const Fields& list_of_fields) const
    {
        for_each_field(list_of_fields, [this](const auto& field) { this->field(field); });
    }

private:
    Dump(const Dump& outer, const char* name, bool lower, char joint)
        : outer_(&outer),
          name_(name),
          lower_(lower),
          joint_(joint)
    {
    }

    template <class F>
    void field(const F& field) const
    {
        using Style = typename F::Style;
        if constexpr (std::same_as<Style, Skipped> || std::same_as<Style, Unprinted>)
            return;
        else if constexpr (requires { field.list; })
            Dump(*this, field.label, false, '.').list(field.list);
        else if constexpr (Record<typename F::Value>)
            Dump(*this, field.label, std::same_as<Style, Lower_Case>, std::same_as<Style, Underscored> ? '_' : '.')
                .list(fields(field.value));
        else if constexpr (std::same_as<Style, Bare>)
            number(field.label, field.value, " = ");
        else if constexpr (std::same_as<Style, Text>)
            text(field.label, ": ", field.value, std::extent_v<typename F::Value>);
        else if constexpr (std::same_as<Style, Raw_Text>)
            text(field.label, ": ascii = ", field.value, std::extent_v<typename F::Value>);
        else if constexpr (std::is_array_v<typename F::Value>)
            for (std::size_t i = 0; i < std::extent_v<typename F::Value>; ++i)
                element(field.label, i, field.value[i]);
        else if constexpr (std::same_as<Style, Hexadecimal>)
            number(field.label, hex(field.value), ": hex = ");
        else if constexpr (std::same_as<Style, Character>)
            character(field.label, static_cast<char>(field.value));
        else if constexpr (std::same_as<Style, Single_Byte> || std::is_integral_v<typename F::Value>)
            number(field.label, static_cast<unsigned long long>(field.value));
        else
            number(field.label, field.value);
    }

    // Out of line, so that a field costs one call.
    void number(const char* label, unsigned long long value, const char* separator = ": dec = ") const;
    void number(const char* label, float value, const char* separator = ": dec = ") const;
    void number(const char* label, double value, const char* separator = ": dec = ") const;
    void number(const char* label, const Hex& value, const char* separator) const;
    void element(const char* label, std::size_t index, float value) const;
    void character(const char* label, char value) const;
    void text(const char* label, const char* separator, const char* characters, std::size_t size) const;

    void print(std::ostream& stream, const char* label) const;

    struct Label;
    friend std::ostream& operator<<(std::ostream& stream, const Label& label);

    const Dump* outer_ = nullptr;
    const char* name_;
    bool lower_ = false;
    char joint_ = '.';
};
/// Dumps a record's fields, or a list of fields made for the occasion; `name` and a dot stand before each label.
template <class T>
void dump_fields(const T& record_or_list, const char* name = nullptr)
{
    const Dump dump(name);
    if constexpr (Record<T>)
        dump.list(fields(record_or_list));
    else
        dump.list(record_or_list);
}

/// The same below a title line.
template <class T>
void dump(const char* title, const T& record_or_list, const char* name = nullptr)
{
    debug_line(values, title);
    dump_fields(record_or_list, name);
}

}
