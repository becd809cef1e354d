#include "event.h"

#include "satellite_event.h"

#include "../../catalogue/commands.h"
#include "../../protocol/startracker_orbit.h"
#include "../../protocol/vectors.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace zavra
{

template <>
inline constexpr auto field_list<simulator::Canned_World> = [](auto& world) {
    return List{Field{"ANGULAR_VELOCITY_RADPS", world.angular_velocity},
                Field{"MAGNETIC_FIELD_T", world.magnetic_field}, Field{"SUN_VECTOR", world.sun},
                Field{"ATTITUDE", world.quaternion}, Field{"TEMPERATURE_DEGC", world.temperature}};
};

namespace simulator
{

namespace
{

/// Every value must be a number that there is, under a name that there is.
void check(const Json& changes, const Json& known, const std::string& where)
{
    json::expect_object(changes, where);
    if (changes.empty())
        json::fail(where, "is empty");
    for (const auto& [key, value] : changes.items()) {
        const auto place = known.find(key);
        if (place == known.end())
            json::fail(where, "there is no \"" + key + '"');
        const std::string path = where + '.' + key;
        if (place->is_object())
            check(value, *place, path);
        else if (!std::isfinite(json::to_number(value, path)))
            json::fail(path, "expected a finite number, got " + json::shown(value));
    }
}

/// What is not named stays as it is.
void change(Canned_World& world, const Json& changes)
{
    Json all = zavra::to_json(world);
    check(changes, all, "world");
    all.merge_patch(changes);
    from_json(all, world, "world");
}

std::function<void(Test_Bench::Unit&)> startracker_action(const Json& seen)
{
    ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST list;
    list.header = 0;
    if (!seen.is_array() || seen.size() > max_events)
        json::fail("startracker_events", "expected at most " + std::to_string(max_events) + " pairs [x, y]");
    list.num_event = static_cast<unsigned char>(seen.size());
    for (std::size_t i = 0; i < seen.size(); ++i) {
        const std::string where = "startracker_events[" + std::to_string(i) + ']';
        json::expect_array(seen[i], 2, where);
        list.xisf[i] = json::to_integer<int>(seen[i][0], where + "[0]");
        list.yisf[i] = json::to_integer<int>(seen[i][1], where + "[1]");
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
            throw std::runtime_error(std::string("the unit refused ") + command->method);
    };
}

std::function<void(Test_Bench::Unit&)> fault_action(Fault fault, const Json* probability, const Json* duration)
{
    Fault_Rate rate{fault, 0};
    if (duration != nullptr)
        rate.duration = checked_duration(fault, seconds_of(*duration, "for"));
    if (probability == nullptr)
        return [=](Test_Bench::Unit& bench_unit) { bench_unit.faults.inject(fault, rate.duration); };
    rate.probability = checked_probability(json::to_number(*probability, "probability"));
    return [=](Test_Bench::Unit& bench_unit) { bench_unit.faults.set_rate(rate); };
}

/// The keys of an event, each asked for once.
class Keys
{
public:
    explicit Keys(const Json& source) : source_(source) { json::expect_object(source, "event"); }

    const Json* take(const char* key)
    {
        asked_.emplace_back(key);
        const auto found = source_.find(key);
        return found == source_.end() ? nullptr : &*found;
    }
    /// One that has no meaning without another one.
    const Json* take(const char* key, const char* with, bool meaningful)
    {
        const Json* const value = take(key);
        if (value != nullptr && !meaningful)
            json::fail("event", std::string(1, '"') + key + "\" has no meaning without \"" + with + '"');
        return value;
    }
    void expect_no_other() const
    {
        for (const auto& [key, value] : source_.items())
            if (std::find(asked_.begin(), asked_.end(), key) == asked_.end())
                json::fail("event", "there is no key \"" + key + '"');
    }

private:
    const Json& source_;
    std::vector<std::string> asked_;
};

}

Clock::Time seconds_of(const Json& value, const std::string& where)
{
    const double msec = std::round(1000 * json::to_number(value, where));
    if (!(msec >= 0 && msec <= 1e15))
        json::fail(where, "expected a number of seconds, got " + json::shown(value));
    return Clock::Time(static_cast<Clock::Time::rep>(msec));
}

Event::Event(const Json& source)
{
    Keys keys(source);
    if (const Json* at = keys.take("at"))
        time = seconds_of(*at, "at");
    if (const Json* number = keys.take("address"))
        address = json::to_integer<unsigned int>(*number, "address");
    if (const Json* world = keys.take("world")) {
        Canned_World trial;
        change(trial, *world);
        actions_.emplace_back([changes = *world](Test_Bench::Unit& unit) {
            if (unit.satellite)
                throw std::runtime_error("\"world\" has no meaning in a satellite");
            const auto guard = unit.unit.lock();
            change(unit.world, changes);
        });
    }
    if (const Json* satellite = keys.take("satellite"))
        actions_.push_back(satellite_action(*satellite));
    if (const Json* seen = keys.take("startracker_events"))
        actions_.push_back(startracker_action(*seen));
    const Json* const command = keys.take("command");
    const Json* const arguments = keys.take("arguments", "command", command != nullptr);
    if (command != nullptr)
        actions_.push_back(command_action(json::to_text(*command, 1000, "command"),
                                          arguments == nullptr ? Json::object() : *arguments));
    const Json* const fault = keys.take("fault");
    const Json* const probability = keys.take("probability", "fault", fault != nullptr);
    const Json* const duration = keys.take("for", "fault", fault != nullptr);
    if (fault != nullptr)
        actions_.push_back(fault_action(fault_named(json::to_text(*fault, 1000, "fault")), probability, duration));
    keys.expect_no_other();
    if (actions_.empty())
        json::fail("event", "nothing happens in it");
}

void Event::happen(Test_Bench::Unit& unit) const
{
    for (const auto& action : actions_)
        action(unit);
}

Json to_json(Test_Bench::Unit& unit)
{
    const auto guard = unit.unit.lock();
    if (!unit.satellite)
        return zavra::to_json(unit.world);
    Canned_World measured;
    measured.angular_velocity = unit.satellite->angular_velocity_radps();
    measured.magnetic_field = unit.satellite->magnetic_field_t();
    measured.sun = unit.satellite->sun_vector();
    measured.quaternion = unit.satellite->attitude();
    measured.temperature = unit.satellite->temperature_degc();
    return zavra::to_json(measured);
}

}

}
