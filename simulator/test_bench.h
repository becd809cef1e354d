#pragma once

#include "agenda.h"
#include "bus_server.h"
#include "fault_injector.h"
#include "simulated_unit.h"

#include <map>
#include <memory>
#include <vector>

namespace zavra
{

/// The units of one simulated bus, each in a world of its own and with faults before it, by one clock.
///
///     Manual_Clock clock;
///     Test_Bench bench{clock};
///     bench.unit().faults.set_rate({Fault::crc, 0.05});
///     bench.time.at(Clock::Time(20'000), [&] { bench.unit().faults.inject(Fault::hang, Clock::Time(2500)); });
///     Bus_Server server{directory, "i2c-0", bench.devices()};
class Test_Bench
{
public:
    struct Options
    {
        std::vector<unsigned int> addresses{Bus_Server::default_address};
        unsigned long long seed = 0;
        double time_factor = 1;
        Simulated_Unit::Options unit{};
    };

    struct Unit
    {
        Unit(Agenda& time, Bus_Line& line, unsigned long long seed, const Simulated_Unit::Options& options)
            : unit(world, time, options),
              faults(unit, time, line, seed)
        {
        }

        Canned_World world;
        Simulated_Unit unit;
        Fault_Injector faults;
    };

    Test_Bench(const Clock& clock, const Options& options) : time(clock, options.time_factor)
    {
        for (const unsigned int address : options.addresses)
            units_.emplace(address, std::make_unique<Unit>(time, line_, options.seed + address, options.unit));
    }

    explicit Test_Bench(const Clock& clock) : Test_Bench(clock, Options{}) {}

    /// @throws std::out_of_range  when there is none at that address
    Unit& unit(unsigned int address = Bus_Server::default_address) { return *units_.at(address); }

    Bus_Server::Devices devices() const
    {
        Bus_Server::Devices devices;
        for (const auto& [address, unit] : units_)
            devices.emplace(address, &unit->faults);
        return devices;
    }

    Agenda time;

private:
    Bus_Line line_;
    std::map<unsigned int, std::unique_ptr<Unit>> units_;
};

}
