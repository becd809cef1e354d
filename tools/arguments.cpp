#include "arguments.h"
#include "check.h"
#include "failure.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>

namespace zavra::tools
{

namespace
{

/// Whether `path` is `name`, or ends with it behind a dot.
bool names_leaf(const std::string& path, const std::string& name)
{
    return path == name || path.ends_with('.' + name);
}

/// Whether `path` leads into a group called `name`.
bool names_group(const std::string& path, const std::string& name)
{
    for (auto at = path.find(name); at != std::string::npos; at = path.find(name, at + 1)) {
        const auto end = at + name.size();
        const bool begins = at == 0 || path[at - 1] == '.';
        if (begins && end < path.size() && (path[end] == '.' || path[end] == '['))
            return true;
    }
    return false;
}

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts{""};
    for (const char c : text) {
        if (c == separator)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

std::string path_of(const std::string& pointer)
{
    std::string path;
    for (const std::string& part : split(pointer.substr(1), '/')) {
        if (!part.empty() && part.find_first_not_of("0123456789") == std::string::npos)
            path += '[' + part + ']';
        else
            path += (path.empty() ? "" : ".") + part;
    }
    return path;
}

}

Arguments::Arguments(const Leaves& leaves) : leaves_(leaves), values_(leaves.size()) {}

void Arguments::take_words(const std::vector<std::string>& words)
{
    std::vector<std::size_t> open; // what words without a name may mean
    for (std::size_t i = 0; i < leaves_.size(); ++i)
        open.push_back(i);
    std::vector<std::string> unnamed;
    for (const std::string& word : words) {
        const auto equals = word.find('=');
        if (equals == std::string::npos) {
            unnamed.push_back(word);
            continue;
        }
        for (const std::size_t named : assign_named(word.substr(0, equals), word.substr(equals + 1)))
            std::erase(open, named);
    }
    if (unnamed.size() > open.size())
        throw Usage_Error("\"" + unnamed[open.size()] + "\" is one value too many" +
                          (leaves_.empty() ? "; no values are expected" : ""));
    for (std::size_t i = 0; i < unnamed.size(); ++i)
        assign(open[i], parse_text(leaves_[open[i]], unnamed[i]));
}

void Arguments::take_json(const Json& object)
{
    if (!object.is_object())
        throw Usage_Error("expected a JSON object, got " + object.dump());
    if (object.empty())
        return;
    const Json flat = object.flatten();
    for (const auto& [pointer, value] : flat.items()) {
        const std::string name = path_of(pointer);
        const auto found = find(name);
        if (found.size() != 1)
            throw Usage_Error("\"" + name + "\" is no argument");
        assign(found.front(), value);
    }
}

void Arguments::complete_with(const Json& object)
{
    for (std::size_t i = 0; i < leaves_.size(); ++i) {
        const std::string& pointer = leaves_[i].pointer;
        for (const std::string& place : {pointer, pointer.substr(std::min(pointer.find('/', 1), pointer.size()))}) {
            const Json::json_pointer found(place);
            if (values_[i].is_null() && !place.empty() && object.contains(found))
                values_[i] = object.at(found);
        }
    }
}

bool Arguments::complete() const
{
    return std::none_of(values_.begin(), values_.end(), [](const Json& value) { return value.is_null(); });
}

Json Arguments::partial() const
{
    Json object = Json::object();
    for (std::size_t i = 0; i < leaves_.size(); ++i)
        if (!values_[i].is_null())
            object[Json::json_pointer(leaves_[i].pointer)] = values_[i];
    return object;
}

Json Arguments::json() const
{
    std::string missing;
    for (std::size_t i = 0; i < leaves_.size(); ++i)
        if (values_[i].is_null())
            missing += (missing.empty() ? "" : ", ") + leaves_[i].path;
    if (!missing.empty())
        throw Usage_Error("no value for " + missing);
    return partial();
}

void Arguments::assign(std::size_t index, Json value)
{
    const Leaf& leaf = leaves_[index];
    const bool too_large = leaf.kind == Leaf::Kind::real && leaf.size == 32 && value.is_number() &&
                           std::abs(value.get<double>()) > std::numeric_limits<float>::max();
    if (too_large)
        throw Usage_Error(leaf.path + ": " + value.dump() + " is out of range");
    if (value.is_null())
        throw Usage_Error(leaf.path + ": expected " + type_name(leaf) + ", got null");
    values_[index] = std::move(value);
}

std::vector<std::size_t> Arguments::assign_named(const std::string& name, const std::string& text)
{
    const auto found = find(name);
    if (found.size() > 1)
        throw Usage_Error("\"" + name + "\" may be " + leaves_[found[0]].path + " or " + leaves_[found[1]].path);
    if (found.size() == 1) {
        assign(found.front(), parse_text(leaves_[found.front()], text));
        return found;
    }

    const auto group = find_group(name);
    if (group.empty())
        throw Usage_Error("\"" + name + "\" is no argument");
    const auto texts = split(text, ',');
    if (texts.size() != group.size())
        throw Usage_Error(name + ": expected " + std::to_string(group.size()) +
                          " values with commas between them, got \"" + text + '"');
    for (std::size_t i = 0; i < group.size(); ++i)
        assign(group[i], parse_text(leaves_[group[i]], texts[i]));
    return group;
}

std::vector<std::size_t> Arguments::find(const std::string& name) const
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < leaves_.size(); ++i) {
        if (leaves_[i].path == name)
            return {i};
        if (names_leaf(leaves_[i].path, name))
            found.push_back(i);
    }
    return found;
}

std::vector<std::size_t> Arguments::find_group(const std::string& name) const
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < leaves_.size(); ++i)
        if (names_group(leaves_[i].path, name))
            found.push_back(i);
    return found;
}

Json read_json_file(const std::string& path)
{
    try {
        return path == "-" ? Json::parse(std::cin) : Json::parse(read_file(path));
    } catch (const Json::parse_error& error) {
        const std::string text = error.what();
        const auto detail = text.find("parse error");
        throw Usage_Error(path + ": " + (detail == std::string::npos ? text : text.substr(detail)));
    }
}

}
