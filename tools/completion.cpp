#include "completion.h"
#include "commands.h"
#include "frames.h"

#include "../common/text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <set>

namespace zavra::tools
{

namespace
{

/// The command line before the word that is completed.
struct Place
{
    const CLI::App* command;
    std::string names;         ///< of the commands, "wheel speed"
    std::size_t arguments = 0; ///< of the command so far
    std::string method;        ///< its first argument
};

Place find_place(const CLI::App& program, const std::vector<std::string>& before)
{
    Place place{&program, "", 0, ""};
    for (const std::string& word : before) {
        const auto commands =
            place.command->get_subcommands([&](const CLI::App* each) { return each->get_name() == word; });
        if (!commands.empty() && place.arguments == 0) {
            place.command = commands.front();
            place.names += (place.names.empty() ? "" : " ") + word;
        } else if (!word.starts_with('-')) {
            place.method = place.arguments++ == 0 ? word : place.method;
        }
    }
    return place;
}

std::vector<std::string> options(const CLI::App& program, const Place& place, const std::vector<std::string>& before)
{
    std::set<std::string> names;
    for (const CLI::App* app : {place.command, &program})
        for (const CLI::Option* option : app->get_options())
            for (const std::string& name : option->get_lnames())
                if (std::find(before.begin(), before.end(), "--" + name) == before.end())
                    names.insert("--" + name);
    return {names.begin(), names.end()};
}

/// The names of the values of a method's arguments.
void add_arguments(const Method* method, std::vector<std::string>& candidates)
{
    if (method != nullptr)
        for (const Leaf& leaf : method->arguments)
            candidates.push_back(leaf.path + '=');
}

std::vector<std::string> arguments(const Place& place, const std::string& word)
{
    std::vector<std::string> candidates;
    if (place.arguments == 0)
        for (const CLI::App* each :
             place.command->get_subcommands([](const CLI::App* app) { return !app->get_group().empty(); }))
            candidates.push_back(each->get_name());
    if (place.names == "telemetry" && word.find('.') != std::string::npos) // all of them would be too many
        for (const std::string& field : telemetry_fields())
            candidates.push_back(field);
    if (place.names == "monitor")
        for (const Frame& frame : frames)
            candidates.emplace_back(frame.name);
    if (place.names == "list" || (place.names == "call" && place.arguments == 0))
        candidates = method_names();
    else if (place.names == "call")
        add_arguments(find_method(place.method), candidates);
    for (const Everyday& each : everyday_commands())
        if (place.names == each.words)
            for (const char* const name : {each.setter, each.getter})
                if (name != nullptr && candidates.empty())
                    add_arguments(find_method(name), candidates);
    return candidates;
}

bool begins(const std::string& candidate, const std::string& word)
{
    return candidate.size() >= word.size() && std::equal(word.begin(), word.end(), candidate.begin(),
                                                         [](char a, char b) { return lower_case(a) == lower_case(b); });
}

}

void write_completions(const CLI::App& program, const std::vector<std::string>& words, std::ostream& out)
{
    if (words.empty())
        return;
    const std::string& word = words.back();
    const std::vector<std::string> before(words.begin(), words.end() - 1);
    static const std::set<std::string> followed_by_others{"--map",     "--json",     "--bus-dir", "--bus",
                                                          "--address", "--interval", "--count",   "="};
    if (!before.empty() && followed_by_others.contains(before.back()) && !word.starts_with('-'))
        return;
    const Place place = find_place(program, before);
    for (const std::string& candidate :
         word.starts_with('-') ? options(program, place, before) : arguments(place, word))
        if (begins(candidate, word))
            out << candidate << '\n';
}

}
