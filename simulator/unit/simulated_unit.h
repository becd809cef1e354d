#pragma once

#include "../onboard/onboard_software.h"
#include "bus_device.h"
#include "clock.h"
#include "command_table.h"
#include "telemetry.h"
#include "unit_parts.h"
#include "world.h"

#include <memory>
#include <mutex>

namespace zavra::simulator
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
        /// How long a reply takes to prepare, by the wall's clock; a read before that is not acknowledged.
        Clock::Time latency{20};
    };

    Simulated_Unit(World& world, const Clock& clock, const Options& options);
    Simulated_Unit(World& world, const Clock& clock) : Simulated_Unit(world, clock, Options{}) {}

    /// In a Canned_World of its own, by the computer's clock.
    Simulated_Unit() : Simulated_Unit(std::make_unique<Surroundings>()) {}

    Simulated_Unit(const Simulated_Unit&) = delete;
    Simulated_Unit& operator=(const Simulated_Unit&) = delete;

    /// Takes a request frame: checks it, executes it and holds the reply for the reads that follow.
    int write(std::span<const unsigned char> bytes) override;

    /// Gives the reply to the last request; FF bytes beyond it, or without one. Where that request was one for the star
    /// tracker's native channel, its reply is given once, and each further read takes the next bytes of the native
    /// reply.
    int read(std::vector<unsigned char>& bytes) override;

    /// Executes a command without the bus: at once, uncounted, and the reply that is held for the bus stays.
    Command_Table::Outcome command(unsigned short identifier, std::span<const unsigned char> payload);

    /// Power cycle: time restarts, settings are lost.
    void reset();

    /// Has the unit's own software run, if there is one, on what the sensors gave and what was injected over it;
    /// returns what the actuators do until the next control tick. The caller holds lock().
    Actuation control_tick(const Measurements& sensed);

    std::unique_lock<std::mutex> lock() { return std::unique_lock{mutex_}; }

private:
    struct Surroundings
    {
        Canned_World world;
        Steady_Clock clock;
    };

    explicit Simulated_Unit(std::unique_ptr<Surroundings> own) : Simulated_Unit(own->world, own->clock)
    {
        own_ = std::move(own);
    }

    void execute(std::span<const unsigned char> frame);

    std::unique_ptr<Surroundings> own_;
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
    std::unique_ptr<Onboard_Software> software; ///< null for a unit that only obeys
};

}
