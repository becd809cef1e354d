#pragma once

#include "leaf.h"

#include <ZAVRA_100.h>

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

/// The methods of the device layer by name. Everything about a method follows from its signature and its command's
/// descriptor.
namespace zavra::tools
{

struct Method
{
    std::string name;
    unsigned short identifier; ///< 0 for a method that is not one command
    Leaves arguments;
    Leaves results;
    std::function<Json(ZAVRA_100& device, const Json& arguments)> call;
};

/// All of them.
std::span<const Method> methods();

/// Upper and lower case do not matter. Null when there is no such method.
const Method* find_method(std::string_view name);

/// @throws Usage_Error  when there is no such method; names similar ones
const Method& method_named(std::string_view name);

namespace detail
{

template <class Parameter, class T>
void read_argument(const Json& arguments, const Value_Name& name, T& value)
{
    if constexpr (std::is_pointer_v<Parameter>)
        return;
    else if constexpr (std::same_as<T, Octets>)
        value = json::to_bytes(json::member(arguments, name.name, ""), name.name);
    else
        from_json(json::member(arguments, name.name, ""), value, name.name);
}

template <class Parameter, class T>
decltype(auto) pass(T& value)
{
    if constexpr (std::is_pointer_v<Parameter>)
        return &value;
    else
        return (value);
}

template <class Parameter, class T>
void write_result(Json& results, const Value_Name& name, const T& value)
{
    if constexpr (std::is_pointer_v<Parameter>) {
        Json& place = *name.name == '\0' ? results : results[name.name];
        if constexpr (std::same_as<T, Octets>)
            place = json::hexadecimal(value);
        else
            place = to_json(value);
    }
}

template <class Description, class Call, class... Parameter>
Method make_method(const Description& command, Call call, std::tuple<Parameter...>*)
{
    constexpr std::size_t results = (std::size_t{0} + ... + (std::is_pointer_v<Parameter> ? 1 : 0));
    static_assert(std::tuple_size_v<typename Description::Argument_Names> == sizeof...(Parameter) - results);
    static_assert(std::tuple_size_v<typename Description::Result_Names> == results);

    const Value_Name* argument = command.argument_names.data();
    const Value_Name* result = command.result_names.data();
    const std::array<Value_Name, sizeof...(Parameter)> names{
        *(std::is_pointer_v<Parameter> ? result++ : argument++)...};

    Method method{command.method, command.identifier, {}, {}, {}};
    const Value_Name* name = names.data();
    (add_leaves<std::remove_pointer_t<Parameter>>(std::is_pointer_v<Parameter> ? method.results : method.arguments,
                                                  *name++),
     ...);

    method.call = [call, names](ZAVRA_100& device, const Json& arguments) {
        std::tuple<std::remove_pointer_t<Parameter>...> values{};
        Json answer = Json::object();
        [&]<std::size_t... i>(std::index_sequence<i...>)
        {
            (read_argument<Parameter>(arguments, names[i], std::get<i>(values)), ...);
            call(device, pass<Parameter>(std::get<i>(values))...);
            (write_result<Parameter>(answer, names[i], std::get<i>(values)), ...);
        }
        (std::index_sequence_for<Parameter...>{});
        return answer;
    };
    return method;
}

}

/// A method that is one command: parameters that are pointers are its results.
template <class Description, class... Parameter>
Method method(const Description& command, void (ZAVRA_100::*member)(Parameter...))
{
    return detail::make_method(
        command, [member](ZAVRA_100& device, const Parameter&... parameter) { (device.*member)(parameter...); },
        static_cast<std::tuple<Parameter...>*>(nullptr));
}

/// The same with a function in between, for a method whose parameters do not speak for themselves.
template <class Description, class... Parameter>
Method method(const Description& command, void (*function)(ZAVRA_100&, Parameter...))
{
    return detail::make_method(command, function, static_cast<std::tuple<Parameter...>*>(nullptr));
}

}
