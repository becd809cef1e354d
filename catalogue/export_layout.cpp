#include "export_layout.h"

#include "../protocol/sensors.h"
#include "../protocol/startracker_orbit.h"

#include <cctype>

namespace zavra
{

namespace
{

constexpr const char* gyroscopes[] = {"GYRO_0", "GYRO_1", "GYRO_2"};
constexpr const char* magnetometers[] = {"MAGNETOMETER_0"};
constexpr const char* wheels[] = {"REACTIONWHEEL_0", "REACTIONWHEEL_1", "REACTIONWHEEL_2",
                                  "REACTIONWHEEL_3", "REACTIONWHEEL_4", "REACTIONWHEEL_5"};
constexpr const char* axes[] = {"X", "Y", "Z"};
constexpr const char* modes[] = {"OPERATING_MODE_0", "OPERATING_MODE_1", "OPERATING_MODE_2", "OPERATING_MODE_3"};
static_assert(std::size(gyroscopes) == protocol::number_of_gyroscopes);
static_assert(std::size(magnetometers) == protocol::number_of_magnetometers);

constexpr struct
{
    const char* method; ///< words in its name
    const char* value;
    const char* name;
    std::span<const char* const> labels;
} enumerations[] = {
    {"Gyro", "index", "gyroscope", gyroscopes},
    {"Gyro", "gyro_index", "gyroscope", gyroscopes},
    {"Magnetometer", "index", "magnetometer", magnetometers},
    {"Magnetometer", "magnetometer_index", "magnetometer", magnetometers},
    {"ReactionWheel", "index", "reaction_wheel", wheels},
    {"SingleAxis", "axis", "axis", axes},
    {"Startracker_Operation_Mode", "mode", "startracker_mode", modes},
};

void enumerate(Place& place, const std::string& method)
{
    for (const auto& [words, value, name, labels] : enumerations)
        if (place.name == value && method.find(words) != std::string::npos) {
            place.choice = name;
            place.choices = labels;
        }
}

/// What the API refuses; the decimals are those that it compares with.
constexpr struct
{
    const char* range;
    const char* limit;
} ranges[] = {{"latitude", "1.5707963267948966"}, {"longitude", "3.141592653589793"}};

void limit(Place& place)
{
    for (const auto& [range, limit] : ranges)
        if (place.name.ends_with(std::string("_") + range)) {
            place.range = range;
            place.limit = limit;
        }
}

/// The catalogue knows the event list as bytes; its words are the only little-endian ones.
void add_event_list(std::vector<Place>& places)
{
    using Kind = Item::Kind;
    places.push_back({"header", "", Kind::unsigned_integer, 1});
    places.push_back({"num_event", "", Kind::unsigned_integer, 1});
    for (int event = 0; event < max_events; ++event)
        for (const char* word : {"xisf", "yisf"})
            places.push_back({word + ('[' + std::to_string(event) + ']'), "", Kind::signed_integer, sizeof(int), false,
                              true, event});
    places.push_back({"", "", Kind::skipped, 1});
}

std::string plain(const std::string& text)
{
    std::string name;
    for (const char c : text) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0)
            name += c;
        else if (c != ']')
            name += '_';
    }
    return name;
}

}

std::vector<Place> places_of(const Described_Command& command, Items items)
{
    std::vector<Place> places;
    if (command.identifier == protocol::get_startracker_event_list.identifier && !items.empty()) {
        add_event_list(places);
        return places;
    }
    std::vector<std::string> around{""}; // the records around, each with a point behind it
    for (const Item& item : items) {
        const std::string name = around.back() + json::key(item);
        if (item.kind == Item::Kind::open) {
            around.push_back(name + '.');
        } else if (item.kind == Item::Kind::close) {
            around.pop_back();
        } else if (item.kind == Item::Kind::skipped) {
            places.push_back({"", "", item.kind, static_cast<unsigned int>(wire_bytes(item))});
        } else {
            const bool one = !item.array;
            for (unsigned int i = 0; i < (one ? 1U : item.count); ++i) {
                places.push_back({one ? name : name + '[' + std::to_string(i) + ']', item.unit, item.kind,
                                  one ? static_cast<unsigned int>(wire_bytes(item)) : item.size, item.hexadecimal});
                enumerate(places.back(), command.method);
                limit(places.back());
            }
        }
    }
    return places;
}

std::string plain_name(const Place& place)
{
    return plain(place.name);
}

std::string plain_unit(const char* unit)
{
    std::string text = unit;
    if (const auto slash = text.find('/'); slash != std::string::npos)
        text.replace(slash, 1, "_per_");
    if (const auto percent = text.find('%'); percent != std::string::npos)
        text.replace(percent, 1, "percent");
    return plain(text);
}

std::string hexadecimal_identifier(unsigned short identifier)
{
    const unsigned char bytes[] = {static_cast<unsigned char>(identifier >> 8U),
                                   static_cast<unsigned char>(identifier & 0xFFU)};
    return "0x" + json::hexadecimal(bytes);
}

}
