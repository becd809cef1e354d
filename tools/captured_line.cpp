#include "captured_line.h"
#include "failure.h"
#include "leaf.h"

#include "../common/text.h"

#include <algorithm>
#include <istream>

namespace zavra::tools
{

namespace
{

std::string without_colours(const std::string& line)
{
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\033')
            i = std::min(line.find('m', i), line.size() - 1);
        else
            text += line[i];
    }
    return text;
}

/// Nothing for a line that is no object of the journal's.
std::optional<Captured_Line> understand_journal(const std::string& raw)
{
    const Json object = Json::parse(raw, nullptr, false);
    if (!object.is_object() || !object.contains("direction") || !object.contains("bytes"))
        return std::nullopt;
    const auto text = [&](const char* key) {
        const auto found = object.find(key);
        return found == object.end() ? ""
               : found->is_string()  ? found->get<std::string>()
               : found->is_number()  ? json::shown(*found)
                                     : "";
    };
    Captured_Line line;
    line.direction = text("direction") == "read" ? Direction::response : Direction::request;
    line.time = object.contains("time_msec") ? text("time_msec") + " ms" : text("time");
    line.unit = text("bus") + ' ' + text("address");
    const std::string fault = text("fault");
    line.problem = text("error");
    if (!fault.empty())
        line.problem += (line.problem.empty() ? "fault " : ", fault ") + fault;
    line.text = text("bytes");
    return line;
}

/// Where a frame begins behind times like "[12.5]", "2026-11-21T12:00:00.000Z" and "12:00:00.5".
std::size_t behind_times(const std::string& text)
{
    std::size_t begin = 0;
    for (;;) {
        const auto first = text.find_first_not_of(" \t", begin);
        if (first == std::string::npos)
            return begin;
        const auto end = text[first] == '[' ? std::min(text.find(']', first), text.size() - 1) + 1
                                            : std::min(text.find_first_of(" \t", first), text.size());
        const std::string word = text.substr(first, end - first);
        const bool is_time = word.front() == '[' || word.find('-') == 4 || word.find('.') != std::string::npos;
        if (!is_time)
            return begin;
        begin = end;
    }
}

}

std::optional<Octets> Captured_Line::bytes() const
{
    const auto digits = hexadecimal_digits(text);
    if (!digits || digits->size() % 2 != 0)
        return std::nullopt;
    return json::to_bytes(*digits, "");
}

Captured_Line understand(const std::string& raw)
{
    if (raw.starts_with('{'))
        if (auto line = understand_journal(raw))
            return *line;
    Captured_Line line;
    line.text = without_colours(raw);
    line.of_dump = line.text != raw || line.text.starts_with(" --> ") || line.text.starts_with(" <-- ");
    for (const auto& [label, direction] :
         {std::pair{"Command (hex) : ", Direction::request}, std::pair{"Response (hex) : ", Direction::response}})
        if (const auto found = line.text.find(label); found != std::string::npos) {
            line.of_dump = true;
            line.direction = direction;
            line.text.erase(0, found + std::string(label).size());
            return line;
        }
    if (line.of_dump || line.text.starts_with('#'))
        return line;
    if (const auto mark = line.text.find_first_of("<>"); mark != std::string::npos) {
        line.direction = line.text[mark] == '>' ? Direction::request : Direction::response;
        line.time = trimmed(line.text.substr(0, mark));
        line.text.erase(0, mark + 1);
    } else if (const auto begin = behind_times(line.text); begin != 0) {
        line.time = trimmed(line.text.substr(0, begin));
        line.text.erase(0, begin);
    }
    return line;
}

bool read_line(std::istream& in, std::string& line)
{
    constexpr std::size_t longest = 1U << 20U;
    line.clear();
    for (int c = in.get(); c != '\n'; c = in.get()) {
        if (c == std::istream::traits_type::eof())
            return !line.empty();
        if (line.size() == longest)
            throw Usage_Error("a line of more than 1 MB is no captured frame");
        line += static_cast<char>(c);
    }
    return true;
}

}
