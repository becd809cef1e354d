#include "complaint.h"
#include "similar.h"

#include <CLI/CLI.hpp>

namespace zavra::tools
{

std::string complaint(const CLI::App& program, const CLI::ParseError& error)
{
    const CLI::App* group = &program;
    std::string words;
    while (!group->get_subcommands().empty()) {
        group = group->get_subcommands().front();
        words += group->get_name() + ' ';
    }
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
        std::vector<std::string> options;
        for (const CLI::App* app : {group, &program})
            for (const CLI::Option* option : app->get_options())
                for (const std::string& name : option->get_lnames())
                    options.push_back("--" + name);
        std::string meant;
        for (const std::string& unknown : program.remaining(true))
            meant = meant.empty() && unknown.starts_with("--") ? did_you_mean(unknown, options) : meant;
        return error.what() + meant;
    }
    if (dynamic_cast<const CLI::RequiredError*>(&error) == nullptr)
        return error.what();
    std::string choice;
    std::vector<std::string> names;
    for (const CLI::App* each : group->get_subcommands([](const CLI::App* app) { return !app->get_group().empty(); }))
        names.push_back(each->get_name());
    for (const std::string& name : names)
        choice += (choice.empty() ? "" : ", ") + name;
    if (choice.empty())
        return error.what();
    const auto unknown = program.remaining(true);
    if (unknown.empty())
        return "after \"zavractl " + words + "...\" a command is missing; there is: " + choice;
    const std::string meant = did_you_mean(unknown.front(), names);
    return "there is no command \"" + words + unknown.front() + '"' + (meant.empty() ? "; there is: " + choice : meant);
}

}
