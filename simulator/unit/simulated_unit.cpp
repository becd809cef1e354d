#include "simulated_unit.h"

#include "../../protocol/frame.h"
#include "../../protocol/startracker_orbit.h"

#include <algorithm>
#include <cerrno>

namespace zavra::simulator
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
    ready_ = clock_.wall() + options_.latency;
    return 0;
}

void Simulated_Unit::execute(std::span<const unsigned char> frame)
{
    const Request_Frame request = take_apart(frame);
    if (!request.crc_right)
        return parts.system.report(System::bad_request_crc);
    if (!request.whole())
        return parts.system.report(System::unknown_command_or_wrong_length);

    auto outcome = commands_.execute(request.identifier, request.payload);
    switch (outcome.status) {
    case Command_Table::Status::done:
        replies_ = std::move(outcome.replies);
        for (auto& reply : replies_)
            reply.push_back(crc8(reply));
        native_channel_ = request.identifier == protocol::send_startracker_native_command.identifier ||
                          request.identifier == protocol::check_startracker_native_reply.identifier;
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
    if (clock_.wall() < ready_)
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

Actuation Simulated_Unit::control_tick(const Measurements& sensed)
{
    Actuation actuation = parts.actuators.actuation();
    const Measurements measurements = parts.measurements(sensed);
    if (software) {
        software->tick(measurements, actuation);
        parts.report = software->report();
        parts.actuators.show(parts.report && parts.report->control.acts ? std::optional(actuation) : std::nullopt);
    }
    return actuation;
}

void Simulated_Unit::reset()
{
    parts.reset();
    if (software)
        software->reset();
    replies_.clear();
    native_channel_ = false;
}

}
