#include "catalogue/commands.h"
#include "common/text.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <numeric>
#include <sstream>

using namespace zavra;

// Writes docs/protocol.md: every command with the place of every value, from the catalogue.

namespace
{

std::string type_name(const Item& item)
{
    const std::string count = '[' + std::to_string(item.count) + ']';
    const char letter = item.kind == Item::Kind::real ? 'f' : item.kind == Item::Kind::signed_integer ? 'i' : 'u';
    switch (item.kind) {
    case Item::Kind::text:
        return "char" + count;
    case Item::Kind::bytes:
    case Item::Kind::skipped:
        return "bytes";
    default:
        return letter + std::to_string(8 * item.size) + (item.array ? count : "");
    }
}

std::string anchor(const Described_Command& command)
{
    std::string name = command.method;
    make_lower_case(name);
    return name;
}

std::string identifier(const Described_Command& command)
{
    std::ostringstream text;
    text << "0x" << std::hex << std::uppercase << std::setfill('0') << std::setw(4) << command.identifier;
    return text.str();
}

std::string size_of(Items items)
{
    return any_size(items) ? "any number of" : std::to_string(wire_bytes(items));
}

void print_layout(const char* title, Items items)
{
    if (items.empty())
        return;
    std::cout << "\n"
              << title << ", " << size_of(items) << " bytes:\n\n| Offset | Size | Type | Field | Unit |\n"
              << "|-------:|-----:|------|-------|------|\n";
    std::size_t offset = 0;
    std::vector<std::string> around; // names of the records around
    for (const Item& item : items) {
        if (item.kind == Item::Kind::open) {
            around.push_back(json::key(item) + '.');
        } else if (item.kind == Item::Kind::close) {
            around.pop_back();
        } else {
            const std::string path = std::accumulate(around.begin(), around.end(), std::string());
            std::cout << "| " << offset << " | " << (item.count == 0 ? "all" : std::to_string(wire_bytes(item)))
                      << " | " << type_name(item) << " | "
                      << (item.kind == Item::Kind::skipped ? "(no field)" : path + json::key(item)) << " | "
                      << item.unit << " |\n";
        }
        offset += wire_bytes(item);
    }
}

}

int main()
{
    std::vector<Described_Command> commands(described_commands().begin(), described_commands().end());
    std::stable_sort(commands.begin(), commands.end(),
                     [](const auto& a, const auto& b) { return a.identifier < b.identifier; });

    std::cout << "# Command protocol\n"
                 "\n"
                 "This file is made by `make protocol-reference` from the descriptors in `protocol/`; it is not\n"
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
    for (const auto& each : commands)
        std::cout << "| `" << identifier(each) << "` | [" << each.method << "](#" << anchor(each) << ") | "
                  << size_of(each.request) << " | " << (each.response.empty() ? "-" : size_of(each.response)) << " |\n";

    for (const auto& each : commands) {
        std::cout << "\n## " << each.method << "\n\nIdentifier `" << identifier(each) << "`.\n";
        print_layout("Request", each.request);
        print_layout("Response", each.response);
    }
    std::cout << std::flush;
    return std::cout ? 0 : 1;
}
