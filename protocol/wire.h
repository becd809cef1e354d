#pragma once

#include "codec.h"
#include "field.h"

#include <algorithm>
#include <array>

/// Values to bytes and back, following the field lists. Values are packed without gaps.
namespace zavra
{

template <std::size_t size>
using Bytes = std::array<unsigned char, size>;

template <class T>
struct Wire_Size;

template <class F>
consteval std::size_t field_wire_size()
{
    if constexpr (std::same_as<typename F::Style, Skipped>)
        return F::size;
    else if constexpr (requires(F f) { f.list; })
        return Wire_Size<decltype(F::list)>::value;
    else if constexpr (std::same_as<typename F::Style, Single_Byte>)
        return 1;
    else if constexpr (std::same_as<typename F::Style, Text>)
        return std::extent_v<typename F::Value> - 1;
    else
        return Wire_Size<std::remove_const_t<typename F::Value>>::value;
}

template <class T>
requires std::is_arithmetic_v<T>
struct Wire_Size<T> : std::integral_constant<std::size_t, sizeof(T)>
{
};

template <class T, std::size_t count>
struct Wire_Size<T[count]> : std::integral_constant<std::size_t, count * Wire_Size<T>::value>
{
};

template <std::size_t size>
struct Wire_Size<Bytes<size>> : std::integral_constant<std::size_t, size>
{
};

template <Record R>
struct Wire_Size<R> : Wire_Size<decltype(fields(std::declval<R&>()))>
{
};

template <class... F>
struct Wire_Size<List<F...>> : std::integral_constant<std::size_t, (std::size_t{0} + ... + field_wire_size<F>())>
{
};

/// Size on the wire of a value, record or array.
template <class T>
inline constexpr std::size_t wire_size = Wire_Size<T>::value;

/// Writes values one behind the other.
class Packer
{
public:
    explicit constexpr Packer(unsigned char* destination) : next_(destination) {}

    template <class T>
    constexpr void operator()(const T& value)
    {
        if constexpr (std::is_arithmetic_v<T>) {
            put(next_, value);
            next_ += sizeof(T);
        } else if constexpr (requires { std::tuple_size<T>::value; } || std::is_array_v<T>) {
            for (const auto& element : value)
                (*this)(element);
        } else {
            list(fields(value));
        }
    }

    template <class Fields>
    constexpr void list(const Fields& list_of_fields)
    {
        for_each_field(list_of_fields, [this](const auto& field) { this->field(field); });
    }

private:
    template <class F>
    constexpr void field(const F& field)
    {
        if constexpr (std::same_as<typename F::Style, Skipped>)
            next_ = std::fill_n(next_, F::size, static_cast<unsigned char>(0));
        else if constexpr (requires { field.list; })
            list(field.list);
        else if constexpr (std::same_as<typename F::Style, Single_Byte>)
            *next_++ = static_cast<unsigned char>(field.value);
        else if constexpr (std::same_as<typename F::Style, Text>)
            next_ = std::copy_n(field.value, field_wire_size<F>(), next_);
        else
            (*this)(field.value);
    }

    unsigned char* next_;
};

/// Reads what a Packer wrote.
class Unpacker
{
public:
    explicit constexpr Unpacker(const unsigned char* source) : next_(source) {}

    template <class T>
    constexpr void operator()(T& value)
    {
        if constexpr (std::is_arithmetic_v<T>) {
            value = get<T>(next_);
            next_ += sizeof(T);
        } else if constexpr (requires { std::tuple_size<T>::value; } || std::is_array_v<T>) {
            for (auto& element : value)
                (*this)(element);
        } else {
            list(fields(value));
        }
    }

    template <class Fields>
    constexpr void list(const Fields& list_of_fields)
    {
        for_each_field(list_of_fields, [this](const auto& field) { this->field(field); });
    }

private:
    template <class F>
    constexpr void field(const F& field)
    {
        if constexpr (std::same_as<typename F::Style, Skipped>) {
            next_ += F::size;
        } else if constexpr (requires { field.list; }) {
            list(field.list);
        } else if constexpr (std::same_as<typename F::Style, Single_Byte>) {
            field.value = static_cast<typename F::Value>(*next_++);
        } else if constexpr (std::same_as<typename F::Style, Text>) {
            std::copy_n(next_, field_wire_size<F>(), field.value);
            field.value[field_wire_size<F>()] = '\0';
            next_ += field_wire_size<F>();
        } else {
            (*this)(field.value);
        }
    }

    const unsigned char* next_;
};

template <class From, class To>
constexpr void copy_value(const From& from, To& to);

template <std::size_t... i, class... F, class... G>
constexpr void copy_list(const Flat_List<std::index_sequence<i...>, F...>& from,
                         const Flat_List<std::index_sequence<i...>, G...>& to)
{
    const auto copy_field = [](const auto& source, const auto& target) {
        if constexpr (requires { source.list; })
            copy_list(source.list, target.list);
        else if constexpr (requires { source.value; })
            copy_value(source.value, target.value);
    };
    (copy_field(from.List_Entry<i, F>::field, to.List_Entry<i, G>::field), ...);
}

/// Copies a value. Between two records it goes field by field and name by name, nested records included: the field list
/// of the one that has one is applied to both.
template <class From, class To>
constexpr void copy_value(const From& from, To& to)
{
    if constexpr (!std::same_as<From, To>) {
        constexpr auto list = [] {
            if constexpr (Record<From>)
                return field_list<From>;
            else
                return field_list<To>;
        }();
        copy_list(list(from), list(to));
    } else if constexpr (std::is_array_v<To>) {
        std::copy(std::begin(from), std::end(from), std::begin(to));
    } else {
        to = from;
    }
}

}
