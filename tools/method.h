#pragma once

#include "leaf.h"

#include <ZAVRA_100.h>

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The methods of the device layer by name. What a method takes and gives follows from its signature, the names from
/// its command's descriptor.
namespace zavra::tools
{

struct Method
{
    std::string name;
    unsigned short identifier; ///< 0 for a method that is not one command
    std::vector<Item> argument_items;
    std::vector<Item> result_items;
    Leaves arguments;
    Leaves results;
    /// Takes the arguments and gives the results as they would travel.
    std::function<Octets(ZAVRA_100& device, const Octets& arguments)> transact;

    /// @throws std::invalid_argument  when a value does not fit; the device layer is not asked then
    Json call(ZAVRA_100& device, const Json& arguments) const;
};

/// All of them.
std::span<const Method> methods();

std::vector<std::string> method_names();

/// Upper and lower case do not matter. Null when there is no such method.
const Method* find_method(std::string_view name);

/// @throws Usage_Error  when there is no such method; names similar ones
const Method& method_named(std::string_view name);

}
