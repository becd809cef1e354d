#include "json.h"

#include "../common/text.h"

#include <charconv>
#include <cmath>

namespace zavra
{

namespace json
{

namespace
{

template <class T>
Json finite_number(T value)
{
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value > 0 ? "inf" : "-inf";
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    double shortest = 0;
    std::from_chars(digits, end, shortest);
    return shortest;
}

}

std::string key(const Item& item)
{
    std::string text = item.name;
    for (char& c : text)
        if (item.is_field)
            c = lower_case(c);
    return text;
}

std::string hexadecimal(std::span<const unsigned char> bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : bytes) {
        text += digits[byte >> 4U];
        text += digits[byte & 0xFU];
    }
    return text;
}

Json number(float value)
{
    return finite_number(value);
}

Json number(double value)
{
    return finite_number(value);
}

Json text(const char* bytes, std::size_t size)
{
    std::string utf8;
    for (const char* c = bytes; c != bytes + size && *c != '\0'; ++c) {
        const auto byte = static_cast<unsigned char>(*c);
        if (byte < 0x80U) {
            utf8 += *c;
        } else {
            utf8 += static_cast<char>(0xC0U | byte >> 6U);
            utf8 += static_cast<char>(0x80U | (byte & 0x3FU));
        }
    }
    return utf8;
}

std::string shown(const Json& value)
{
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void fail(const std::string& where, const std::string& problem)
{
    throw std::invalid_argument(where.empty() ? problem : where + ": " + problem);
}

double to_number(const Json& value, const std::string& where)
{
    if (value.is_number())
        return value.get<double>();
    for (const double special : {std::nan(""), HUGE_VAL, -HUGE_VAL})
        if (value == number(special))
            return special;
    fail(where, "expected a number, got " + shown(value));
}

template <class T>
T to_float(const Json& value, const std::string& where)
{
    const double number = to_number(value, where);
    if (std::isfinite(number) && std::abs(number) > static_cast<double>(std::numeric_limits<T>::max()))
        fail(where, shown(value) + " is out of range");
    return static_cast<T>(number);
}

std::string to_text(const Json& value, std::size_t max_size, const std::string& where)
{
    if (!value.is_string())
        fail(where, "expected a text, got " + shown(value));
    const auto& utf8 = value.get_ref<const std::string&>();
    std::string bytes;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80U) {
            bytes += utf8[i];
        } else if ((lead & 0xFEU) == 0xC2U && i + 1 < utf8.size()) {
            bytes += static_cast<char>((lead & 0x03U) << 6U | (static_cast<unsigned char>(utf8[++i]) & 0x3FU));
        } else {
            fail(where, "expected characters up to U+00FF, got \"" + utf8 + '"');
        }
    }
    if (bytes.size() > max_size)
        fail(where, "expected at most " + std::to_string(max_size) + " characters, got \"" + utf8 + '"');
    return bytes;
}

Octets to_bytes(const Json& value, const std::string& where)
{
    const std::string text = value.is_string() ? value.get<std::string>() : "?";
    Octets bytes(text.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        if (std::from_chars(&text[2 * i], &text[2 * i] + 2, bytes[i], 16).ptr != &text[2 * i] + 2)
            fail(where, "expected hexadecimal digits, got " + shown(value));
    if (text.size() % 2 != 0)
        fail(where, "expected pairs of hexadecimal digits, got " + shown(value));
    return bytes;
}

void expect_array(const Json& value, std::size_t size, const std::string& where)
{
    if (!value.is_array() || value.size() != size)
        fail(where, "expected an array of " + std::to_string(size) + ", got " + shown(value));
}

void expect_object(const Json& value, const std::string& where)
{
    if (!value.is_object())
        fail(where, "expected an object, got " + shown(value));
}

const Json& member(const Json& object, const std::string& name, const std::string& where)
{
    const auto found = object.find(name);
    if (found == object.end())
        fail(where, "\"" + name + "\" is missing");
    return *found;
}

namespace
{

/// Calls action() with a zero of the number's type.
template <class Action>
auto with_type_of(const Item& item, Action action)
{
    switch (item.kind) {
    case Item::Kind::real:
        return item.size == sizeof(float) ? action(float{}) : action(double{});
    case Item::Kind::signed_integer:
        return action(int{});
    default:
        switch (item.size) {
        case 1:
            return action(static_cast<unsigned char>(0));
        case 2:
            return action(static_cast<unsigned short>(0));
        case 4:
            return action(0U);
        default:
            return action(0ULL);
        }
    }
}

Json decoded_number(const Item& item, const unsigned char* source)
{
    return with_type_of(item, [&](auto zero) -> Json {
        const auto value = get<decltype(zero)>(source);
        if constexpr (std::is_floating_point_v<decltype(zero)>)
            return number(value);
        else
            return value;
    });
}

void encode_number(const Item& item, const Json& source, Octets& payload, const std::string& where)
{
    payload.resize(payload.size() + item.size);
    with_type_of(item, [&](auto zero) {
        using T = decltype(zero);
        unsigned char* const place = payload.data() + payload.size() - sizeof(T);
        if constexpr (std::is_floating_point_v<T>)
            put(place, to_float<T>(source, where));
        else
            put(place, to_integer<T>(source, where));
    });
}

class Decoder
{
public:
    Decoder(Items items, std::span<const unsigned char> payload)
        : item_(items.data()),
          end_(items.data() + items.size()),
          next_(payload.data()),
          spare_(payload.size() - wire_bytes(items))
    {
    }

    /// Values up to the end, or to the mark behind the record.
    Json object()
    {
        Json values = Json::object();
        for (; item_ != end_ && item_->kind != Item::Kind::close; ++item_) {
            if (item_->kind == Item::Kind::skipped) {
                next_ += wire_bytes(*item_);
            } else {
                Json& place = values[key(*item_)];
                place = value();
            }
        }
        return values;
    }

private:
    Json value()
    {
        const Item& item = *item_;
        if (item.kind == Item::Kind::open) {
            ++item_;
            return object();
        }
        const std::size_t size = item.count == 0 ? spare_ : wire_bytes(item);
        const unsigned char* const source = next_;
        next_ += size;
        if (item.kind == Item::Kind::text)
            return text(reinterpret_cast<const char*>(source), size);
        if (item.kind == Item::Kind::bytes)
            return hexadecimal({source, size});
        if (!item.array)
            return decoded_number(item, source);
        Json list = Json::array();
        for (std::size_t i = 0; i < item.count; ++i)
            list.push_back(decoded_number(item, source + i * item.size));
        return list;
    }

    const Item* item_;
    const Item* end_;
    const unsigned char* next_;
    std::size_t spare_;
};

class Encoder
{
public:
    explicit Encoder(Items items) : item_(items.data()), end_(items.data() + items.size()) {}

    void object(const Json& source, const std::string& where, const char* unknown)
    {
        expect_object(source, where);
        Json others = source;
        for (; item_ != end_ && item_->kind != Item::Kind::close; ++item_) {
            if (item_->kind == Item::Kind::skipped) {
                payload.resize(payload.size() + wire_bytes(*item_));
                continue;
            }
            const std::string name = key(*item_);
            value(member(source, name, where), where.empty() ? name : where + '.' + name);
            others.erase(name);
        }
        if (!others.empty())
            fail(where, std::string(unknown) + ": " + shown(others));
    }

    Octets payload;

private:
    void value(const Json& source, const std::string& where)
    {
        const Item& item = *item_;
        if (item.kind == Item::Kind::open) {
            ++item_;
            object(source, where, "has members that are none of its fields");
        } else if (item.kind == Item::Kind::text) {
            const std::size_t end = payload.size() + item.count;
            const std::string characters = to_text(source, item.count - (item.terminated ? 1U : 0U), where);
            payload.insert(payload.end(), characters.begin(), characters.end());
            payload.resize(end);
        } else if (item.kind == Item::Kind::bytes) {
            const Octets bytes = to_bytes(source, where);
            if (item.count != 0 && bytes.size() != item.count)
                fail(where, "expected " + std::to_string(item.count) + " bytes");
            payload.insert(payload.end(), bytes.begin(), bytes.end());
        } else if (item.array) {
            expect_array(source, item.count, where);
            for (std::size_t i = 0; i < item.count; ++i)
                encode_number(item, source[i], payload, where + '[' + std::to_string(i) + ']');
        } else {
            encode_number(item, source, payload, where);
        }
    }

    const Item* item_;
    const Item* end_;
};

}

Json decode(Items items, std::span<const unsigned char> payload)
{
    return Decoder(items, payload).object();
}

Octets encode(Items items, const Json& object, const std::string& where, const char* unknown)
{
    Encoder encoder(items);
    encoder.object(object, where, unknown);
    return std::move(encoder.payload);
}

}

}
