#pragma once

#include "doubles.h"

#include <ZAVRA_100.h>

#include <functional>

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

class Command_Test : public Platform_Test
{
protected:
    /// Runs every case on a bus that works and on one that does not.
    void check(const std::vector<Command_Case>& cases);

    ZAVRA_100 device;
};

}
