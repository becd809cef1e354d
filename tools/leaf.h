#pragma once

#include "../catalogue/json.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

/// What a command's arguments and results are made of, value by value.
namespace zavra::tools
{

/// A value that has a name.
struct Enumerator
{
    const char* name;
    unsigned int value;
};

/// One number, text or run of bytes inside a command's arguments or results.
struct Leaf
{
    enum class Kind { unsigned_integer, signed_integer, real, text, bytes, names };

    std::string path;    ///< as people write it: "parameters.correction_scale.m11", "polynomial_coeff[3]"
    std::string pointer; ///< where it stands in JSON: "/parameters/correction_scale/m11"
    std::string unit = "";
    Kind kind = Kind::unsigned_integer;
    std::size_t size = 0; ///< bits of a number, characters of a text, bytes; 0 where the length is free
    bool hexadecimal = false;
    std::span<const Enumerator> names = {}; ///< of the values that a number may have, where they are known
};

using Leaves = std::vector<Leaf>;

/// Whether it counts milliseconds since 1970.
bool is_epoch_time(const Leaf& leaf);

/// "uint8", "float", "text of 69".
std::string type_name(const Leaf& leaf);

/// What help says of it: "float, rad/s", "uint8: x, y, z".
std::string description(const Leaf& leaf);

/// The value of one leaf inside `value`, without its unit.
std::string text_of(const Leaf& leaf, const Json& value);

/// The text with a question mark for every control character: a terminal would obey them.
std::string printable(const std::string& text);

/// What somebody typed: numbers in decimal or with 0x and, where the leaf has a unit, with a unit of their own
/// ("10rpm"); "on" and "off" for 1 and 0; times as epoch_msec() takes them; names of values; bytes as
/// hexadecimal_digits().
/// @throws Usage_Error  naming the leaf
Json parse_text(const Leaf& leaf, const std::string& text);

/// @throws Usage_Error  naming the leaf and its range, when a number is out of it
void check_range(const Leaf& leaf, const Json& value);

/// The digits of bytes that may have blanks, colons, commas or 0x between them; nothing when there is anything else.
std::optional<std::string> hexadecimal_digits(const std::string& text);

/// The leaves of a payload's items.
Leaves leaves_of(Items items);

}
