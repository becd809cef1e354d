#pragma once

#include "leaf.h"

#include <string>
#include <vector>

namespace zavra::tools
{

/// Gathers the values of a method's arguments, and complains by name about every value that does not fit.
class Arguments
{
public:
    /// @param force  take numbers that are none: nan, inf
    explicit Arguments(const Leaves& leaves, bool force = false)
        : leaves_(leaves),
          values_(leaves.size()),
          force_(force)
    {
    }

    /// Words of a command line. "NAME=VALUE" sets one value, "NAME=V,V,..." a group of them; NAME may leave out what
    /// stands before its last parts as long as it is clear. Words without a name are the values that no name was given
    /// for, in order.
    void take_words(const std::vector<std::string>& words);

    /// An object as `--json` prints it. Members that are no arguments go by the rules of names above.
    void take_json(const Json& object);

    /// Values for whatever has not been given; what is no argument is ignored. A record may lie open in the object.
    void complete_with(const Json& object);

    bool complete() const;

    /// The names of what has not been given, with commas between them.
    std::string missing() const;

    /// What has been given.
    Json partial() const;

    /// @throws Usage_Error  naming what has not been given
    Json json() const;

private:
    void assign(std::size_t index, Json value);
    std::vector<std::size_t> assign_named(const std::string& name, const std::string& text);
    std::vector<std::string> names() const;
    std::vector<std::size_t> find(const std::string& name) const;
    std::vector<std::size_t> find_group(const std::string& name) const;

    const Leaves& leaves_;
    std::vector<Json> values_; // null: not given
    bool force_;
};

/// Reads a JSON file; "-" is standard input.
/// @throws Usage_Error  naming the file, and the place where it is not JSON
Json read_json_file(const std::string& path);

}
