#pragma once

#include "bus_device.h"
#include "clock.h"
#include "command_table.h"
#include "telemetry.h"
#include "unit_parts.h"
#include "world.h"

#include <mutex>

namespace zavra
{

/// A ZAVRA-100 without hardware: the other end of the command protocol.
///
/// One door is the bus (write() and read()); the other one, in physical units, is the world that it measures and the
/// parts of the unit. A program that uses both doors from different threads holds lock() while it uses the second one.
class Simulated_Unit : public Bus_Device
{
public:
    struct Options
    {
        /// How long a reply takes to prepare; a read before that is not acknowledged.
        Clock::Time latency{20};
    };

    Simulated_Unit(World& world, const Clock& clock, const Options& options);
    Simulated_Unit(World& world, const Clock& clock) : Simulated_Unit(world, clock, Options{}) {}

    Simulated_Unit(const Simulated_Unit&) = delete;
    Simulated_Unit& operator=(const Simulated_Unit&) = delete;

    /// Takes a request frame: checks it, executes it and holds the reply for the reads that follow.
    int write(std::span<const unsigned char> bytes) override;

    /// Gives the reply to the last request; FF bytes beyond it, or without one. Where that request was one for the star
    /// tracker's native channel, its reply is given once, and each further read takes the next bytes of the native
    /// reply.
    int read(std::span<unsigned char> bytes) override;

    /// Power cycle: time restarts, settings are lost.
    void reset();

    std::unique_lock<std::mutex> lock() { return std::unique_lock{mutex_}; }

private:
    void execute(std::span<const unsigned char> frame);

    const Clock& clock_;
    const Options options_;
    std::mutex mutex_;
    Command_Table commands_;
    std::vector<Command_Table::Octets> replies_;
    bool native_channel_ = false; ///< the last request was one for the star tracker's native channel
    Clock::Time ready_{0};

public:
    Unit_Parts parts;
    Telemetry telemetry;
};

}
