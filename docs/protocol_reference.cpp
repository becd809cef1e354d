#include "device/protocol/commands.h"
#include "device/protocol/frame.h"
#include "device/protocol/layout.h"

#include <algorithm>
#include <cctype>
#include <iomanip>
#include <iostream>

using namespace zavra;

// Writes docs/protocol.md: every command with the place of every value, from the descriptors and field lists.

namespace
{

struct Entry
{
    unsigned short identifier;
    std::string method;
    std::string sizes[2];
    Layout layouts[2];
};

template <class Result, class... Argument>
Entry entry(const Command<Result(Argument...)>& command)
{
    using This = Command<Result(Argument...)>;
    return {command.identifier,
            command.method,
            {std::to_string(This::request_size), This::has_response ? std::to_string(This::response_size) : "-"},
            {request_layout(command), response_layout(command)}};
}

Entry entry(const Command<void(Native_Bytes)>& command)
{
    return {command.identifier,
            command.method,
            {"any number of", "-"},
            {Layout{{"0", "all", "bytes", command.argument_names[0].name, ""}}, {}}};
}

std::string anchor(const Entry& entry)
{
    std::string name = entry.method;
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

std::string identifier(const Entry& entry)
{
    std::ostringstream text;
    text << "0x" << std::hex << std::uppercase << std::setfill('0') << std::setw(4) << entry.identifier;
    return text.str();
}

void print_layout(const char* title, const std::string& size, const Layout& layout)
{
    if (layout.empty())
        return;
    std::cout << "\n"
              << title << ", " << size << " bytes:\n\n| Offset | Size | Type | Field | Unit |\n"
              << "|-------:|-----:|------|-------|------|\n";
    for (const Layout_Row& row : layout)
        std::cout << "| " << row.offset << " | " << row.size << " | " << row.type << " | "
                  << (row.field.empty() ? "(the value)" : row.field) << " | " << row.unit << " |\n";
}

}

int main()
{
    std::vector<Entry> entries;
    std::apply([&](const auto&... command) { (entries.push_back(entry(command)), ...); }, protocol::commands);
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.identifier < b.identifier; });

    std::cout
        << "# Command protocol\n"
           "\n"
           "This file is made by `make protocol-reference` from the descriptors in `device/protocol/`; it is not\n"
           "edited by hand.\n"
           "\n"
           "A request is one I2C write: the identifier (two bytes, most significant first), the length of the\n"
           "payload (two bytes, least significant first), the payload of at most "
        << max_payload_bytes
        << " bytes, and a CRC-8 over all of\n"
           "that. A response is one I2C read: its payload and a CRC-8 over it. The CRC has the polynomial 0x07, "
           "starts\n"
           "at 0x00, and is neither reflected nor inverted. Values stand without gaps, most significant byte "
           "first.\n"
           "\n"
           "`u8` to `u64` are unsigned integers, `f32` and `f64` IEEE 754 numbers, `char[n]` text filled with "
           "zeros,\n"
           "`bytes` what has a format of its own. A command without a response is marked `-`. Commands that "
           "share an\n"
           "identifier are told apart by the length of the request or of the response.\n"
           "\n"
           "| Identifier | Command | Request | Response |\n"
           "|------------|---------|--------:|---------:|\n";
    for (const Entry& each : entries)
        std::cout << "| `" << identifier(each) << "` | [" << each.method << "](#" << anchor(each) << ") | "
                  << each.sizes[0] << " | " << each.sizes[1] << " |\n";

    for (const Entry& each : entries) {
        std::cout << "\n## " << each.method << "\n\nIdentifier `" << identifier(each) << "`.\n";
        print_layout("Request", each.sizes[0], each.layouts[0]);
        print_layout("Response", each.sizes[1], each.layouts[1]);
    }
    std::cout << std::flush;
    return std::cout ? 0 : 1;
}
