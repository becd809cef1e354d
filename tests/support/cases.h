#pragma once

#include "doubles.h"

#include <VELM_ZAVRA_API.h>

/// Tables of operations: what each must put on the bus, print and give back, and the words of its failure in both
/// layers.
namespace zavra::test
{

using Api = VELM_ZAVRA_API;
using Api_Failure = VELM_ZAVRA_API_Exception;

template <class Object>
using Call = std::function<void(Object&, const Payload& response)>;

/// An operation and, where it has a record, the device layer's own method for it, whose record is another one.
struct Calls
{
    Call<Api> api;
    Call<ZAVRA_100> device = {};
};

struct Case
{
    Calls call;
    std::string words;                   ///< "get epoch time" of "Failed to get epoch time ("
    std::string device_words;            ///< "Get Epoch Time"; empty when that is all, each word capitalised
    std::string request;                 ///< header and payload, without the CRC
    Payload response;                    ///< empty for a command without one
    Lines printed_before, printed_after; ///< a line that ends in a star goes on in any way
};

inline Case set(Calls call, std::string words, std::string device_words, std::string request, Lines printed = {})
{
    return {call, words, device_words, request, {}, printed, {}};
}

inline Case set(Calls call, std::string words, std::string request, Lines printed = {})
{
    return set(call, words, "", request, printed);
}

/// A command that prints only when it was sent.
inline Case set_then_print(Calls call, std::string words, std::string device_words, std::string request, Lines printed)
{
    return {call, words, device_words, request, {}, {}, printed};
}

inline Case get(Calls call, std::string words, std::string device_words, std::string request, Payload response,
                Lines printed = {})
{
    return {call, words, device_words, request, response, {}, printed};
}

inline Case get(Calls call, std::string words, std::string request, Payload response, Lines printed = {})
{
    return get(call, words, "", request, response, printed);
}

template <class T, class Argument>
T as(const Argument& argument, Layer layer)
{
    if constexpr (std::is_same_v<Argument, Payload>)
        return argument.template record<T>(layer);
    else
        return static_cast<T>(argument);
}

/// Calls a method of either layer; a Payload as argument gives the record that holds it, and the response gives the
/// expected result.
template <class Object, class Result, class... Parameter, class... Argument>
Call<Object> call_in(Layer layer, Result (Object::*method)(Parameter...), const Argument&... arguments)
{
    using Parameters = std::tuple<Parameter...>;
    return [=](Object& object, const Payload& response) {
        const auto apply = [&]<std::size_t... i>(std::index_sequence<i...>, auto*... result)
        {
            return (object.*method)(as<std::tuple_element_t<i, Parameters>>(arguments, layer)..., result...);
        };
        constexpr std::index_sequence_for<Argument...> indices;
        if constexpr (sizeof...(Parameter) > sizeof...(Argument)) {
            std::remove_pointer_t<std::tuple_element_t<sizeof...(Argument), Parameters>> result;
            apply(indices, &result);
            response.expect(layer, result);
        } else if constexpr (std::is_void_v<Result>) {
            apply(indices);
        } else {
            response.expect(layer, apply(indices));
        }
    };
}

template <class Result, class... Parameter, class... Argument>
Calls call(Result (Api::*method)(Parameter...), const Argument&... arguments)
{
    return {call_in(Layer::api, method, arguments...)};
}

template <class Result, class... Parameter, class... Device_Parameter, class... Argument>
Calls call(Result (Api::*method)(Parameter...), void (ZAVRA_100::*device_method)(Device_Parameter...),
           const Argument&... arguments)
{
    return {call_in(Layer::api, method, arguments...), call_in(Layer::device, device_method, arguments...)};
}

/// A method that is called the same in both layers.
#define BOTH(method) &VELM_ZAVRA_API::method, &ZAVRA_100::method

struct Operation_Test : Device_Test
{
    /// Runs every case on a bus that works and on one that does not.
    void check(const std::vector<Case>& cases);

    /// Each is refused by the device layer before anything is sent or printed.
    void check_refused(const std::vector<Case>& cases, const std::string& reason);

    static std::unique_ptr<Api> quietly_constructed_api();

    const std::unique_ptr<Api> constructed = quietly_constructed_api();
    Api& api = *constructed;
};

Lines operator+(Lines a, const Lines& b);
inline std::string operator+(const std::string& header, const Payload& payload)
{
    return header + payload.hexadecimal();
}

/// The lines of a title, unless it is empty, and of fields whose values count up from `first`. Of the labels, "V.{XY}"
/// stands for "V.X V.Y", "A=5" has a value of its own, "A:x" is text, "A#" is hexadecimal, and "A*" prints the byte
/// itself.
Lines dump(const std::string& title, const std::string& prefix, const std::string& labels, unsigned int first = 1);

/// Parameter sets of the sensors in which each number is its place on the wire, counted from 1.
inline const Payload gyro_payload =
    Payload().u8(1).f32_range(2, 7).quaternion(8).u64(12).u8(13).f32_range(14, 25).u32(26).u8(27).u32(28).f32(29);
inline const Payload magnetometer_payload =
    Payload().f32_range(1, 6).quaternion(7).u64(11).u8(12).f32_range(13, 24).u8(25).u32(26).f32(27).u8(28).f32_range(
        29, 30);

}
