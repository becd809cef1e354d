#include "commands.h"

#include "../protocol/commands.h"

#include <algorithm>

namespace zavra
{

namespace
{

/// Values that travel one behind the other.
template <class... Value>
constexpr Item_List items_of_all(std::tuple<Value...>*, const std::array<Value_Name, sizeof...(Value)>& names)
{
    Item_List items;
    const Value_Name* name = names.data();
    ((add_value<Value>(items, *name), ++name), ...);
    return items;
}

template <std::size_t i>
constexpr const auto& command = get<i>(protocol::commands);

template <std::size_t i>
using Command_Type = std::remove_cvref_t<decltype(get<i>(protocol::commands))>;

template <std::size_t i, bool is_request>
constexpr Item_List item_list()
{
    if constexpr (is_request)
        return items_of_all(static_cast<typename Command_Type<i>::Arguments*>(nullptr), command<i>.argument_names);
    else
        return items_of_all(static_cast<typename Command_Type<i>::Results*>(nullptr), command<i>.result_names);
}

// Keyed on the index: GCC 12 gives templates that are keyed on references to different elements the same name.
template <std::size_t i, bool is_request>
constexpr auto exact_items = [] {
    constexpr Item_List list = item_list<i, is_request>();
    std::array<Item, list.size> items{};
    std::copy_n(list.items.begin(), list.size, items.begin());
    return items;
}();

template <std::size_t i>
constexpr Described_Command described()
{
    static_assert(wire_bytes(exact_items<i, true>) == Command_Type<i>::request_size &&
                  wire_bytes(exact_items<i, false>) == Command_Type<i>::response_size);
    return {command<i>.identifier, command<i>.method, command<i>.action, exact_items<i, true>, exact_items<i, false>};
}

constexpr auto all = []<std::size_t... i>(std::index_sequence<i...>)
{
    return std::array{described<i>()...};
}
(std::make_index_sequence<protocol::commands.size>{});

Json decoded(Items items, std::span<const unsigned char> payload, const char* method)
{
    if (payload.size() != wire_bytes(items) && !any_size(items))
        json::fail(method, "expected " + std::to_string(wire_bytes(items)) + " bytes of payload, got " +
                               std::to_string(payload.size()));
    return json::decode(items, payload);
}

}

Json Described_Command::decode_request(std::span<const unsigned char> payload) const
{
    return decoded(request, payload, method);
}

Json Described_Command::decode_response(std::span<const unsigned char> payload) const
{
    return decoded(response, payload, method);
}

Octets Described_Command::encode_request(const Json& arguments) const
{
    return json::encode(request, arguments, method, "has arguments that it does not know");
}

std::span<const Described_Command> described_commands()
{
    return all;
}

const Described_Command* find_command(std::string_view method)
{
    const auto found = std::find_if(all.begin(), all.end(), [&](const auto& entry) { return entry.method == method; });
    return found == all.end() ? nullptr : &*found;
}

std::vector<const Described_Command*> find_requests(unsigned short identifier, std::size_t request_size)
{
    std::vector<const Described_Command*> found;
    for (const Described_Command& entry : all)
        if (entry.identifier == identifier && (wire_bytes(entry.request) == request_size || any_size(entry.request)))
            found.push_back(&entry);
    return found;
}

std::vector<const Described_Command*> find_requests(const Request_Frame& frame)
{
    return frame.whole() ? find_requests(frame.identifier, frame.payload.size())
                         : std::vector<const Described_Command*>();
}

std::string names_of(std::span<const Described_Command* const> commands)
{
    std::string names;
    for (const auto* entry : commands)
        names += (names.empty() ? "" : " or ") + std::string(entry->method);
    return names;
}

}
