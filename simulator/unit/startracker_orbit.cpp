#include "startracker_orbit.h"

#include "../../protocol/startracker_orbit.h"
#include "../orbit/frames.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace zavra::simulator
{

namespace
{

/// The characters before the terminator, which may be missing.
template <std::size_t size>
std::string_view text_of(const char (&line)[size])
{
    return {line, ::strnlen(line, size)};
}

ZAVRA_100_Vector3_float narrowed(const Eigen::Vector3d& vector)
{
    return {static_cast<float>(vector[0]), static_cast<float>(vector[1]), static_cast<float>(vector[2])};
}

}

Startracker_Orbit::Startracker_Orbit(Command_Table& commands, const Unit_Time& time, const World& world)
    : time_(time),
      world_(world)
{
    event_list.header = 0;
    event_list.num_event = 0;

    using namespace protocol;
    commands.on(set_startracker_quaternion,
                [this](const ZAVRA_100_Quaternion_float& set) { settings.quaternion = set; });
    commands.on(get_startracker_quaternion, [this] { return quaternion(); });
    commands.on(get_startracker_event_list,
                [this] { return encode_event_list(world_.startracker_events().value_or(event_list)); });
    commands.keep(set_startracker_operation_mode, get_startracker_operation_mode, settings.operation_mode);
    commands.on_bytes(send_startracker_native_command.identifier, Command_Table::any_size,
                      [this](std::span<const unsigned char> bytes) {
                          native_reply.assign(bytes.begin(), bytes.end());
                          return Command_Table::Octets{};
                      });
    commands.on(check_startracker_native_reply,
                [this] { return static_cast<unsigned char>(native_reply.empty() ? 0 : 1); });
    commands.on(init_orbit_module, [this](const ZAVRA_100_Orbit_TLE_Data& tle_data) {
        return static_cast<unsigned char>(load(tle_data));
    });
    commands.on(get_orbit_data, [this] { return orbit(); });
}

ZAVRA_100_Startracker_Quaternion Startracker_Orbit::quaternion() const
{
    if (settings.quaternion)
        return {*settings.quaternion, time_.epoch_msec()};
    const auto seen = world_.star_tracker();
    return {seen.value, time_.epoch_msec() - seen.age_msec};
}

Command_Table::Octets Startracker_Orbit::take_native_reply(std::size_t most)
{
    const auto end = native_reply.begin() + static_cast<std::ptrdiff_t>(std::min(most, native_reply.size()));
    Command_Table::Octets taken(native_reply.begin(), end);
    native_reply.erase(native_reply.begin(), end);
    return taken;
}

Tle_Error Startracker_Orbit::load(const ZAVRA_100_Orbit_TLE_Data& tle_data)
{
    Two_Line_Elements elements{};
    if (const Tle_Error error = parse_tle(text_of(tle_data.tle_1), text_of(tle_data.tle_2), elements);
        error != Tle_Error::none)
        return error;
    const Sgp4 model{elements};
    Orbit_State at_epoch{};
    if (const Tle_Error error = model.propagate(0.0, at_epoch); error != Tle_Error::none)
        return error;
    propagation_ = {model, elements, time_.system_msec(), tle_data.update_interval_msec};
    return Tle_Error::none;
}

std::optional<Two_Line_Elements> Startracker_Orbit::elements() const
{
    return propagation_ ? std::optional(propagation_->elements) : std::nullopt;
}

ZAVRA_100_Orbit_Propagation_Data Startracker_Orbit::orbit() const
{
    unsigned long long age_msec = 0;
    if (propagation_ && propagation_->interval_msec != 0)
        age_msec = (time_.system_msec() - propagation_->start_msec) % propagation_->interval_msec;
    const unsigned long long epoch_msec = time_.epoch_msec();
    const Julian_Date date = julian_date(epoch_msec - std::min(age_msec, epoch_msec));

    Orbit_State state{}; // stays so when the propagation fails
    if (propagation_)
        propagation_->model.propagate(minutes_between(propagation_->elements.epoch, date), state);
    return {narrowed(state.position_km), narrowed(state.velocity_kmps), date.value()};
}

void Startracker_Orbit::reset()
{
    settings = {};
    native_reply.clear();
    propagation_.reset();
}

}
