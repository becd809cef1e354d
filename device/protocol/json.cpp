#include "json.h"

#include "commands.h"

#include <cctype>
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

std::string key(const char* name)
{
    std::string text = name;
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
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
    fail(where, "expected a number, got " + value.dump());
}

std::string to_text(const Json& value, std::size_t max_size, const std::string& where)
{
    if (!value.is_string())
        fail(where, "expected a text, got " + value.dump());
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

std::vector<unsigned char> to_bytes(const Json& value, const std::string& where)
{
    const std::string text = value.is_string() ? value.get<std::string>() : "?";
    std::vector<unsigned char> bytes(text.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        if (std::from_chars(&text[2 * i], &text[2 * i] + 2, bytes[i], 16).ptr != &text[2 * i] + 2)
            fail(where, "expected hexadecimal digits, got " + value.dump());
    if (text.size() % 2 != 0)
        fail(where, "expected pairs of hexadecimal digits, got " + value.dump());
    return bytes;
}

void expect_array(const Json& value, std::size_t size, const std::string& where)
{
    if (!value.is_array() || value.size() != size)
        fail(where, "expected an array of " + std::to_string(size) + ", got " + value.dump());
}

void expect_object(const Json& value, const std::string& where)
{
    if (!value.is_object())
        fail(where, "expected an object, got " + value.dump());
}

const Json& member(const Json& object, const std::string& name, const std::string& where)
{
    const auto found = object.find(name);
    if (found == object.end())
        fail(where, "\"" + name + "\" is missing");
    return *found;
}

}

namespace
{

using Native_Command = Command<void(Native_Bytes)>;

Json decode_request(const Native_Command& command, std::span<const unsigned char> payload)
{
    return {{command.argument_names[0].name, json::hexadecimal(payload)}};
}

std::vector<unsigned char> encode_request(const Native_Command& command, const Json& arguments)
{
    const char* name = command.argument_names[0].name;
    json::expect_object(arguments, command.method);
    if (arguments.size() > 1)
        json::fail(command.method, "has arguments that it does not know: " + arguments.dump());
    return json::to_bytes(json::member(arguments, name, command.method), std::string(command.method) + '.' + name);
}

template <std::size_t i>
constexpr Described_Command described()
{
    constexpr auto& command = std::get<i>(protocol::commands);
    return {command.identifier,
            command.method,
            command.action,
            command.request_size,
            std::same_as<std::remove_cvref_t<decltype(command)>, Native_Command>,
            command.response_size,
            [](std::span<const unsigned char> payload) { return decode_request(command, payload); },
            [](std::span<const unsigned char> payload) { return decode_response(command, payload); },
            [](const Json& arguments) { return encode_request(command, arguments); }};
}

constexpr auto all = []<std::size_t... i>(std::index_sequence<i...>)
{
    return std::array{described<i>()...};
}
(std::make_index_sequence<std::tuple_size_v<decltype(protocol::commands)>>{});

}

std::span<const Described_Command> described_commands()
{
    return all;
}

const Described_Command* find_command(std::string_view method)
{
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const auto& command) { return command.method == method; });
    return found == all.end() ? nullptr : &*found;
}

std::vector<const Described_Command*> find_requests(unsigned short identifier, std::size_t request_size)
{
    std::vector<const Described_Command*> found;
    for (const Described_Command& command : all)
        if (command.identifier == identifier && (command.any_request_size || command.request_size == request_size))
            found.push_back(&command);
    return found;
}

}
