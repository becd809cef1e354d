#pragma once

#include "../../catalogue/json.h"

#include <filesystem>
#include <toml++/toml.h>
#include <vector>

namespace zavra::simulator
{

/// What differs from run to run of a campaign: a TOML file with the tables and keys of a satellite's, and at each key
/// how the satellite's value is spread; docs/campaigns.md lists the ways. Each key draws from the seed on its own, so
/// that one more changes nothing of the others.
class Variation
{
public:
    /// @throws std::runtime_error  with file and line, when it cannot be read
    Variation(const std::filesystem::path& file, unsigned long long seed);

    /// Changes a satellite.
    /// @throws std::runtime_error  with file and line, for what makes no sense or is not in the satellite
    void apply(toml::table& satellite);

    /// What was drawn: numbers by the path of their key.
    const Json& drawn() const { return drawn_; }

    /// What happens in this run, as a scenario has it.
    const std::vector<Json>& events() const { return events_; }

private:
    [[noreturn]] void fail(const toml::node& node, const std::string& problem) const;
    double number(const toml::node& node) const;
    std::pair<double, double> bounds(const toml::node& node) const;
    void apply(const toml::table& spreads, toml::table& satellite, const std::string& path);
    void draw(const toml::table& spread, toml::node& value, const std::string& path);
    void draw_numbers(const std::string& kind, const toml::node& how, toml::node& value, const std::string& path);
    void draw_event(const toml::table& event, std::size_t index);

    std::string name_;
    unsigned long long seed_;
    toml::table table_;
    Json drawn_ = Json::object();
    std::vector<Json> events_;
};

}
