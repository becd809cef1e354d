#include "commands.h"
#include "failure.h"

#include "../common/text.h"

#include <algorithm>
#include <ostream>
#include <sstream>

namespace zavra::tools
{

namespace
{

bool contains(const std::string& name, const std::string& word)
{
    const auto same = [](char a, char b) { return lower_case(a) == lower_case(b); };
    return std::search(name.begin(), name.end(), word.begin(), word.end(), same) != name.end();
}

/// The first part of a path: the name of an argument.
std::string head(const Leaf& leaf)
{
    return leaf.path.substr(0, leaf.path.find_first_of(".["));
}

std::string names(const Leaves& leaves)
{
    std::string text;
    std::string last;
    for (const Leaf& leaf : leaves) {
        if (head(leaf) != last)
            text += (text.empty() ? "" : ", ") + head(leaf);
        last = head(leaf);
    }
    return text;
}

std::string identifier(const Method& method)
{
    if (method.identifier == 0)
        return "      ";
    const unsigned char bytes[] = {static_cast<unsigned char>(method.identifier >> 8U),
                                   static_cast<unsigned char>(method.identifier)};
    return "0x" + json::hexadecimal(bytes);
}

void write_leaves(std::ostream& out, const char* title, const Leaves& leaves)
{
    if (leaves.empty())
        return;
    out << "          " << title << '\n';
    write_rows(out, "            ", leaves, description);
}

Json json_of(const Leaves& leaves)
{
    Json list = Json::array();
    for (const Leaf& leaf : leaves)
        list.push_back({{"name", leaf.path}, {"type", type_name(leaf)}, {"unit", leaf.unit}});
    return list;
}

}

std::string values_of(const Everyday& command)
{
    std::ostringstream text;
    for (const auto& [name, title] : {std::pair{command.getter, "To read:"}, std::pair{command.setter, "To set:"}}) {
        const Leaves none;
        const Leaves& leaves = name == nullptr ? none : method_named(name).arguments;
        if (leaves.empty())
            continue;
        text << title << '\n';
        write_rows(text, "  ", leaves, description);
    }
    return text.str();
}

void list_methods(std::ostream& out, const std::vector<std::string>& words, bool json)
{
    std::vector<const Method*> chosen;
    for (const Method& method : methods())
        if (words.empty() || std::any_of(words.begin(), words.end(),
                                         [&](const std::string& word) { return contains(method.name, word); }))
            chosen.push_back(&method);
    if (chosen.empty())
        throw Usage_Error("no method's name contains \"" + words.front() + '"');

    if (json) {
        Json list = Json::array();
        for (const Method* method : chosen)
            list.push_back({{"name", method->name},
                            {"identifier", method->identifier},
                            {"arguments", json_of(method->arguments)},
                            {"results", json_of(method->results)}});
        out << json_text(list) << '\n';
        return;
    }
    for (const Method* method : chosen) {
        const std::string results = names(method->results);
        out << identifier(*method) << "  " << method->name << '(' << names(method->arguments) << ')'
            << (results.empty() ? "" : " -> " + results) << '\n';
        if (!words.empty()) {
            write_leaves(out, "arguments", method->arguments);
            write_leaves(out, "results", method->results);
        }
    }
}

}
