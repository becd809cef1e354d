#include "toml_reader.h"

#include <chrono>
#include <cmath>
#include <stdexcept>

namespace zavra::simulator
{

toml::table parse_toml(const std::filesystem::path& file, const std::string& name)
try {
    return toml::parse_file(file.string());
} catch (const toml::parse_error& error) {
    const auto line = error.source().begin.line;
    throw std::runtime_error(name + (line == 0 ? "" : ':' + std::to_string(line)) + ": " +
                             std::string(error.description()));
}

Json json_of(const toml::node& node)
{
    if (const auto* table = node.as_table()) {
        Json object = Json::object();
        for (const auto& [key, value] : *table)
            object[std::string(key.str())] = json_of(value);
        return object;
    }
    if (const auto* array = node.as_array()) {
        Json list = Json::array();
        for (const auto& value : *array)
            list.push_back(json_of(value));
        return list;
    }
    if (const auto* text = node.as_string())
        return text->get();
    if (const auto* integer = node.as_integer())
        return integer->get();
    if (const auto* number = node.as_floating_point())
        return json::number(number->get());
    if (const auto* boolean = node.as_boolean())
        return boolean->get();
    throw std::invalid_argument("dates and times have no meaning here");
}

void Toml_Reader::fail(const std::string& problem, const std::string& key) const
{
    const toml::node* node = table_.get(key);
    throw std::runtime_error(place(node == nullptr ? table_ : *node) + problem);
}

void Toml_Reader::expected(const std::string& what, const std::string& key) const
{
    fail(full_name(key) + (table_.contains(key) ? " is not " : " is missing: ") + what, key);
}

const toml::node* Toml_Reader::take(const std::string& key)
{
    taken_.insert(key);
    return table_.get(key);
}

Toml_Reader Toml_Reader::within(const std::string& key)
{
    static const toml::table none;
    const toml::node* node = take(key);
    if (node != nullptr && !node->is_table())
        expected("a table", key);
    return {node == nullptr ? none : *node->as_table(), file_, full_name(key)};
}

std::optional<double> Toml_Reader::number(const std::string& key)
{
    const toml::node* node = take(key);
    if (node == nullptr)
        return std::nullopt;
    const auto value = node->is_number() ? node->value<double>() : std::nullopt;
    if (!value || !std::isfinite(*value))
        expected("a finite number", key);
    return value;
}

std::optional<double> Toml_Reader::positive(const std::string& key)
{
    const auto value = number(key);
    if (value && !(*value > 0))
        expected("a number above 0", key);
    return value;
}

double Toml_Reader::not_negative(const std::string& key, double otherwise)
{
    const double value = number(key).value_or(otherwise);
    if (value < 0)
        expected("a number of 0 or more", key);
    return value;
}

bool Toml_Reader::flag(const std::string& key, bool otherwise)
{
    const toml::node* node = take(key);
    if (node != nullptr && !node->is_boolean())
        expected("true or false", key);
    return node == nullptr ? otherwise : node->as_boolean()->get();
}

unsigned long long Toml_Reader::whole_number(const std::string& key, unsigned long long otherwise)
{
    const toml::node* node = take(key);
    if (node != nullptr && (!node->is_integer() || node->as_integer()->get() < 0))
        expected("a whole number of 0 or more", key);
    return node == nullptr ? otherwise : static_cast<unsigned long long>(node->as_integer()->get());
}

std::vector<double> Toml_Reader::numbers(const std::string& key)
{
    const toml::node* node = take(key);
    if (node == nullptr)
        return {};
    if (!node->is_array())
        expected("a list of numbers", key);
    std::vector<double> values;
    for (const toml::node& element : *node->as_array()) {
        values.push_back(element.is_number() ? element.value<double>().value() : std::nan(""));
        if (!std::isfinite(values.back()))
            expected("a list of finite numbers", key);
    }
    return values;
}

std::optional<Eigen::Vector3d> Toml_Reader::vector(const std::string& key)
{
    if (!has(key))
        return std::nullopt;
    const auto values = numbers(key);
    if (values.size() != 3)
        expected("a list of 3 numbers", key);
    return Eigen::Vector3d(values[0], values[1], values[2]);
}

std::optional<Eigen::Vector3d> Toml_Reader::unit_vector(const std::string& key)
{
    const auto value = vector(key);
    if (value && !(value->norm() > 0))
        expected("a direction: its length is 0", key);
    return value ? std::optional<Eigen::Vector3d>(value->stableNormalized()) : std::nullopt;
}

std::vector<std::string> Toml_Reader::texts(const std::string& key)
{
    const toml::node* node = take(key);
    if (node == nullptr || !node->is_array())
        expected("a list of texts", key);
    std::vector<std::string> values;
    for (const toml::node& element : *node->as_array()) {
        if (!element.is_string())
            expected("a list of texts", key);
        values.push_back(element.as_string()->get());
    }
    return values;
}

unsigned long long Toml_Reader::time(const std::string& key)
{
    using namespace std::chrono;
    const toml::node* node = take(key);
    if (node == nullptr || !node->is_date_time() || !node->as_date_time()->get().offset)
        expected("a time with its zone, like 2026-11-21T12:00:00Z", key);
    const toml::date_time& given = node->as_date_time()->get();
    const sys_days day = year(given.date.year) / month(given.date.month) / given.date.day;
    const auto since_1970 = duration_cast<milliseconds>(
        day.time_since_epoch() + hours(given.time.hour) + minutes(given.time.minute - given.offset->minutes) +
        seconds(given.time.second) + nanoseconds(given.time.nanosecond));
    if (since_1970.count() < 0)
        expected("a time after 1970", key);
    return static_cast<unsigned long long>(since_1970.count());
}

void Toml_Reader::finish() const
{
    for (const auto& [key, value] : table_)
        if (!taken_.contains(key.str()))
            throw std::runtime_error(file_ + ':' + std::to_string(key.source().begin.line) + ": there is no key " +
                                     full_name(std::string(key.str())));
}

}
