#pragma once

#include "command.h"

#include <nlohmann/json.hpp>

#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Records and commands as JSON, for the simulated unit's journal and scenarios and for the bench tool. A field's key
/// is its name in lower case; bytes that belong to no field do not appear. Not part of the driver library.
namespace zavra
{

/// Keeps the fields in wire order.
using Json = nlohmann::ordered_json;

namespace json
{

std::string key(const char* name);
std::string hexadecimal(std::span<const unsigned char> bytes);

/// The number as people write it: 0.1 and not 0.10000000149011612. What JSON has no number for is "nan", "inf", "-inf".
Json number(float value);
Json number(double value);

/// Bytes up to the first zero; bytes above 0x7F become the characters U+0080 to U+00FF.
Json text(const char* bytes, std::size_t size);

/// The reverse of the above. All of them throw std::invalid_argument with `where` in the message.
double to_number(const Json& value, const std::string& where);
std::string to_text(const Json& value, std::size_t max_size, const std::string& where);
std::vector<unsigned char> to_bytes(const Json& value, const std::string& where);

[[noreturn]] void fail(const std::string& where, const std::string& problem);

/// Fails unless the value is an array of that many elements.
void expect_array(const Json& value, std::size_t size, const std::string& where);
/// Fails unless the value is an object.
void expect_object(const Json& value, const std::string& where);
/// The member of that name; fails where there is none.
const Json& member(const Json& object, const std::string& name, const std::string& where);

template <class T>
inline constexpr bool is_bytes = false;

template <std::size_t size>
inline constexpr bool is_bytes<Bytes<size>> = true;

template <class T>
T to_integer(const Json& value, const std::string& where)
{
    using Limits = std::numeric_limits<T>;
    const bool negative = value.is_number_integer() && !value.is_number_unsigned() && value.get<long long>() < 0;
    const bool fits = negative ? value.get<long long>() >= static_cast<long long>(Limits::min())
                               : value.is_number_integer() &&
                                     value.get<unsigned long long>() <= static_cast<unsigned long long>(Limits::max());
    if (!fits)
        fail(where, "expected a whole number up to " + std::to_string(Limits::max()) + ", got " + value.dump());
    return value.get<T>();
}

template <class List>
Json object(const List& list_of_fields);
template <class List>
void assign_fields(const Json& object, const List& list_of_fields, const std::string& where);

}

/// A value, array or record.
template <class T>
Json to_json(const T& value)
{
    if constexpr (std::is_enum_v<T>) {
        return static_cast<std::underlying_type_t<T>>(value);
    } else if constexpr (std::is_floating_point_v<T>) {
        return json::number(value);
    } else if constexpr (std::is_arithmetic_v<T>) {
        return value;
    } else if constexpr (json::is_bytes<T>) {
        return json::hexadecimal(value);
    } else if constexpr (std::same_as<std::remove_extent_t<T>, char>) {
        return json::text(value, std::extent_v<T>);
    } else if constexpr (std::is_array_v<T>) {
        Json array = Json::array();
        for (const auto& element : value)
            array.push_back(to_json(element));
        return array;
    } else {
        return json::object(fields(value));
    }
}

/// The reverse. Every field must be there and no other, each in its range.
/// @param where  what the message of a failure starts with
/// @throws std::invalid_argument  naming the field; the value may then be partly assigned
template <class T>
void from_json(const Json& source, T& value, const std::string& where = "")
{
    if constexpr (std::is_enum_v<T>) {
        value = static_cast<T>(json::to_integer<std::underlying_type_t<T>>(source, where));
    } else if constexpr (std::is_floating_point_v<T>) {
        value = static_cast<T>(json::to_number(source, where));
    } else if constexpr (std::is_arithmetic_v<T>) {
        value = json::to_integer<T>(source, where);
    } else if constexpr (json::is_bytes<T>) {
        const auto bytes = json::to_bytes(source, where);
        if (bytes.size() != value.size())
            json::fail(where, "expected " + std::to_string(value.size()) + " bytes");
        std::copy(bytes.begin(), bytes.end(), value.begin());
    } else if constexpr (std::same_as<std::remove_extent_t<T>, char>) {
        const std::string text = json::to_text(source, std::extent_v<T> - 1, where);
        std::fill(text.copy(value, text.size()) + value, std::end(value), '\0');
    } else if constexpr (std::is_array_v<T>) {
        json::expect_array(source, std::extent_v<T>, where);
        for (std::size_t i = 0; i < std::extent_v<T>; ++i)
            from_json(source[i], value[i], where + '[' + std::to_string(i) + ']');
    } else {
        json::assign_fields(source, fields(value), where);
    }
}

namespace json
{

template <class List>
Json object(const List& list_of_fields)
{
    Json object = Json::object();
    for_each_field(list_of_fields, [&](const auto& field) {
        if constexpr (requires { field.list; })
            object[key(field.name)] = json::object(field.list);
        else if constexpr (std::same_as<typename std::remove_cvref_t<decltype(field)>::Style, Single_Byte>)
            object[key(field.name)] = static_cast<unsigned long long>(field.value);
        else if constexpr (requires { field.value; })
            object[key(field.name)] = to_json(field.value);
    });
    return object;
}

template <class List>
void assign_fields(const Json& object, const List& list_of_fields, const std::string& where)
{
    expect_object(object, where);
    std::size_t assigned = 0;
    for_each_field(list_of_fields, [&](const auto& field) {
        using F = std::remove_cvref_t<decltype(field)>;
        if constexpr (requires { field.name; }) {
            const std::string name = key(field.name);
            const std::string inside = where.empty() ? name : where + '.' + name;
            const Json& source = member(object, name, where);
            ++assigned;
            if constexpr (requires { field.list; })
                assign_fields(source, field.list, inside);
            else if constexpr (std::same_as<typename F::Style, Single_Byte>)
                field.value = static_cast<typename F::Value>(to_integer<unsigned char>(source, inside));
            else
                from_json(source, field.value, inside);
        }
    });
    if (object.size() != assigned)
        fail(where, "has members that are none of its fields: " + object.dump());
}

/// Values that travel one behind the other, by name. A single record without a name lies open.
template <class... Value>
Json values(const std::tuple<Value...>& tuple, const std::array<Value_Name, sizeof...(Value)>& names)
{
    Json object = Json::object();
    const Value_Name* name = names.data();
    const auto add = [&](const auto& value) {
        if constexpr (sizeof...(Value) == 1 && Record<std::remove_cvref_t<decltype(value)>>)
            if (*name->name == '\0') {
                object = to_json(value);
                return;
            }
        object[*name->name == '\0' ? "value_" + std::to_string(name - names.data()) : std::string(name->name)] =
            to_json(value);
        ++name;
    };
    std::apply([&](const auto&... value) { (add(value), ...); }, tuple);
    return object;
}

template <class Tuple, class Names>
Json unpacked(std::span<const unsigned char> payload, std::size_t size, const Names& names, const char* what)
{
    if (payload.size() != size)
        fail(what, "expected " + std::to_string(size) + " bytes of payload, got " + std::to_string(payload.size()));
    return values(unpack<Tuple>(payload.data()), names);
}

}

/// The arguments of a request, decoded from its payload.
/// @throws std::invalid_argument  when the payload has another size
template <class Result, class... Argument>
Json decode_request(const Command<Result(Argument...)>& command, std::span<const unsigned char> payload)
{
    using This = Command<Result(Argument...)>;
    return json::unpacked<typename This::Arguments>(payload, This::request_size, command.argument_names,
                                                    command.method);
}

/// The results of a response, decoded from its payload; an empty object for a command without a response.
/// @throws std::invalid_argument  when the payload has another size
template <class Result, class... Argument>
Json decode_response(const Command<Result(Argument...)>& command, std::span<const unsigned char> payload)
{
    using This = Command<Result(Argument...)>;
    return json::unpacked<typename This::Results>(payload, This::response_size, command.result_names, command.method);
}

/// The payload of a request made of its arguments by name: the reverse of decode_request().
/// @throws std::invalid_argument  naming the argument or field that is missing, unknown or out of range
template <class Result, class... Argument>
std::vector<unsigned char> encode_request(const Command<Result(Argument...)>& command, const Json& arguments)
{
    using This = Command<Result(Argument...)>;
    json::expect_object(arguments, command.method);
    typename This::Arguments tuple{};
    const Value_Name* name = command.argument_names.data();
    const auto assign = [&](auto& value) {
        from_json(json::member(arguments, name->name, command.method), value,
                  std::string(command.method) + '.' + name->name);
        ++name;
    };
    std::apply([&](auto&... value) { (assign(value), ...); }, tuple);
    if (arguments.size() != sizeof...(Argument))
        json::fail(command.method, "has arguments that it does not know: " + arguments.dump());
    std::vector<unsigned char> payload(This::request_size);
    std::apply([&](const auto&... value) { pack(payload.data(), value...); }, tuple);
    return payload;
}

/// A command of protocol::commands without its types.
struct Described_Command
{
    unsigned short identifier;
    const char* method;
    const char* action;
    std::size_t request_size;
    bool any_request_size;     ///< the bytes of a native star tracker command, as many as there are
    std::size_t response_size; ///< 0 for a command without a response
    Json (*decode_request)(std::span<const unsigned char> payload);
    Json (*decode_response)(std::span<const unsigned char> payload);
    std::vector<unsigned char> (*encode_request)(const Json& arguments);
};

/// Every command of the unit.
std::span<const Described_Command> described_commands();

/// The command of a device method's name, or null.
const Described_Command* find_command(std::string_view method);

/// The commands that a request may be. There may be several: some share an identifier and are told apart by the length
/// of the request, some only by that of the response.
std::vector<const Described_Command*> find_requests(unsigned short identifier, std::size_t request_size);

}
