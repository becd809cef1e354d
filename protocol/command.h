#pragma once

#include "frame.h"
#include "wire.h"

#include <tuple>

namespace zavra
{

/// Name of a value that travels outside a record, its unit, and the base in which people read it.
struct Value_Name
{
    constexpr Value_Name(const char* value_name = "", const char* value_unit = "", unsigned char people_read_it_in = 10)
        : name(value_name),
          unit(value_unit),
          base(people_read_it_in)
    {
    }

    const char* name;
    const char* unit;
    unsigned char base;
};

/// One command of the unit, written like the signature of a function: what is asked and, unless it is void, what comes
/// back (several values as a std::tuple).
///
///     inline constexpr Command<void(unsigned char, ZAVRA_100_Vector3_float)> set_gyro_values{
///         0xA101, "Set_Gyro_Values", "Set Gyro Values", {"index", "angular_velocity"}};
template <class Signature>
struct Command;

template <class T>
struct Result_Values
{
    using Tuple = std::tuple<T>;
};

template <>
struct Result_Values<void>
{
    using Tuple = std::tuple<>;
};

template <class... T>
struct Result_Values<std::tuple<T...>>
{
    using Tuple = std::tuple<T...>;
};

template <class... Value>
consteval std::size_t total_wire_size(std::tuple<Value...>*)
{
    return (std::size_t{0} + ... + wire_size<Value>);
}

template <class Command_Result, class... Argument>
struct Command<Command_Result(Argument...)>
{
    using Result = Command_Result;
    using Arguments = std::tuple<Argument...>;
    using Results = typename Result_Values<Result>::Tuple;

    static constexpr std::size_t request_size = total_wire_size(static_cast<Arguments*>(nullptr));
    static constexpr std::size_t response_size = total_wire_size(static_cast<Results*>(nullptr));
    static constexpr bool has_response = !std::is_void_v<Result>;

    using Argument_Names = std::array<Value_Name, sizeof...(Argument)>;
    using Result_Names = std::array<Value_Name, std::tuple_size_v<Results>>;

    unsigned short identifier;
    const char* method; ///< the device method that sends it
    const char* action; ///< the action words of its failure message
    Argument_Names argument_names = {};
    Result_Names result_names = {};
};

/// Packs values into their places in a payload.
template <class... Value>
[[gnu::flatten]] constexpr void pack(unsigned char* payload, const Value&... each)
{
    Packer packer{payload};
    (packer(each), ...);
}

template <class T>
inline constexpr bool is_tuple = false;

template <class... T>
inline constexpr bool is_tuple<std::tuple<T...>> = true;

/// The value of a payload, or the values of one as a tuple.
template <class Result>
[[gnu::flatten]] constexpr Result unpack(const unsigned char* payload)
{
    Unpacker unpacker{payload};
    Result result{};
    if constexpr (is_tuple<Result>)
        std::apply([&](auto&... value) { (unpacker(value), ...); }, result);
    else
        unpacker(result);
    return result;
}

}
