#include "failure.h"
#include "frames.h"
#include "method.h"
#include "moment.h"
#include "monitor.h"
#include "output.h"
#include "similar.h"

#include <algorithm>

namespace zavra::tools
{

namespace
{

/// What an eighty-column terminal has room for beside the longest name.
std::string short_text(const Leaf& leaf, const Json& values)
{
    std::string date;
    if (is_epoch_time(leaf))
        date = utc(values.at(Json::json_pointer(leaf.pointer)).get<unsigned long long>());
    if (date.empty())
        return text_with_unit(leaf, values);
    date[date.find('T')] = ' ';
    date.pop_back(); // Z
    return date;
}

/// The text on lines of no more than that many characters.
std::vector<std::string> wrapped(const std::string& text, std::size_t most)
{
    std::vector<std::string> lines;
    std::string rest = text;
    while (rest.size() > most) {
        const auto blank = rest.rfind(' ', most);
        const auto end = blank == std::string::npos || blank == 0 ? most : blank;
        lines.push_back(rest.substr(0, end));
        rest.erase(0, end + (end == blank ? 1 : 0));
    }
    lines.push_back(rest);
    return lines;
}

std::string time_of_day()
{
    constexpr std::size_t begin = sizeof "2026-11-21T" - 1;
    constexpr std::size_t size = sizeof "12:00:00" - 1;
    return utc(host_epoch_msec()).substr(begin, size) + " UTC";
}

}

Monitor_Model::Monitor_Model(const std::vector<std::string>& names)
{
    const auto order =
        names.empty() ? std::vector<std::string>{"attitude", "standard", "sensor", "actuator", "power", "info"} : names;
    std::vector<std::string> known;
    for (const Frame& frame : frames)
        known.emplace_back(frame.name);
    for (const std::string& name : order) {
        const auto found =
            std::find_if(std::begin(frames), std::end(frames), [&](const Frame& frame) { return frame.name == name; });
        if (found == std::end(frames))
            throw Usage_Error("there is no frame \"" + name + '"' + did_you_mean(name, known));
        frames_.push_back(found);
    }
}

void Monitor_Model::read(ZAVRA_100& device)
{
    lines_.clear();
    for (const Frame* frame : frames_)
        read(device, *frame);
}

void Monitor_Model::read(ZAVRA_100& device, const Frame& frame)
{
    using Kind = Monitor_Line::Kind;
    constexpr std::size_t most = 70;
    const Method& method = method_named(frame.getter);
    std::string problem;
    Json values;
    try {
        values = method.call(device, Json::object());
        last_read_[frame.name] = time_of_day();
    } catch (const ZAVRA_100_Exception& error) {
        problem = in_short(error.what());
    }
    const std::string& last = last_read_[frame.name];
    lines_.push_back({Kind::title, frame.name, problem.empty() ? "" : last.empty() ? "never read" : "old, of " + last});
    if (!problem.empty())
        for (const std::string& line : wrapped(problem, most))
            lines_.push_back({Kind::problem, line, ""});
    for (const Leaf& leaf : method.results) {
        std::string& before = before_[frame.name + leaf.pointer];
        if (problem.empty()) {
            const std::string value = short_text(leaf, values);
            lines_.push_back({Kind::value, leaf.path, value, !before.empty() && value != before});
            before = value;
        } else {
            lines_.push_back({Kind::value, leaf.path, before.empty() ? "?" : before + " (old)", false, true});
        }
    }
}

std::vector<Monitor_Column> arrange(const std::vector<Monitor_Line>& lines, std::size_t first, int rows, int columns)
{
    std::vector<Monitor_Column> arranged;
    int left = 0;
    while (first < lines.size()) {
        const std::size_t last = std::min(lines.size(), first + static_cast<std::size_t>(rows));
        std::size_t name_width = 0;
        std::size_t value_width = 0;
        std::size_t whole_width = 0;
        for (std::size_t i = first; i < last; ++i) {
            const Monitor_Line& line = lines[i];
            const bool is_value = line.kind == Monitor_Line::Kind::value;
            name_width = std::max(name_width, is_value ? line.name.size() : 0);
            value_width = std::max(value_width, is_value ? line.value.size() : 0);
            whole_width = std::max(whole_width, line.name.size() + (is_value ? 0 : line.value.size() + 2));
        }
        const auto width = static_cast<int>(std::max(name_width + 1 + value_width, whole_width));
        // The first column is shown as far as it goes.
        if (left > 0 && left + width > columns)
            break;
        arranged.push_back({first, last, left, static_cast<int>(name_width)});
        left += width + 2;
        first = last;
    }
    return arranged;
}

}
