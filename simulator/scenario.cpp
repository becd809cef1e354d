#include "scenario.h"

#include "../device/protocol/startracker_orbit.h"
#include "../device/protocol/vectors.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <stdexcept>
#include <toml++/toml.h>

namespace zavra
{

namespace
{

auto fields_of(Canned_World& world)
{
    return std::tuple{Field{"angular_velocity_radps", world.angular_velocity},
                      Field{"magnetic_field_t", world.magnetic_field}, Field{"sun_vector", world.sun},
                      Field{"attitude", world.quaternion}, Field{"temperature_degc", world.temperature}};
}

/// What is not named stays as it is.
void change(Canned_World& world, const Json& changes)
{
    Json all = json::object(fields_of(world));
    all.merge_patch(changes);
    json::assign_fields(all, fields_of(world), "world");
}

Json to_json(const toml::node& node)
{
    if (const auto* table = node.as_table()) {
        Json object = Json::object();
        for (const auto& [key, value] : *table)
            object[std::string(key.str())] = to_json(value);
        return object;
    }
    if (const auto* array = node.as_array()) {
        Json list = Json::array();
        for (const auto& value : *array)
            list.push_back(to_json(value));
        return list;
    }
    if (const auto* text = node.as_string())
        return text->get();
    if (const auto* integer = node.as_integer())
        return integer->get();
    if (const auto* number = node.as_floating_point())
        return number->get();
    if (const auto* boolean = node.as_boolean())
        return boolean->get();
    throw std::invalid_argument("dates and times have no meaning here");
}

Clock::Time seconds(const Json& value, const std::string& where)
{
    const double msec = std::round(1000 * json::to_number(value, where));
    if (!(msec >= 0 && msec <= 1e15))
        json::fail(where, "expected a number of seconds, got " + value.dump());
    return Clock::Time(static_cast<Clock::Time::rep>(msec));
}

std::function<void(Test_Bench::Unit&)> startracker_action(const Json& seen)
{
    ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST list;
    list.header = 0;
    if (!seen.is_array() || seen.size() > max_events)
        json::fail("startracker_events", "expected at most " + std::to_string(max_events) + " pairs [x, y]");
    list.num_event = static_cast<unsigned char>(seen.size());
    for (std::size_t i = 0; i < seen.size(); ++i) {
        int event[2];
        from_json(seen[i], event, "startracker_events[" + std::to_string(i) + ']');
        list.xisf[i] = event[0];
        list.yisf[i] = event[1];
    }
    return [list](Test_Bench::Unit& bench_unit) {
        const auto guard = bench_unit.unit.lock();
        bench_unit.unit.parts.startracker_orbit.event_list = list;
    };
}

std::function<void(Test_Bench::Unit&)> command_action(const std::string& method, const Json& arguments)
{
    const Described_Command* command = find_command(method);
    if (command == nullptr)
        json::fail("command", "there is no command \"" + method + '"');
    return [command, payload = command->encode_request(arguments)](Test_Bench::Unit& bench_unit) {
        if (bench_unit.unit.command(command->identifier, payload).status != Command_Table::Status::done)
            std::cerr << std::string("Scenario: the unit refused ") + command->method + "\n" << std::flush;
    };
}

std::function<void(Test_Bench::Unit&)> fault_action(Fault fault, const Json* probability, const Json* duration)
{
    const Clock::Time length = duration == nullptr ? default_fault_duration : seconds(*duration, "for");
    if (probability == nullptr)
        return [=](Test_Bench::Unit& bench_unit) { bench_unit.faults.inject(fault, length); };
    const Fault_Rate rate{fault, checked_probability(json::to_number(*probability, "probability")), length};
    return [=](Test_Bench::Unit& bench_unit) { bench_unit.faults.set_rate(rate); };
}

}

Scenario::Scenario(const std::filesystem::path& file)
{
    const auto fail = [&](auto line, const std::string& problem) {
        throw std::runtime_error("Scenario " + file.string() + (line == 0 ? "" : ":" + std::to_string(line)) + ": " +
                                 problem);
    };
    toml::table table;
    try {
        table = toml::parse_file(file.string());
    } catch (const toml::parse_error& error) {
        fail(error.source().begin.line, std::string(error.description()));
    }
    for (const auto& [key, value] : table) {
        const auto* list = value.as_array();
        if (key.str() != "event" || list == nullptr)
            fail(key.source().begin.line, "expected only tables [[event]], found \"" + std::string(key.str()) + '"');
        for (const toml::node& node : *list) {
            try {
                events_.push_back(event(to_json(node)));
            } catch (const std::invalid_argument& error) {
                fail(node.source().begin.line, error.what());
            }
        }
    }
}

Scenario::Event Scenario::event(const Json& source)
{
    json::expect_object(source, "event");
    std::size_t known = 0;
    const auto take = [&](const char* key) -> const Json* {
        const auto found = source.find(key);
        known += found == source.end() ? 0U : 1U;
        return found == source.end() ? nullptr : &*found;
    };
    Event event;
    if (const Json* at = take("at"))
        event.time = seconds(*at, "at");
    if (const Json* address = take("address"))
        event.address = json::to_integer<unsigned int>(*address, "address");
    if (const Json* world = take("world")) {
        Canned_World trial;
        change(trial, *world);
        event.actions.emplace_back([changes = *world](Test_Bench::Unit& bench_unit) {
            const auto guard = bench_unit.unit.lock();
            change(bench_unit.world, changes);
        });
    }
    if (const Json* seen = take("startracker_events"))
        event.actions.push_back(startracker_action(*seen));
    if (const Json* command = take("command")) {
        const Json* arguments = take("arguments");
        event.actions.push_back(command_action(json::to_text(*command, 1000, "command"),
                                               arguments == nullptr ? Json::object() : *arguments));
    }
    if (const Json* fault = take("fault")) {
        const Json* probability = take("probability");
        event.actions.push_back(
            fault_action(fault_named(json::to_text(*fault, 1000, "fault")), probability, take("for")));
    }
    if (source.size() != known)
        json::fail("event", "has keys that have no meaning, or none without another one: " + source.dump());
    return event;
}

void Scenario::play(Test_Bench& bench, const std::vector<unsigned int>& addresses) const
{
    for (const Event& event : events_)
        for (const unsigned int address : addresses)
            if (event.address.value_or(address) == address)
                for (const auto& action : event.actions)
                    bench.time.at(event.time, [&unit = bench.unit(address), action] { action(unit); });
}

}
