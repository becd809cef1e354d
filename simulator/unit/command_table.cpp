#include "command_table.h"

namespace zavra::simulator
{

void Command_Table::on_bytes(unsigned short identifier, std::size_t request_size, Bytes_Action action)
{
    entries_.emplace(identifier, Entry{request_size, std::move(action)});
}

Command_Table::Outcome Command_Table::execute(unsigned short identifier, std::span<const unsigned char> payload) const
{
    const auto [first, last] = entries_.equal_range(identifier);
    if (first == last)
        return {Status::unknown_command, {}};

    Outcome outcome{Status::wrong_length, {}};
    for (auto entry = first; entry != last; ++entry) {
        const std::size_t size = entry->second.request_size;
        if (size != any_size && size != payload.size())
            continue;
        try {
            if (Octets reply = entry->second.action(payload); !reply.empty())
                outcome.replies.push_back(std::move(reply));
            outcome.status = Status::done;
        } catch (const Refused&) {
            return {Status::refused, {}};
        }
    }
    return outcome;
}

}
