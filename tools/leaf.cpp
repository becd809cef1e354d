#include "leaf.h"
#include "failure.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

namespace zavra::tools
{

namespace
{

[[noreturn]] void refuse(const Leaf& leaf, const std::string& text)
{
    throw Usage_Error(leaf.path + ": expected " + type_name(leaf) + ", got \"" + text + '"');
}

template <class T>
std::pair<T, bool> number(std::string_view text, int base)
{
    T value = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    return {value, error == std::errc() && stop == text.data() + text.size()};
}

Json parse_integer(const Leaf& leaf, const std::string& text)
{
    if (text == "on" || text == "true")
        return 1U;
    if (text == "off" || text == "false")
        return 0U;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        if (const auto [value, good] = number<unsigned long long>(std::string_view(text).substr(2), 16); good)
            return value;
    } else if (text.starts_with('-')) {
        if (const auto [value, good] = number<long long>(text, 10); good)
            return value;
    } else if (const auto [value, good] = number<unsigned long long>(text, 10); good) {
        return value;
    }
    refuse(leaf, text);
}

Json parse_real(const Leaf& leaf, const std::string& text)
{
    const char* const end = text.data() + text.size();
    const char* const begin = text.data() + (text.starts_with('+') ? 1 : 0);
    double value = 0;
    const auto [stop, error] = std::from_chars(begin, end, value);
    if (stop != end || error == std::errc::invalid_argument)
        refuse(leaf, text);
    const bool too_large =
        leaf.size == 32 && std::isfinite(value) && std::abs(value) > std::numeric_limits<float>::max();
    if (too_large || error == std::errc::result_out_of_range)
        throw Usage_Error(leaf.path + ": " + text + " is out of range");
    return json::number(value);
}

std::string printable(const std::string& text)
{
    std::string result;
    for (const char c : text)
        result += std::iscntrl(static_cast<unsigned char>(c)) != 0 ? '?' : c;
    return result;
}

std::string joined(const Json& names)
{
    std::string text;
    for (const Json& name : names)
        text += (text.empty() ? "" : " ") + name.get<std::string>();
    return text.empty() ? "-" : text;
}

std::string hexadecimal(unsigned long long value, std::size_t bits)
{
    std::string digits(bits / 4, '0');
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, value >>= 4U)
        *digit = "0123456789abcdef"[value & 0xFU];
    return "0x" + digits;
}

}

void detail::add_leaf(Leaves& leaves, const Place& place, Leaf::Kind kind, std::size_t size, bool hexadecimal)
{
    leaves.push_back({place.path, place.pointer, place.unit, kind, size, hexadecimal});
}

std::string type_name(const Leaf& leaf)
{
    const std::string size = std::to_string(leaf.size);
    switch (leaf.kind) {
    case Leaf::Kind::unsigned_integer:
        return "uint" + size;
    case Leaf::Kind::signed_integer:
        return "int" + size;
    case Leaf::Kind::real:
        return leaf.size == 32 ? "float" : "double";
    case Leaf::Kind::text:
        return "text of " + size;
    case Leaf::Kind::names:
        return "names";
    case Leaf::Kind::bytes:
        break;
    }
    return leaf.size == 0 ? "bytes" : size + " bytes";
}

std::string text_of(const Leaf& leaf, const Json& value)
{
    const Json& found = value.at(Json::json_pointer(leaf.pointer));
    if (leaf.hexadecimal)
        return hexadecimal(found.get<unsigned long long>(), leaf.size);
    if (leaf.kind == Leaf::Kind::names)
        return joined(found);
    return found.is_string() ? printable(found.get<std::string>()) : found.dump();
}

Json parse_text(const Leaf& leaf, const std::string& text)
{
    switch (leaf.kind) {
    case Leaf::Kind::unsigned_integer:
    case Leaf::Kind::signed_integer:
        return parse_integer(leaf, text);
    case Leaf::Kind::real:
        return parse_real(leaf, text);
    default:
        return text;
    }
}

}
