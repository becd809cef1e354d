#pragma once

#include <concepts>
#include <cstddef>
#include <type_traits>
#include <utility>

/// A record is described once, by its field list: the fields in wire order with the names that dumps print.
///
///     template <>
///     inline constexpr auto field_list<ZAVRA_100_BDot_Controller_Parameters> = [](auto& r) {
///         return List{Field{"K", r.k}, Field{"CTRL_ACTUATOR_CMD_IF", r.ctrl_actuator_cmd_if},
///                           Field{"UPDATE_INTERVAL", r.update_interval}.in("ms")};
///     };
///
/// Size, packing, unpacking and copies (wire.h), the debug dump (device/dump.h) and the catalogue's names, types and
/// units follow from it. A list can be applied to any record that has members of these names.
///
/// How a field travels or prints, where it is not the usual way, is its style.
namespace zavra
{

// clang-format off
struct Plain {};
struct Hexadecimal {}; ///< Prints ": hex = 0x" and all digits of the type.
struct Text {};        ///< char array; all but its last element travels, the last one holds the terminator.
struct Raw_Text {};    ///< char array; every element travels, the terminator too. Prints ": ascii = ".
struct Character {};   ///< Prints the byte itself where a number would be expected.
struct Lower_Case {};  ///< The members of this record print their names in lower case.
struct Underscored {}; ///< The members of this record print their names after an underscore instead of a dot.
struct Bare {};        ///< Prints " = " before the value, without ": dec".
struct Unprinted {};   ///< Travels, but the dump leaves it out.
struct Single_Byte {}; ///< Travels as one unsigned byte whatever its type; prints as an integer.
struct Skipped {};     ///< Bytes without a field: sent as zero, ignored when received.
// clang-format on

namespace style
{

inline constexpr Hexadecimal hexadecimal;
inline constexpr Text text;
inline constexpr Raw_Text raw_text;
inline constexpr Character character;
inline constexpr Lower_Case lower_case;
inline constexpr Underscored underscored;
inline constexpr Bare bare;
inline constexpr Unprinted unprinted;
inline constexpr Single_Byte single_byte;

}

/// What people read a number of a style in, where its field does not say.
template <class Field_Style>
inline constexpr unsigned usual_base = std::same_as<Field_Style, Hexadecimal> ? 16 : 10;

template <class T, class Field_Style = Plain, unsigned number_base = usual_base<Field_Style>>
struct Field
{
    using Value = T;
    using Style = Field_Style;
    static constexpr unsigned base = number_base;

    constexpr Field(const char* field_name, T& field_value, Field_Style = {})
        : name(field_name),
          label(field_name),
          value(field_value)
    {
    }

    constexpr Field in(const char* field_unit) const
    {
        Field field = *this;
        field.unit = field_unit;
        return field;
    }

    // For the numbers that people read in another base than the dump's: registers in 16, counters in 10.
    constexpr Field<T, Style, 16> in_hexadecimal() const { return in_base<16>(); }
    constexpr Field<T, Style, 10> in_decimal() const { return in_base<10>(); }

    /// For the fields that the dump prints under another name than their own.
    constexpr Field labelled(const char* dump_label) const
    {
        Field field = *this;
        field.label = dump_label;
        return field;
    }

    const char* name;
    const char* label;
    const char* unit = "";
    T& value;

private:
    template <unsigned people_read_it_in>
    constexpr Field<T, Style, people_read_it_in> in_base() const
    {
        Field<T, Style, people_read_it_in> field{name, value};
        field.label = label;
        field.unit = unit;
        return field;
    }
};

/// Bytes on the wire that belong to no field.
template <std::size_t bytes>
struct Skip
{
    using Style = Skipped;
    static constexpr std::size_t size = bytes;
};

/// A record's members listed in place, where the record's own field list will not do.
template <class Fields>
struct Group
{
    using Style = Plain;

    constexpr Group(const char* group_name, Fields group_list) : name(group_name), label(group_name), list(group_list)
    {
    }

    const char* name;
    const char* label;
    Fields list;
};

template <std::size_t index, class F>
struct List_Entry
{
    F field;
};

template <class Indices, class... F>
struct Flat_List;

template <std::size_t... i, class... F>
struct Flat_List<std::index_sequence<i...>, F...> : List_Entry<i, F>...
{
    constexpr explicit Flat_List(const F&... each) : List_Entry<i, F>{each}... {}

    static constexpr std::size_t size = sizeof...(F);
};

/// Fields in wire order. Flat, because every source pays for the lists that it includes: std::tuple is a chain of
/// types.
template <class... F>
struct List : Flat_List<std::index_sequence_for<F...>, F...>
{
    constexpr List(const F&... each) : Flat_List<std::index_sequence_for<F...>, F...>(each...) {}
};

template <std::size_t index, class F>
constexpr const F& get(const List_Entry<index, F>& entry)
{
    return entry.field;
}

/// The fields of one list and then those of the other.
template <std::size_t... i, class... F, std::size_t... j, class... G>
constexpr List<F..., G...> operator+(const Flat_List<std::index_sequence<i...>, F...>& first,
                                     const Flat_List<std::index_sequence<j...>, G...>& second)
{
    return {first.List_Entry<i, F>::field..., second.List_Entry<j, G>::field...};
}

struct No_Field_List
{
};

template <class Record>
inline constexpr auto field_list = No_Field_List{};

template <class T>
using Field_List_Of = std::remove_const_t<decltype(field_list<std::remove_const_t<T>>)>;

template <class T>
concept Record = !std::same_as<Field_List_Of<T>, No_Field_List>;

template <Record R>
constexpr auto fields(R& record)
{
    return field_list<std::remove_const_t<R>>(record);
}

template <std::size_t... i, class... F, class Action>
constexpr void for_each_field(const Flat_List<std::index_sequence<i...>, F...>& list, Action&& action)
{
    (action(list.List_Entry<i, F>::field), ...);
}

}
