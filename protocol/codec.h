#pragma once

#include <bit>
#include <cstddef>
#include <type_traits>
#include <utility>

/// Byte order of the unit's protocol, decided here and nowhere else.
namespace zavra
{

template <std::size_t size>
using Word = std::conditional_t<
    size == 1, unsigned char,
    std::conditional_t<size == 2, unsigned short, std::conditional_t<size == 4, unsigned int, unsigned long long>>>;

/// Calls an action with a value's byte numbers as constants; a loop over them would not become one instruction in a
/// build for size.
template <class T, class Action>
constexpr decltype(auto) with_bytes_of(Action action)
{
    return [&]<std::size_t... i>(std::index_sequence<i...>)->decltype(auto)
    {
        return action(std::integral_constant<std::size_t, i>{}...);
    }
    (std::make_index_sequence<sizeof(T)>{});
}

/// Writes an integer or floating-point value most significant byte first; floating-point bit patterns pass unchanged.
template <class T>
requires std::is_arithmetic_v<T>
constexpr void put(unsigned char* destination, T value)
{
    const auto word = std::bit_cast<Word<sizeof(T)>>(value);
    with_bytes_of<T>(
        [&](auto... i) { ((destination[i] = static_cast<unsigned char>(word >> (8 * (sizeof(T) - 1 - i)))), ...); });
}

/// Reads what put() wrote.
template <class T>
requires std::is_arithmetic_v<T>
constexpr T get(const unsigned char* source)
{
    const auto word = with_bytes_of<T>([&](auto... i) {
        return static_cast<Word<sizeof(T)>>((... | (Word<sizeof(T)>{source[i]} << (8 * (sizeof(T) - 1 - i)))));
    });
    return std::bit_cast<T>(word);
}

/// Little-endian values: the payload length in a frame's header and the star tracker's event words.
template <class T>
requires std::is_integral_v<T>
constexpr void put_little_endian(unsigned char* destination, T value)
{
    for (std::size_t i = 0; i < sizeof(T); ++i)
        destination[i] = static_cast<unsigned char>(static_cast<std::make_unsigned_t<T>>(value) >> (8 * i));
}

template <class T>
requires std::is_integral_v<T>
constexpr T get_little_endian(const unsigned char* source)
{
    unsigned long long word = 0;
    for (std::size_t i = sizeof(T); i-- > 0;)
        word = word << 8 | source[i];
    return static_cast<T>(static_cast<Word<sizeof(T)>>(word));
}

}
