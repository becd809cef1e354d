#pragma once

#include "../protocol/command.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

/// What a payload is made of, as data: the field lists and descriptors of protocol/ for programs that meet the commands
/// at run time. Made from the lists by the compiler; no part of the driver library.
namespace zavra
{

using Octets = std::vector<unsigned char>;

/// A value in a payload, an array of them, or a mark before or behind the values of a record inside.
struct Item
{
    enum class Kind : unsigned char { unsigned_integer, signed_integer, real, text, bytes, skipped, open, close };

    const char* name = ""; ///< a field's in upper case, a value's outside records as the method has it
    const char* unit = ""; ///< its own, or that of the record around it
    Kind kind = Kind::unsigned_integer;
    unsigned char size = 1;   ///< bytes of one number or character
    unsigned short count = 1; ///< of numbers, characters or bytes; 0 for bytes: as many as there are
    bool array = false;
    bool hexadecimal = false; ///< people read it in hexadecimal
    bool is_field = true;
    bool terminated = false; ///< a text whose last character on the wire is a zero
};

using Items = std::span<const Item>;

/// Bytes of an item on the wire; where there is no saying how many, none.
constexpr std::size_t wire_bytes(const Item& item)
{
    return item.kind == Item::Kind::open || item.kind == Item::Kind::close ? 0 : std::size_t{item.size} * item.count;
}

constexpr std::size_t wire_bytes(Items items)
{
    std::size_t size = 0;
    for (const Item& item : items)
        size += wire_bytes(item);
    return size;
}

constexpr bool any_size(Items items)
{
    for (const Item& item : items)
        if (item.count == 0)
            return true;
    return false;
}

/// Items while they are put together.
struct Item_List
{
    std::array<Item, 96> items{};
    std::size_t size = 0;

    constexpr void add(const Item& item) { items[size++] = item; }
    constexpr operator Items() const { return {items.data(), size}; }
};

template <class T>
inline constexpr bool is_bytes = false;

template <std::size_t size>
inline constexpr bool is_bytes<Bytes<size>> = true;

template <class T>
constexpr Item number_item(const char* name, const char* unit)
{
    using Kind = Item::Kind;
    return {name, unit,
            std::is_floating_point_v<T> ? Kind::real
            : std::is_signed_v<T>       ? Kind::signed_integer
                                        : Kind::unsigned_integer,
            sizeof(T)};
}

template <class Fields>
constexpr void add_fields(Item_List& items, const Fields& list, const char* unit);

/// Adds what a value of type T is made of. A record without a name lies open.
template <class T, class Style = Plain>
constexpr void add_value(Item_List& items, const char* name, const char* unit)
{
    if constexpr (std::same_as<Style, Single_Byte>) {
        items.add(number_item<unsigned char>(name, unit));
    } else if constexpr (Record<T>) {
        if constexpr (wire_size<T> == 0) {
            items.add({name, unit, Item::Kind::bytes, 1, 0});
        } else {
            const bool named = *name != '\0';
            if (named)
                items.add({name, unit, Item::Kind::open});
            T record{};
            add_fields(items, fields(record), unit);
            if (named)
                items.add({name, unit, Item::Kind::close});
        }
    } else if constexpr (is_bytes<T>) {
        items.add({name, unit, Item::Kind::bytes, 1, std::tuple_size_v<T>});
    } else if constexpr (std::same_as<std::remove_extent_t<T>, char>) {
        constexpr bool whole = std::same_as<Style, Raw_Text>;
        items.add({name, unit, Item::Kind::text, 1, std::extent_v<T> - (whole ? 0 : 1), false, false, true, whole});
    } else if constexpr (std::is_array_v<T>) {
        Item item = number_item<std::remove_extent_t<T>>(name, unit);
        item.count = std::extent_v<T>;
        item.array = true;
        items.add(item);
    } else {
        items.add(number_item<T>(name, unit));
    }
}

template <class Fields>
constexpr void add_fields(Item_List& items, const Fields& list, const char* unit)
{
    for_each_field(list, [&](const auto& field) {
        using F = std::remove_cvref_t<decltype(field)>;
        if constexpr (requires { field.list; }) {
            items.add({field.name, unit, Item::Kind::open});
            add_fields(items, field.list, unit);
            items.add({field.name, unit, Item::Kind::close});
        } else if constexpr (requires { field.value; }) {
            const std::size_t first = items.size;
            add_value<std::remove_const_t<typename F::Value>, typename F::Style>(
                items, field.name, *field.unit == '\0' ? unit : field.unit);
            items.items[first].hexadecimal = field.base == 16;
        } else {
            items.add({"", "", Item::Kind::skipped, 1, F::size});
        }
    });
}

/// Adds a value that travels outside records.
template <class T>
constexpr void add_value(Item_List& items, const Value_Name& name)
{
    const std::size_t first = items.size;
    add_value<T>(items, name.name, name.unit);
    if (*name.name != '\0')
        items.items[first].is_field = false;
    items.items[first].hexadecimal = name.base == 16;
}

/// What a value of type T is made of.
template <class T>
constexpr Item_List items_of(const Value_Name& name = {})
{
    Item_List items;
    add_value<T>(items, name);
    return items;
}

}
