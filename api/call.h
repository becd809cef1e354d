#pragma once

#include "../device/failure.h"
#include "../protocol/wire.h"
#include "VELM_ZAVRA_API_Exception.h"

#include <tuple>
#include <type_traits>
#include <utility>

/// What an API operation is made of: command() and query() convert the arguments, call one device method, convert its
/// result and give its failure the operation's own words.
///
///     void VELM_ZAVRA_API::Set_Gyro_Parameters(VELM_ZAVRA_API_GYROSCOPES gyro, VELM_ZAVRA_API_GYROSCOPE_PARAMETERS
///     parameters)
///     {
///         command(*device_, "set gyro parameters", &ZAVRA_100::Set_Gyro_Parameters, gyro, parameters);
///     }
///
///     VELM_ZAVRA_API_GYROSCOPE_PARAMETERS VELM_ZAVRA_API::Get_Gyro_Parameters(VELM_ZAVRA_API_GYROSCOPES gyro)
///     {
///         return query<VELM_ZAVRA_API_GYROSCOPE_PARAMETERS>(*device_, "get gyro parameters",
///                                                           &ZAVRA_100::Get_Gyro_Parameters, gyro);
///     }
namespace zavra
{

/// Records convert field by field by name, where their field lists are one; enumerations are cut to the device's
/// integer and widened from it; everything else passes unchanged.
template <class To, class From>
[[gnu::flatten]] To convert(const From& from)
{
    if constexpr (std::is_same_v<To, From>) {
        return from;
    } else if constexpr (std::is_enum_v<From> || std::is_enum_v<To>) {
        return static_cast<To>(from);
    } else {
        To to{};
        copy_value(from, to);
        return to;
    }
}

/// Runs an operation; the device layer's failure leaves as the API's.
template <class Action>
auto operation(const char* action_words, Action&& action)
{
    return translate<ZAVRA_100_Exception, VELM_ZAVRA_API_Exception>(action_words, action);
}

/// Calls a device method that has no result.
template <class... Parameter, class... Argument>
void command(ZAVRA_100& device, const char* action_words, void (ZAVRA_100::*method)(Parameter...),
             const Argument&... arguments)
{
    operation(action_words, [&] { (device.*method)(convert<Parameter>(arguments)...); });
}

/// Calls a device method whose last parameter points to its result.
template <class Result, class... Parameter, class... Argument>
Result query(ZAVRA_100& device, const char* action_words, void (ZAVRA_100::*method)(Parameter...),
             const Argument&... arguments)
{
    using Parameters = std::tuple<Parameter...>;
    using Value = std::remove_pointer_t<std::tuple_element_t<sizeof...(Parameter) - 1, Parameters>>;
    return operation(action_words, [&] {
        Value value{};
        [&]<std::size_t... i>(std::index_sequence<i...>)
        {
            (device.*method)(convert<std::tuple_element_t<i, Parameters>>(arguments)..., &value);
        }
        (std::index_sequence_for<Argument...>{});
        return convert<Result>(value);
    });
}

}
