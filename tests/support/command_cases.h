#pragma once

#include "doubles.h"

#include <ZAVRA_100.h>

#include <functional>
#include <tuple>
#include <type_traits>

/// Tables of commands: the frame each must put on the bus, the response it is given, and the words of its failure.
namespace zavra::test
{

struct Command_Case
{
    std::string name;
    std::function<void(ZAVRA_100&)> call; ///< may hold expectations on what comes back
    std::string frame;                    ///< header and payload, without the CRC
    std::string response;                 ///< payload of the response; empty for a command without one
    std::string action;                   ///< "Set Epoch Time" of "Failed to Set Epoch Time ("
    std::vector<std::string> dumped = {}; ///< its own debug lines; not compared when empty
};

/// Calls a getter; the case's dump shows what it read.
template <class... Parameter, class... Argument>
std::function<void(ZAVRA_100&)> read(void (ZAVRA_100::*getter)(Parameter...), Argument... arguments)
{
    using Value = std::remove_pointer_t<std::tuple_element_t<sizeof...(Argument), std::tuple<Parameter...>>>;
    return [=](ZAVRA_100& device) {
        Value value;
        (device.*getter)(arguments..., &value);
    };
}

class Command_Test : public Platform_Test
{
protected:
    /// Runs every case on a bus that works and on one that does not.
    void check(const std::vector<Command_Case>& cases);

    ZAVRA_100 device;
};

}
