#pragma once

#include "item.h"

#include <nlohmann/json.hpp>

#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Payloads as JSON, for the simulated unit's journal and scenarios and for the bench tool. A value's key is its name
/// in lower case; bytes that belong to no field do not appear.
namespace zavra
{

/// Keeps the fields in wire order.
using Json = nlohmann::ordered_json;

namespace json
{

/// The name of an item in JSON: a field's is in lower case.
std::string key(const Item& item);
std::string hexadecimal(std::span<const unsigned char> bytes);

/// The number as people write it: 0.1 and not 0.10000000149011612. What JSON has no number for is "nan", "inf", "-inf".
Json number(float value);
Json number(double value);

/// Bytes up to the first zero; bytes above 0x7F become the characters U+0080 to U+00FF.
Json text(const char* bytes, std::size_t size);

/// The reverse of the above. All of them throw std::invalid_argument with `where` in the message.
double to_number(const Json& value, const std::string& where);
std::string to_text(const Json& value, std::size_t max_size, const std::string& where);
Octets to_bytes(const Json& value, const std::string& where);

/// The value as a message has it, on one line; what is not UTF-8 is replaced.
std::string shown(const Json& value);

[[noreturn]] void fail(const std::string& where, const std::string& problem);

/// Fails unless the value is an array of that many elements.
void expect_array(const Json& value, std::size_t size, const std::string& where);
/// Fails unless the value is an object.
void expect_object(const Json& value, const std::string& where);
/// The member of that name; fails where there is none.
const Json& member(const Json& object, const std::string& name, const std::string& where);

template <class T>
T to_integer(const Json& value, const std::string& where)
{
    using Limits = std::numeric_limits<T>;
    const bool negative = value.is_number_integer() && !value.is_number_unsigned() && value.get<long long>() < 0;
    const bool fits = negative ? value.get<long long>() >= static_cast<long long>(Limits::min())
                               : value.is_number_integer() &&
                                     value.get<unsigned long long>() <= static_cast<unsigned long long>(Limits::max());
    if (!fits)
        fail(where, "expected a whole number up to " + std::to_string(Limits::max()) + ", got " + shown(value));
    return value.get<T>();
}

/// A payload's values by name. The payload has the size of its items.
Json decode(Items items, std::span<const unsigned char> payload);

/// The reverse. Every value must be there and no other, each in its range.
/// @param where    what the message of a failure starts with
/// @param unknown  what is said of an object that has more members than there are items
/// @throws std::invalid_argument  naming the value
Octets encode(Items items, const Json& object, const std::string& where,
              const char* unknown = "has members that are none of its fields");

}

/// A record by its field list.
template <Record R>
Json to_json(const R& record)
{
    Bytes<wire_size<R>> payload;
    pack(payload.data(), record);
    return json::decode(items_of<R>(), payload);
}

/// The reverse; the record is changed only when everything fits.
/// @throws std::invalid_argument  naming the field
template <Record R>
void from_json(const Json& source, R& record, const std::string& where = "")
{
    record = unpack<R>(json::encode(items_of<R>(), source, where).data());
}

}
