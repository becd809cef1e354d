#include "control_server.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace zavra::simulator
{

namespace
{

Json state(Test_Bench& bench)
{
    Json state;
    state["time_msec"] = bench.time.now().count();
    state["time_factor"] = json::number(bench.time.factor());
    for (const unsigned int address : bench.addresses()) {
        Test_Bench::Unit& unit = bench.unit(address);
        Json& shown = state["units"][std::to_string(address)];
        shown["world"] = to_json(unit);
        shown["faults"] = Json::object();
        for (const Fault_Rate& rate : unit.faults.rates())
            shown["faults"][name_of(rate.fault)] = rate.probability;
    }
    return state;
}

struct Time_Change
{
    std::optional<double> factor;
    Clock::Time leap{0};
};

Time_Change time_change(const Test_Bench& bench, const Json& request)
{
    json::expect_object(request, "time");
    for (const auto& [key, value] : request.items())
        if (key != "factor" && key != "advance")
            json::fail("time", "there is no \"" + key + "\"; there is factor, advance");
    Time_Change change;
    if (const auto factor = request.find("factor"); factor != request.end())
        change.factor = checked_time_factor(json::to_number(*factor, "time.factor"), bench.has_satellite());
    if (const auto advance = request.find("advance"); advance != request.end())
        change.leap = seconds_of(*advance, "time.advance");
    return change;
}

void obey(Test_Bench& bench, Json request)
{
    json::expect_object(request, "request");
    if (request.contains("at"))
        json::fail("at", "everything happens at once here");
    const auto addresses = bench.addresses();
    std::optional<Event> event;
    Time_Change change;
    if (const auto found = request.find("time"); found != request.end()) {
        change = time_change(bench, *found);
        request.erase(found);
    }
    const bool only_address = request.size() == 1 && request.contains("address");
    if (!request.empty() && !only_address)
        event.emplace(request);
    const auto asked = request.find("address");
    if (asked != request.end() && std::find(addresses.begin(), addresses.end(),
                                            json::to_integer<unsigned int>(*asked, "address")) == addresses.end())
        json::fail("address", "there is no unit at " + json::shown(*asked));

    if (event)
        for (const unsigned int address : addresses)
            if (event->address.value_or(address) == address)
                event->happen(bench.unit(address));
    if (change.factor)
        bench.time.set_factor(*change.factor);
    bench.time.advance(change.leap);
}

}

Control_Server::Control_Server(Test_Bench& bench, const std::filesystem::path& bus)
    : server_("Control", path(bus), [&bench](std::span<const unsigned char> request) {
          const std::string text = json::shown(answer(bench, std::string(request.begin(), request.end())));
          return std::vector<unsigned char>(text.begin(), text.end());
      })
{
}

std::filesystem::path Control_Server::path(const std::filesystem::path& bus)
{
    return bus.string() + ".control";
}

Json Control_Server::answer(Test_Bench& bench, const std::string& request)
{
    try {
        obey(bench, Json::parse(request));
        return state(bench);
    } catch (const std::exception& error) {
        return {{"error", error.what()}};
    }
}

}
