#pragma once

#include "command.h"

#include <string>
#include <vector>

/// Where each value of a payload travels, for people.
namespace zavra
{

struct Layout_Row
{
    std::string offset; ///< "4", or "4 + 8i" for the elements of an array of records
    std::string size;
    std::string type; ///< such as "u32", "f32[3]", "text"
    std::string field;
    std::string unit;
};

using Layout = std::vector<Layout_Row>;

namespace layout
{

/// A place in a payload: where it is, and what the names of the values there start with.
struct Place
{
    std::size_t offset;
    std::string stride; ///< " + 8i" within an array of records
    std::string prefix;
    std::string unit;
};

/// A name's place below another.
std::string joined(const std::string& prefix, const char* name);

template <class T>
std::string type_name()
{
    if constexpr (std::is_array_v<T>)
        return type_name<std::remove_extent_t<T>>() + '[' + std::to_string(std::extent_v<T>) + ']';
    else if constexpr (std::is_floating_point_v<T>)
        return 'f' + std::to_string(8 * sizeof(T));
    else if constexpr (std::is_same_v<T, char>)
        return "char";
    else
        return (std::is_signed_v<T> ? 'i' : 'u') + std::to_string(8 * sizeof(T));
}

template <class List>
void add_list(Layout& rows, const List& list_of_fields, Place place);

template <class T>
void add(Layout& rows, const Place& place)
{
    const auto row = [&](std::size_t size, const std::string& type) {
        rows.push_back(
            {std::to_string(place.offset) + place.stride, std::to_string(size), type, place.prefix, place.unit});
    };
    if constexpr (Record<T>) {
        T record{};
        add_list(rows, fields(record), place);
    } else if constexpr (requires { std::tuple_size<T>::value; }) {
        row(wire_size<T>, "bytes");
    } else if constexpr (std::is_array_v<T> && Record<std::remove_extent_t<T>>) {
        using Element = std::remove_extent_t<T>;
        add<Element>(rows, {place.offset, " + " + std::to_string(wire_size<Element>) + "i",
                            place.prefix + "[i < " + std::to_string(std::extent_v<T>) + "]", place.unit});
    } else {
        row(wire_size<T>, type_name<T>());
    }
}

template <class F>
void add_field(Layout& rows, const F& field, const Place& place)
{
    const Place below{place.offset, place.stride, joined(place.prefix, field.name), field.unit};
    using Value = std::remove_const_t<typename F::Value>;
    if constexpr (std::same_as<typename F::Style, Single_Byte>)
        add<unsigned char>(rows, below);
    else if constexpr (std::same_as<typename F::Style, Text>)
        add<char[field_wire_size<F>()]>(rows, below);
    else
        add<Value>(rows, below);
}

template <class List>
void add_list(Layout& rows, const List& list_of_fields, Place place)
{
    for_each_field(list_of_fields, [&](const auto& field) {
        using F = std::remove_cvref_t<decltype(field)>;
        if constexpr (requires { field.list; })
            add_list(rows, field.list, {place.offset, place.stride, joined(place.prefix, field.name), ""});
        else if constexpr (requires { field.value; })
            add_field(rows, field, place);
        else
            rows.push_back(
                {std::to_string(place.offset) + place.stride, std::to_string(F::size), "bytes", "(no field)", ""});
        place.offset += field_wire_size<F>();
    });
}

template <class... Value>
Layout of(std::tuple<Value...>*, const std::array<Value_Name, sizeof...(Value)>& names)
{
    Layout rows;
    std::size_t offset = 0;
    const Value_Name* name = names.data();
    [[maybe_unused]] const auto next = [&]<class T>(T*) {
        add<T>(rows, {offset, "", name->name, name->unit});
        offset += wire_size<T>;
        ++name;
    };
    (next(static_cast<Value*>(nullptr)), ...);
    return rows;
}

}

template <class Result, class... Argument>
Layout request_layout(const Command<Result(Argument...)>& command)
{
    return layout::of(static_cast<typename Command<Result(Argument...)>::Arguments*>(nullptr), command.argument_names);
}

template <class Result, class... Argument>
Layout response_layout(const Command<Result(Argument...)>& command)
{
    return layout::of(static_cast<typename Command<Result(Argument...)>::Results*>(nullptr), command.result_names);
}

}
