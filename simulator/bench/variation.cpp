#include "variation.h"

#include "../satellite/random.h"
#include "duration.h"
#include "toml_reader.h"

#include <stdexcept>

namespace zavra::simulator
{

namespace
{

/// A stream for each key (FNV-1a), apart from those of sensors and sky.
Random random_for(unsigned long long seed, const std::string& path)
{
    unsigned long long stream = 0xCBF29CE484222325U;
    for (const char c : path)
        stream = (stream ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    return {seed, stream};
}

toml::date_time later(const toml::date_time& time, std::chrono::milliseconds by)
{
    using namespace std::chrono;
    const auto moved = sys_days(year(time.date.year) / month(time.date.month) / time.date.day) + hours(time.time.hour) +
                       minutes(time.time.minute) + seconds(time.time.second) + nanoseconds(time.time.nanosecond) + by;
    const auto day = floor<days>(moved);
    const year_month_day date(day);
    const hh_mm_ss clock(moved - day);
    return {toml::date{static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                       static_cast<unsigned>(date.day())},
            toml::time{static_cast<unsigned>(clock.hours().count()), static_cast<unsigned>(clock.minutes().count()),
                       static_cast<unsigned>(clock.seconds().count()),
                       static_cast<unsigned>(clock.subseconds().count())},
            time.offset.value_or(toml::time_offset{})};
}

}

Variation::Variation(const std::filesystem::path& file, unsigned long long seed)
    : name_("Variation " + file.string()),
      seed_(seed),
      table_(parse_toml(file, name_))
{
}

void Variation::fail(const toml::node& node, const std::string& problem) const
{
    throw std::runtime_error(name_ + ':' + std::to_string(node.source().begin.line) + ": " + problem);
}

double Variation::number(const toml::node& node) const
{
    const auto value = node.is_number() ? node.value<double>() : std::nullopt;
    if (!value || !std::isfinite(*value))
        fail(node, "expected a finite number");
    return *value;
}

std::pair<double, double> Variation::bounds(const toml::node& node) const
{
    const toml::array* const list = node.as_array();
    if (list == nullptr || list->size() != 2)
        fail(node, "expected a list of two numbers");
    const std::pair both{number(*list->get(0)), number(*list->get(1))};
    if (both.first > both.second)
        fail(node, "the first number is above the second");
    return both;
}

void Variation::apply(toml::table& satellite)
{
    apply(table_, satellite, "");
}

void Variation::apply(const toml::table& spreads, toml::table& satellite, const std::string& path)
{
    for (const auto& [key, spread] : spreads) {
        const std::string name = path + std::string(key.str());
        if (name == "event") {
            const toml::array* const events = spread.as_array();
            if (events == nullptr || !events->is_array_of_tables())
                fail(spread, "event is not a list of tables [[event]]");
            for (std::size_t i = 0; i < events->size(); ++i)
                draw_event(*events->get(i)->as_table(), i);
            continue;
        }
        if (!spread.is_table())
            fail(spread, name + " is not a way to spread a value");
        toml::node* const value = satellite.get(key.str());
        if (value == nullptr)
            fail(spread, name + " is not in the satellite's file");
        if (toml::table* const within = value->as_table())
            apply(*spread.as_table(), *within, name + '.');
        else
            draw(*spread.as_table(), *value, name);
    }
}

void Variation::draw(const toml::table& spread, toml::node& value, const std::string& path)
{
    if (spread.size() != 1)
        fail(spread, path + " has not one way to spread it");
    const std::string kind(spread.begin()->first.str());
    const toml::node& how = spread.begin()->second;
    if (kind == "any" && path == "start.attitude" && value.is_array()) {
        Random random = random_for(seed_, path);
        Eigen::Vector4d q{random.normal(), random.normal(), random.normal(), random.normal()};
        q.normalize();
        *value.as_array() = toml::array{q[0], q[1], q[2], q[3]};
        drawn_[path] = {q[0], q[1], q[2], q[3]};
    } else if (kind == "within" && value.is_date_time()) {
        Clock::Time most{};
        try {
            most = parse_duration(how.value_or(std::string()));
        } catch (const std::invalid_argument& error) {
            fail(how, error.what());
        }
        const Clock::Time by(std::llround(random_for(seed_, path).uniform() * static_cast<double>(most.count())));
        *value.as_date_time() = later(value.as_date_time()->get(), by);
        drawn_[path + "_later_s"] = static_cast<double>(by.count()) / 1000;
    } else {
        draw_numbers(kind, how, value, path);
    }
}

void Variation::draw_numbers(const std::string& kind, const toml::node& how, toml::node& value, const std::string& path)
{
    Random random = random_for(seed_, path);
    const double scale = kind == "scale" ? 1 + number(how) * random.normal() : 1;
    const auto drawn = [&](const toml::node& number_node) {
        const double mean = number(number_node);
        if (kind == "normal")
            return mean + number(how) * random.normal();
        if (kind == "scale")
            return mean * scale;
        if (kind == "factor")
            return mean * (1 + number(how) * random.normal());
        if (kind != "uniform")
            fail(how, "there is no way \"" + kind + "\" to spread " + path);
        const auto [low, high] = bounds(how);
        return low + (high - low) * random.uniform();
    };
    if (toml::array* const list = value.as_array()) {
        toml::array changed;
        Json& numbers = drawn_[path] = Json::array();
        for (const toml::node& element : *list) {
            changed.push_back(drawn(element));
            numbers.push_back(changed.back().value<double>().value());
        }
        *list = std::move(changed);
    } else if (auto* const real = value.as_floating_point()) {
        *real = drawn(value);
        drawn_[path] = real->get();
    } else {
        fail(how, path + " is no floating-point number, nor a list of numbers, in the satellite's file");
    }
}

void Variation::draw_event(const toml::table& event, std::size_t index)
{
    const std::string path = "event_" + std::to_string(index + 1);
    Random random = random_for(seed_, path);
    const bool happens = random.uniform() < (event.contains("chance") ? number(*event.get("chance")) : 1);
    Json source = json_of(event);
    source.erase("chance");
    if (const toml::node* const at = event.get("at"); at != nullptr && at->is_array()) {
        const auto [from, until] = bounds(*at);
        source["at"] = from + (until - from) * random.uniform();
    }
    drawn_[path + "_at_s"] = happens ? source.value("at", Json(0.0)) : Json();
    if (happens)
        events_.push_back(std::move(source));
}

}
