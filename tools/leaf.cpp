#include "leaf.h"

namespace zavra::tools
{

namespace
{

std::string joined(const Json& names)
{
    std::string text;
    for (const Json& name : names)
        (text += text.empty() ? "" : " ") += name.get<std::string>();
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

Leaves leaves_of(Items items)
{
    using Kind = Leaf::Kind;
    Leaves leaves;
    std::vector<std::string> around; // names of the records around
    for (const Item& item : items) {
        if (item.kind == Item::Kind::close)
            around.pop_back();
        if (item.kind == Item::Kind::close || item.kind == Item::Kind::skipped)
            continue;
        std::string path;
        std::string pointer;
        around.push_back(json::key(item));
        for (const std::string& name : around) {
            path += (path.empty() ? "" : ".") + name;
            pointer += '/' + name;
        }
        if (item.kind == Item::Kind::open)
            continue;
        around.pop_back();
        const std::size_t bits = std::size_t{8} * item.size;
        if (item.kind == Item::Kind::bytes)
            leaves.push_back({path, pointer, item.unit, Kind::bytes, item.count});
        else if (item.kind == Item::Kind::text)
            leaves.push_back({path, pointer, item.unit, Kind::text, item.count - (item.terminated ? 1U : 0U)});
        else
            for (std::size_t i = 0; i < item.count; ++i)
                leaves.push_back({item.array ? path + '[' + std::to_string(i) + ']' : path,
                                  item.array ? pointer + '/' + std::to_string(i) : pointer, item.unit,
                                  item.kind == Item::Kind::real             ? Kind::real
                                  : item.kind == Item::Kind::signed_integer ? Kind::signed_integer
                                                                            : Kind::unsigned_integer,
                                  bits, item.hexadecimal});
    }
    return leaves;
}

std::string printable(const std::string& text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        // U+0080 to U+009F are control characters, too.
        const bool high_control =
            byte == 0xC2U && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0U;
        result += byte < 0x20U || byte == 0x7FU || high_control ? '?' : text[i];
        i += high_control ? 1 : 0;
    }
    return result;
}

bool is_epoch_time(const Leaf& leaf)
{
    return leaf.unit == "ms" && leaf.path.find("epoch_time") != std::string::npos;
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

std::string description(const Leaf& leaf)
{
    std::string text = type_name(leaf) + (leaf.unit.empty() ? "" : ", " + leaf.unit);
    const char* separator = ": ";
    for (const Enumerator& each : leaf.names) {
        text += separator + std::string(each.name);
        separator = ", ";
    }
    return text;
}

std::string text_of(const Leaf& leaf, const Json& value)
{
    const Json& found = value.at(Json::json_pointer(leaf.pointer));
    if (leaf.hexadecimal)
        return hexadecimal(found.get<unsigned long long>(), leaf.size);
    if (leaf.kind == Leaf::Kind::names)
        return printable(joined(found));
    return found.is_string() ? printable(found.get<std::string>()) : json::shown(found);
}

}
