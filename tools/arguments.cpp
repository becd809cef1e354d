#include "arguments.h"
#include "check.h"
#include "failure.h"
#include "similar.h"

#include <algorithm>
#include <iostream>

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

std::ptrdiff_t line_number(const std::string& text, std::size_t position)
{
    return 1 +
           std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(std::min(position, text.size())), '\n');
}

}

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
            if (std::erase(open, named) == 0)
                throw Usage_Error(leaves_[named].path + " is given twice");
    }
    // Bytes may have blanks between them.
    while (unnamed.size() > open.size() && !open.empty() && leaves_[open.back()].kind == Leaf::Kind::bytes) {
        unnamed[open.size() - 1] += ' ' + unnamed[open.size()];
        unnamed.erase(unnamed.begin() + static_cast<std::ptrdiff_t>(open.size()));
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
        throw Usage_Error("expected a JSON object, got " + json::shown(object));
    if (object.empty())
        return;
    const Json flat = object.flatten();
    for (const auto& [pointer, value] : flat.items()) {
        const std::string name = path_of(pointer);
        const auto found = find(name);
        if (found.size() != 1)
            throw Usage_Error("\"" + name + "\" is no argument" + did_you_mean(name, names()));
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

std::string Arguments::missing() const
{
    std::string names;
    for (std::size_t i = 0; i < leaves_.size(); ++i)
        if (values_[i].is_null())
            names += (names.empty() ? "" : ", ") + leaves_[i].path;
    return names;
}

Json Arguments::json() const
{
    if (!complete())
        throw Usage_Error("no value for " + missing());
    return partial();
}

void Arguments::assign(std::size_t index, Json value)
{
    const Leaf& leaf = leaves_[index];
    check_range(leaf, value);
    if (value.is_null())
        throw Usage_Error(leaf.path + ": expected " + type_name(leaf) + ", got null");
    if (leaf.kind == Leaf::Kind::real && value.is_string() && !force_)
        throw Usage_Error(leaf.path + ": expected a number, got " + json::shown(value) +
                          "; with --force, nan, inf and -inf are sent, too");
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
        throw Usage_Error("\"" + name + "\" is no argument" + did_you_mean(name, names()));
    const auto texts = split(text, ',');
    if (texts.size() != group.size())
        throw Usage_Error(name + ": expected " + std::to_string(group.size()) +
                          " values with commas between them, got \"" + text + '"');
    for (std::size_t i = 0; i < group.size(); ++i)
        assign(group[i], parse_text(leaves_[group[i]], texts[i]));
    return group;
}

/// What an argument may be called: its whole name, or the last part of it.
std::vector<std::string> Arguments::names() const
{
    std::vector<std::string> all;
    for (const Leaf& leaf : leaves_) {
        all.push_back(leaf.path);
        all.push_back(leaf.path.substr(leaf.path.rfind('.') + 1));
    }
    return all;
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
    constexpr int deepest = 100; // what walks through values calls itself
    const auto check_depth = [](int depth, Json::parse_event_t, const Json&) {
        if (depth > deepest)
            throw Usage_Error("values are nested more than " + std::to_string(deepest) + " deep");
        return true;
    };
    const std::string text = path == "-" ? read_stream(std::cin, "standard input") : read_file(path);
    const auto fail = [&](const std::string& problem) { throw Usage_Error(path + ": " + problem); };
    try {
        return Json::parse(text, check_depth);
    } catch (const Json::out_of_range& error) {
        // "... number overflow parsing '1e400'", without the place
        const std::string message = error.what();
        const auto quote = std::min(message.find('\''), message.size() - 1);
        const std::string number = message.substr(quote + 1, message.rfind('\'') - quote - 1);
        fail("line " + std::to_string(line_number(text, text.find(number))) + ": " + number + " is out of range");
    } catch (const Json::exception& error) {
        // "[json.exception.parse_error.101] parse error at line 1, column 2: ..."
        const std::string message = error.what();
        fail(printable(message.substr(message.find("] ") + 2)));
    } catch (const Usage_Error& error) {
        fail(error.what());
    }
    return {};
}

}
