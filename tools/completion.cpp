#include "completion.h"
#include "method.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace zavra::tools
{

void write_completions(const CLI::App& program, const std::vector<std::string>& words, std::ostream& out)
{
    const CLI::App* command = &program;
    std::size_t words_of_command = 0;
    for (const std::string& word : words) {
        const auto commands = command->get_subcommands([&](const CLI::App* each) { return each->get_name() == word; });
        if (commands.empty()) {
            words_of_command += word.starts_with('-') ? 0 : 1;
        } else {
            command = commands.front();
            words_of_command = 0;
        }
    }
    for (const CLI::App* each : command->get_subcommands([](const CLI::App* app) { return !app->get_group().empty(); }))
        out << each->get_name() << '\n';
    if (command->get_name() == "call" && words_of_command == 0)
        for (const Method& method : methods())
            out << method.name << '\n';
    for (const CLI::App* app : {command, &program})
        for (const CLI::Option* option : app->get_options())
            if (!option->get_lnames().empty() && (app == command || command != &program))
                out << "--" << option->get_lnames().front() << '\n';
}

}
