#include "simulated_unit.h"

#include "../device/protocol/codec.h"
#include "../device/protocol/crc8.h"
#include "../device/protocol/frame.h"
#include "../device/protocol/startracker_orbit.h"

#include <algorithm>
#include <cerrno>

namespace zavra
{

Simulated_Unit::Simulated_Unit(World& world, const Clock& clock, const Options& options)
    : clock_(clock),
      options_(options),
      parts(commands_, clock, world),
      telemetry(commands_, parts, world)
{
}

int Simulated_Unit::write(std::span<const unsigned char> bytes)
{
    const auto guard = lock();
    replies_.clear();
    native_channel_ = false;
    if (bytes.empty())
        return 0;
    ++parts.system.counters.received_commands;
    execute(bytes);
    ready_ = clock_.now() + options_.latency;
    return 0;
}

void Simulated_Unit::execute(std::span<const unsigned char> frame)
{
    const auto protected_bytes = frame.first(frame.size() - crc_bytes);
    if (frame.back() != crc8(protected_bytes))
        return parts.system.report(System::bad_request_crc);
    if (protected_bytes.size() < frame_header_bytes)
        return parts.system.report(System::unknown_command_or_wrong_length);

    const auto identifier = get<unsigned short>(frame.data());
    const auto length = get_little_endian<unsigned short>(frame.data() + sizeof identifier);
    const auto payload = protected_bytes.subspan(frame_header_bytes);
    if (length != payload.size())
        return parts.system.report(System::unknown_command_or_wrong_length);

    auto outcome = commands_.execute(identifier, payload);
    switch (outcome.status) {
    case Command_Table::Status::done:
        replies_ = std::move(outcome.replies);
        for (auto& reply : replies_)
            reply.push_back(crc8(reply));
        native_channel_ = identifier == protocol::send_startracker_native_command.identifier ||
                          identifier == protocol::check_startracker_native_reply.identifier;
        break;
    case Command_Table::Status::refused:
        return parts.system.report(System::refused_command);
    case Command_Table::Status::unknown_command:
    case Command_Table::Status::wrong_length:
        return parts.system.report(System::unknown_command_or_wrong_length);
    }
}

int Simulated_Unit::read(std::vector<unsigned char>& bytes)
{
    const auto guard = lock();
    if (clock_.now() < ready_)
        return ENXIO;
    std::fill(bytes.begin(), bytes.end(), static_cast<unsigned char>(0xFF));
    if (native_channel_ && replies_.empty() && bytes.size() > crc_bytes)
        if (auto reply = parts.startracker_orbit.take_native_reply(bytes.size() - crc_bytes); !reply.empty()) {
            reply.push_back(crc8(reply));
            replies_.push_back(std::move(reply));
        }
    if (replies_.empty())
        return 0;
    auto reply = std::find_if(replies_.begin(), replies_.end(),
                              [&](const auto& candidate) { return candidate.size() == bytes.size(); });
    if (reply == replies_.end())
        reply = replies_.begin();
    std::copy_n(reply->begin(), std::min(reply->size(), bytes.size()), bytes.begin());
    if (native_channel_)
        replies_.clear();
    return 0;
}

Command_Table::Outcome Simulated_Unit::command(unsigned short identifier, std::span<const unsigned char> payload)
{
    const auto guard = lock();
    return commands_.execute(identifier, payload);
}

void Simulated_Unit::reset()
{
    parts.reset();
    replies_.clear();
    native_channel_ = false;
}

}
