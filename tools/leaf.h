#pragma once

#include "../device/protocol/json.h"

#include <string>
#include <type_traits>
#include <vector>

/// What a command's arguments and results are made of, derived from their types and field lists.
namespace zavra::tools
{

/// One number, text or run of bytes inside a command's arguments or results.
struct Leaf
{
    enum class Kind { unsigned_integer, signed_integer, real, text, bytes, names };

    std::string path;    ///< as people write it: "parameters.correction_scale.m11", "polynomial_coeff[3]"
    std::string pointer; ///< where it stands in JSON: "/parameters/correction_scale/m11"
    std::string unit = "";
    Kind kind = Kind::unsigned_integer;
    std::size_t size = 0; ///< bits of a number, characters of a text, bytes; 0 where the length is free
    bool hexadecimal = false;
};

using Leaves = std::vector<Leaf>;

/// "uint8", "float", "text of 69".
std::string type_name(const Leaf& leaf);

/// The value of one leaf inside `value`, without its unit.
std::string text_of(const Leaf& leaf, const Json& value);

/// What somebody typed: numbers in decimal or with 0x, "on" and "off" for 1 and 0.
/// @throws Usage_Error  naming the leaf
Json parse_text(const Leaf& leaf, const std::string& text);

/// Bytes of any number.
using Octets = std::vector<unsigned char>;

namespace detail
{

/// Where leaves are added: what stands before their names.
struct Place
{
    std::string path;
    std::string pointer;
    std::string unit;

    Place member(const std::string& name, const char* member_unit) const
    {
        return {path.empty() ? name : path + '.' + name, pointer + '/' + name,
                *member_unit == '\0' ? unit : member_unit};
    }

    Place element(std::size_t index) const
    {
        return {path + '[' + std::to_string(index) + ']', pointer + '/' + std::to_string(index), unit};
    }
};

void add_leaf(Leaves& leaves, const Place& place, Leaf::Kind kind, std::size_t size, bool hexadecimal = false);

template <class T, class Style>
void add_value(Leaves& leaves, const Place& place);

template <class List>
void add_list(Leaves& leaves, const Place& place, const List& list_of_fields)
{
    for_each_field(list_of_fields, [&](const auto& field) {
        using F = std::remove_cvref_t<decltype(field)>;
        if constexpr (requires { field.list; })
            add_list(leaves, place.member(json::key(field.name), ""), field.list);
        else if constexpr (requires { field.value; })
            add_value<typename F::Value, typename F::Style>(leaves, place.member(json::key(field.name), field.unit));
    });
}

template <class T, class Style>
void add_value(Leaves& leaves, const Place& place)
{
    constexpr bool hexadecimal = std::same_as<Style, Hexadecimal>;
    if constexpr (std::same_as<Style, Single_Byte>) {
        add_leaf(leaves, place, Leaf::Kind::unsigned_integer, 8);
    } else if constexpr (std::is_floating_point_v<T>) {
        add_leaf(leaves, place, Leaf::Kind::real, 8 * sizeof(T));
    } else if constexpr (std::is_arithmetic_v<T>) {
        add_leaf(leaves, place, std::is_signed_v<T> ? Leaf::Kind::signed_integer : Leaf::Kind::unsigned_integer,
                 8 * sizeof(T), hexadecimal);
    } else if constexpr (std::same_as<T, Octets>) {
        add_leaf(leaves, place, Leaf::Kind::bytes, 0);
    } else if constexpr (json::is_bytes<T>) {
        add_leaf(leaves, place, Leaf::Kind::bytes, std::tuple_size_v<T>);
    } else if constexpr (std::same_as<std::remove_extent_t<T>, char>) {
        add_leaf(leaves, place, Leaf::Kind::text, std::extent_v<T> - 1);
    } else if constexpr (std::is_array_v<T>) {
        for (std::size_t i = 0; i < std::extent_v<T>; ++i)
            add_value<std::remove_extent_t<T>, Style>(leaves, place.element(i));
    } else if constexpr (Record<T>) {
        T record{};
        add_list(leaves, place, fields(record));
    }
}

}

/// Adds the leaves of a value of type T; a record without a name lies open.
template <class T>
void add_leaves(Leaves& leaves, const Value_Name& name)
{
    const detail::Place root;
    if (*name.name == '\0')
        detail::add_value<T, Plain>(leaves, root);
    else
        detail::add_value<T, Plain>(leaves, root.member(name.name, name.unit));
}

}
