#include "ini_lines.h"

#include "../../common/text.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <string_view>

namespace zavra::platform
{

namespace
{

constexpr std::size_t max_line_length = 1022;
constexpr const char* blanks = " \t\r\n\v\f";

std::string_view trimmed(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::string name(std::string_view text)
{
    std::string lower(trimmed(text));
    make_lower_case(lower);
    return lower;
}

}

Ini_Findings examine_ini_file(const char* path)
{
    Ini_Findings findings;
    std::set<std::string> entries;
    std::string section;
    std::string line; // ends with a backslash where the next one continues it
    std::ifstream file(path);
    int number = 0;
    const auto place = [&] { return std::string(path) + " (" + std::to_string(number) + ")"; };
    const auto enter = [&](const std::string& entry, const std::string& what) {
        if (!entries.insert(entry).second)
            findings.repetitions.push_back("line " + std::to_string(number) + ": " + what);
    };

    for (std::string text; findings.error.empty() && std::getline(file, text);) {
        ++number;
        if (!line.empty())
            line.pop_back();
        line += text;
        if (line.size() <= 1 && file.eof())
            break; // the library does not look at a last line of one character
        if (line.size() > max_line_length) {
            findings.error = "iniparser: input line too long in " + place();
            break;
        }
        line.erase(line.find_last_not_of(blanks) + 1);
        if (line.ends_with('\\'))
            continue;

        const std::string_view content = trimmed(line);
        const auto equals = content.find('=');
        if (content.empty() || content.front() == '#' || content.front() == ';') {
            // says nothing
        } else if (content.front() == '[' && content.back() == ']') {
            if (const std::string_view inside = content.substr(1, content.find(']') - 1); !inside.empty())
                section = name(inside);
            enter(section, "section [" + section + "] stands there more than once");
        } else if (equals != std::string::npos && equals != 0) {
            const std::string key = section + ':' + name(content.substr(0, equals));
            enter(key, "key " + key + " stands there more than once, the last value counts");
        } else {
            findings.error = "iniparser: syntax error in " + place() + ": -> " + line;
        }
        line.clear();
    }
    return findings;
}

}
