#pragma once

#include "stop.h"

#include <ZAVRA_100.h>

#include <memory>
#include <string>
#include <vector>

namespace zavra::tools
{

struct Target
{
    std::string bus = "i2c-0";
    unsigned int address = 10;
    std::string bus_directory; ///< empty: where the platform looks by itself
    bool simulate = false;
    bool dry_run = false;
};

/// A connection to a unit: to one on a bus, to a simulated unit that lives as long as the session, or, in a dry run, to
/// something that takes every frame and answers none. In a session, signals that would stop the program wait.
class Session
{
public:
    /// @throws Usage_Error  when this build has no simulated bus and is asked for one
    /// @throws Failure      when the bus cannot be opened
    explicit Session(const Target& target);
    ~Session();

    ZAVRA_100& device() { return *device_; }

    /// The frames that a dry run sent so far.
    std::vector<std::vector<unsigned char>> frames() const;

private:
    class Private_Bus;

    Held_Signals signals_;
    std::unique_ptr<Private_Bus> bus_;
    std::unique_ptr<ZAVRA_100> device_;
};

}
