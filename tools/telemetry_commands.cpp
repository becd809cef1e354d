#include "commands.h"
#include "failure.h"
#include "frames.h"
#include "similar.h"

#include "../common/text.h"
#include "../simulator/unit/modes.h"

#include <algorithm>

namespace zavra::tools
{

namespace
{

std::vector<std::string> words_of(const std::string& name)
{
    std::vector<std::string> words{""};
    for (const char c : name) {
        if (c == '_' || c == '.')
            words.emplace_back();
        else
            words.back() += lower_case(c);
    }
    return words;
}

/// How well a name fits a field: the field itself (best), what the field ends or begins with, or words that all stand
/// in it in this order, each perhaps cut short: "q_1" is quaternion_attitude_1_bf.
enum class Fit { none, words, begins, ends, same };

Fit fit(const std::string& field, const std::string& name)
{
    if (field == name)
        return Fit::same;
    if (field.ends_with('_' + name) || field.ends_with('.' + name))
        return Fit::ends;
    if (field.starts_with(name + '_') || field.starts_with(name + '.'))
        return Fit::begins;
    const auto in_field = words_of(field);
    auto next = in_field.begin();
    for (const std::string& word : words_of(name)) {
        next = std::find_if(next, in_field.end(), [&](const auto& each) { return each.starts_with(word); });
        if (word.empty() || next++ == in_field.end())
            return Fit::none;
    }
    return Fit::words;
}

/// A field of a frame, its path with the frame's name in front.
struct Chosen
{
    const Frame* frame;
    Leaf leaf;
};

std::vector<Chosen> fields_of(const Frame& frame)
{
    std::vector<Chosen> fields;
    for (Leaf leaf : method_named(frame.getter).results) {
        leaf.path = std::string(frame.name) + '.' + leaf.path;
        leaf.pointer = '/' + std::string(frame.name) + leaf.pointer;
        fields.push_back({&frame, leaf});
    }
    return fields;
}

/// All fields that fit as well as the best one does.
std::vector<Chosen> find_fields(const std::string& given)
{
    std::string name = given;
    make_lower_case(name);
    std::vector<Chosen> found;
    std::vector<std::string> candidates;
    Fit best = Fit::words;
    for (const Frame& frame : frames) {
        candidates.emplace_back(frame.name);
        const std::string prefix = std::string(frame.name) + '.';
        const bool other_frame = std::any_of(std::begin(frames), std::end(frames), [&](const Frame& each) {
            return &each != &frame && name.starts_with(std::string(each.name) + '.');
        });
        for (const Chosen& field : fields_of(frame)) {
            const std::string path = field.leaf.path.substr(prefix.size());
            candidates.push_back(path);
            const bool whole = name == "all" || name == frame.name;
            const Fit fits = whole         ? Fit::same
                             : other_frame ? Fit::none
                                           : fit(path, name.starts_with(prefix) ? name.substr(prefix.size()) : name);
            if (fits < best)
                continue;
            if (fits > best)
                found.clear();
            best = fits;
            found.push_back(field);
        }
    }
    if (found.empty())
        throw Usage_Error("no field of telemetry is called \"" + given + '"' + did_you_mean(given, candidates));
    return found;
}

}

Device_Action telemetry_action(const std::vector<std::string>& names)
{
    std::vector<Chosen> chosen;
    for (const std::string& name : names)
        for (const Chosen& field : find_fields(name))
            chosen.push_back(field);
    return {[chosen](Unit& unit) {
        Answer answer;
        Json read = Json::object();
        for (const Chosen& field : chosen) {
            if (!read.contains(field.frame->name))
                read[field.frame->name] = unit.call(method_named(field.frame->getter), Json::object());
            const Json::json_pointer place(field.leaf.pointer);
            answer.value[place] = read.at(place);
            answer.leaves.push_back(field.leaf);
        }
        return answer;
    }};
}

std::vector<std::string> telemetry_fields()
{
    std::vector<std::string> names;
    for (const Frame& frame : frames)
        for (const Chosen& field : fields_of(frame))
            names.push_back(field.leaf.path);
    return names;
}

Device_Action mode_status_action()
{
    return {[](Unit& unit) {
        using simulator::Modes;
        // The codes are the simulated unit's.
        constexpr auto& modes = Modes::mode_names;
        ZAVRA_100_Standard_Telemetry standard;
        unit.device.Get_Standard_Telemetry(&standard);
        const unsigned int status = standard.control_main_status;
        const unsigned int mode = status & ~Modes::waiting_bit;
        Answer answer;
        answer.value = {{"mode", mode < std::size(modes) ? modes[mode] : "unknown"},
                        {"waits_for_start", (status & Modes::waiting_bit) != 0 ? 1U : 0U},
                        {"control_main_status", status},
                        {"control_main_error", standard.control_main_error},
                        {"epoch_time_msec", standard.epoch_time_msec}};
        using Kind = Leaf::Kind;
        answer.leaves = {{"mode", "/mode", "", Kind::text},
                         {"waits_for_start", "/waits_for_start", "", Kind::unsigned_integer, 8},
                         {"control_main_status", "/control_main_status", "", Kind::unsigned_integer, 32, true},
                         {"control_main_error", "/control_main_error", "", Kind::unsigned_integer, 32, true},
                         {"epoch_time_msec", "/epoch_time_msec", "ms", Kind::unsigned_integer, 64}};
        return answer;
    }};
}

}
