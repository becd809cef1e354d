#pragma once

#include "method.h"

#include <functional>
#include <string>

namespace zavra::tools
{

/// A unit as commands meet it. The library sends a setting once and does not read it back, so that one which the unit
/// did not take looks like any other; here the unit is asked how many commands failed, before and after.
class Unit
{
public:
    Unit(ZAVRA_100& connected, bool verify) : device(connected), verify_(verify) {}

    /// Calls a method; one that sets is verified.
    /// @throws Usage_Error  when a value does not fit
    Json call(const Method& method, const Json& arguments);

    /// Sends something that sets, and verifies it.
    /// @throws Failure  when the unit did not take it, with the reason that can be told
    void command(const std::string& what, const std::function<void(ZAVRA_100&)>& send);

    ZAVRA_100& device;

private:
    bool verify_;
};

}
