#pragma once

#include "method.h"

#include "../protocol/startracker_orbit.h"

#include <type_traits>
#include <utility>

/// What a method's signature says about it: parameters that are pointers are its results. What is instantiated here
/// carries values to bytes and back and nothing else.
namespace zavra::tools
{

/// The arguments of one call while they are taken from their bytes.
struct Argument_Bytes
{
    const unsigned char* next;
    std::size_t spare; ///< for bytes of any number: what the other arguments leave

    template <class T>
    T take()
    {
        const unsigned char* const first = next;
        if constexpr (std::same_as<T, Octets>) {
            next += spare;
            return Octets(first, next);
        } else {
            next += wire_size<T>;
            return unpack<T>(first);
        }
    }
};

/// A parameter that is an argument.
template <class T>
struct Place
{
    static constexpr bool is_result = false;
    T value;

    explicit Place(Argument_Bytes& arguments) : value(arguments.take<T>()) {}
    const T& pass() { return value; }
    void give(Octets&) const {}
};

/// A parameter that is a result.
template <class T>
struct Place<T*>
{
    static constexpr bool is_result = true;
    T value{};

    explicit Place(Argument_Bytes&) {}
    T* pass() { return &value; }

    void give(Octets& results) const
    {
        if constexpr (std::same_as<T, Octets>) {
            results = value;
        } else {
            const std::size_t size = results.size();
            results.resize(size + wire_size<T>);
            pack(results.data() + size, value);
        }
    }
};

/// The fields of a parameter, or the value; its name comes later.
template <class T>
inline constexpr Item_List parameter_items = items_of<T>();

// Bytes of any number are known to the catalogue by the star tracker's native commands.
template <>
inline constexpr Item_List parameter_items<Octets> = items_of<Native_Bytes>();

/// Puts together a method whose types are dealt with.
class Method_Builder
{
public:
    Method_Builder(const char* name, unsigned short identifier, const Value_Name* arguments, const Value_Name* results)
        : method{name, identifier, {}, {}, {}, {}, {}},
          argument_(arguments),
          result_(results)
    {
    }

    void add(const Item_List& items, bool is_record, bool is_result);
    Method finish();

    Method method; // as far as it is

private:
    const Value_Name* argument_;
    const Value_Name* result_;
};

template <class Call, class... Parameter, std::size_t... i>
Octets transact(const Call& call, ZAVRA_100& device, const Octets& arguments, std::size_t fixed,
                Flat_List<std::index_sequence<i...>, Place<Parameter>...>*)
{
    struct Places : List_Entry<i, Place<Parameter>>...
    {
        explicit Places([[maybe_unused]] Argument_Bytes in) : List_Entry<i, Place<Parameter>>{Place<Parameter>(in)}...
        {
        }
    } places(Argument_Bytes{arguments.data(), arguments.size() - fixed});
    call(device, places.List_Entry<i, Place<Parameter>>::field.pass()...);
    Octets results;
    (places.List_Entry<i, Place<Parameter>>::field.give(results), ...);
    return results;
}

template <class Description, class Call, class... Parameter>
Method make_method(const Description& command, Call call, List<Place<Parameter>...>* places)
{
    constexpr std::size_t results = (std::size_t{0} + ... + (Place<Parameter>::is_result ? 1 : 0));
    static_assert(std::tuple_size_v<typename Description::Argument_Names> == sizeof...(Parameter) - results);
    static_assert(std::tuple_size_v<typename Description::Result_Names> == results);

    Method_Builder builder(command.method, command.identifier, command.argument_names.data(),
                           command.result_names.data());
    (builder.add(parameter_items<std::remove_pointer_t<Parameter>>, Record<std::remove_pointer_t<Parameter>>,
                 Place<Parameter>::is_result),
     ...);
    const std::size_t fixed = wire_bytes(builder.method.argument_items);
    builder.method.transact = [call, fixed, places](ZAVRA_100& device, const Octets& arguments) {
        return transact(call, device, arguments, fixed, places);
    };
    return builder.finish();
}

/// A method that is one command.
template <class Description, class... Parameter>
Method method(const Description& command, void (ZAVRA_100::*member)(Parameter...))
{
    return make_method(
        command, [member](ZAVRA_100& device, const Parameter&... parameter) { (device.*member)(parameter...); },
        static_cast<List<Place<Parameter>...>*>(nullptr));
}

/// The same with a function in between, for a method whose parameters do not speak for themselves.
template <class Description, class... Parameter>
Method method(const Description& command, void (*function)(ZAVRA_100&, Parameter...))
{
    return make_method(command, function, static_cast<List<Place<Parameter>...>*>(nullptr));
}

}
