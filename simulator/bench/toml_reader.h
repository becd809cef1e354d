#pragma once

#include "../../catalogue/json.h"

#include <Eigen/Core>

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <toml++/toml.h>
#include <vector>

namespace zavra::simulator
{

/// A file's tables.
/// @param name  of the file, for messages
/// @throws std::runtime_error  with the line, when it cannot be read
toml::table parse_toml(const std::filesystem::path& file, const std::string& name);

/// @throws std::invalid_argument  for dates and times
Json json_of(const toml::node& node);

/// A table of a TOML file, read key by key; what nobody asked for is an error. Errors are std::runtime_error with file
/// and line.
class Toml_Reader
{
public:
    Toml_Reader(const toml::table& table, std::string file, std::string path = "")
        : table_(table),
          file_(std::move(file)),
          path_(std::move(path))
    {
    }

    /// Of the file and the place in it, for messages.
    std::string place(const toml::node& node) const
    {
        const auto line = node.source().begin.line; // 0 for what is not there
        return file_ + (line == 0 ? "" : ':' + std::to_string(line)) + ": ";
    }
    [[noreturn]] void fail(const std::string& problem, const std::string& key = "") const;

    bool has(const std::string& key) const { return table_.contains(key); }
    std::string place_of(const std::string& key) const { return place(*table_.get(key)); }

    /// A table within, empty where there is none.
    Toml_Reader within(const std::string& key);

    std::optional<double> number(const std::string& key);
    std::optional<double> positive(const std::string& key);
    double not_negative(const std::string& key, double otherwise = 0);
    bool flag(const std::string& key, bool otherwise);
    unsigned long long whole_number(const std::string& key, unsigned long long otherwise);
    std::vector<double> numbers(const std::string& key);
    std::optional<Eigen::Vector3d> vector(const std::string& key);
    std::optional<Eigen::Vector3d> unit_vector(const std::string& key);
    std::vector<std::string> texts(const std::string& key);
    /// In milliseconds since 01.01.1970 0:00:00 UTC.
    unsigned long long time(const std::string& key);

    /// @throws std::runtime_error  for a key that was not read
    void finish() const;

private:
    const toml::node* take(const std::string& key);
    [[noreturn]] void expected(const std::string& what, const std::string& key) const;
    std::string full_name(const std::string& key) const { return path_.empty() ? key : path_ + '.' + key; }

    const toml::table& table_;
    std::string file_;
    std::string path_;
    std::set<std::string, std::less<>> taken_;
};

}
