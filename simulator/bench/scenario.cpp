#include "scenario.h"

#include "toml_reader.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>

namespace zavra::simulator
{

namespace
{

std::string located(const std::string& file, const Scenario::Problem& problem)
{
    return "Scenario " + file + (problem.line == 0 ? "" : ":" + std::to_string(problem.line)) + ": " + problem.text;
}

}

Scenario::Scenario(const std::filesystem::path& file) : file_(file.string())
{
    std::vector<Problem> problems;
    read(problems);
    if (!problems.empty())
        throw std::runtime_error(located(file_, problems.front()));
}

Scenario::Scenario(const std::vector<Json>& events)
{
    for (const Json& source : events)
        events_.push_back({Event(source), 0, source});
}

std::vector<Scenario::Problem> Scenario::problems(const std::filesystem::path& file)
{
    std::vector<Problem> problems;
    Scenario scenario;
    scenario.file_ = file.string();
    scenario.read(problems);
    return problems;
}

void Scenario::read(std::vector<Problem>& problems)
{
    toml::table table;
    try {
        table = toml::parse_file(file_);
    } catch (const toml::parse_error& error) {
        problems.push_back({error.source().begin.line, std::string(error.description())});
        return;
    }
    for (const auto& [key, value] : table) {
        const auto* list = value.as_array();
        if (key.str() != "event" || list == nullptr) {
            problems.push_back(
                {key.source().begin.line, "expected only tables [[event]], found \"" + std::string(key.str()) + '"'});
            continue;
        }
        for (const toml::node& node : *list) {
            const std::size_t line = node.source().begin.line;
            try {
                Json source = json_of(node);
                events_.push_back({Event(source), line, std::move(source)});
            } catch (const std::invalid_argument& error) {
                problems.push_back({line, error.what()});
            }
        }
    }
}

void Scenario::play(Test_Bench& bench, const std::vector<unsigned int>& addresses, const Observer& observer) const
{
    for (const auto& [event, line, source] : events_)
        if (event.address && std::find(addresses.begin(), addresses.end(), *event.address) == addresses.end())
            throw std::runtime_error(
                located(file_, {line, "address: there is no unit at " + std::to_string(*event.address)}));
    for (const auto& [event, line, source] : events_)
        for (const unsigned int address : addresses)
            if (event.address.value_or(address) == address)
                bench.time.at(event.time, [&unit = bench.unit(address), event = event, source = source, observer] {
                    std::string refusal;
                    try {
                        event.happen(unit);
                    } catch (const std::runtime_error& error) {
                        refusal = error.what();
                        std::cerr << "Scenario: " + refusal + "\n" << std::flush;
                    }
                    if (observer)
                        observer(source, refusal);
                });
}

}
