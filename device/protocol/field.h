#pragma once

#include <concepts>
#include <cstddef>
#include <tuple>
#include <type_traits>

/// A record is described once, by its field list: the fields in wire order with the names that dumps print.
///
///     template <>
///     inline constexpr auto field_list<ZAVRA_100_BDot_Controller_Parameters> = [](auto& r) {
///         return std::tuple{Field{"K", r.k}, Field{"CTRL_ACTUATOR_CMD_IF", r.ctrl_actuator_cmd_if},
///                           Field{"UPDATE_INTERVAL", r.update_interval}.in("ms")};
///     };
///
/// Size, packing, unpacking (wire.h), the debug dump (device/dump.h), copies between records that share a list (copy())
/// and the tools' names, types and units follow from it. A record with the same fields shares the list:
///
///     template <>
///     inline constexpr auto field_list<VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS> =
///         field_list<ZAVRA_100_BDot_Controller_Parameters>;
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

template <class T, class Field_Style = Plain>
struct Field
{
    using Value = T;
    using Style = Field_Style;

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
};

/// Bytes on the wire that belong to no field.
template <std::size_t bytes>
struct Skip
{
    using Style = Skipped;
    static constexpr std::size_t size = bytes;
};

/// A record's members listed in place, where the record's own field list will not do.
template <class List>
struct Group
{
    using Style = Plain;

    constexpr Group(const char* group_name, List group_list) : name(group_name), label(group_name), list(group_list) {}

    const char* name;
    const char* label;
    List list;
};

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

template <class List, class Action>
constexpr void for_each_field(const List& list, Action&& action)
{
    std::apply([&](const auto&... field) { (action(field), ...); }, list);
}

}
