#pragma once

#include "../unit/satellite_world.h"
#include "../unit/simulated_unit.h"
#include "agenda.h"
#include "bus_server.h"
#include "fault_injector.h"

#include <map>
#include <memory>
#include <vector>

namespace zavra::simulator
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
        std::optional<Satellite_Settings> satellite{}; ///< One like it for each unit
    };

    struct Unit
    {
        Unit(Agenda& time, Bus_Line& line, unsigned long long seed, const Options& options);

        Canned_World world; ///< What the unit measures without a satellite
        std::unique_ptr<Satellite_World> satellite;
        Simulated_Unit unit;
        Fault_Injector faults;

    private:
        void tick_at(Agenda& agenda, Clock::Time when);
    };

    Test_Bench(const Clock& clock, const Options& options) : time(clock, options.time_factor)
    {
        for (const unsigned int address : options.addresses)
            units_.emplace(address, std::make_unique<Unit>(time, line_, options.seed + address, options));
    }

    explicit Test_Bench(const Clock& clock) : Test_Bench(clock, Options{}) {}

    /// @throws std::out_of_range  when there is none at that address
    Unit& unit(unsigned int address = Bus_Server::default_address) { return *units_.at(address); }

    std::vector<unsigned int> addresses() const
    {
        std::vector<unsigned int> addresses;
        for (const auto& [address, unit] : units_)
            addresses.push_back(address);
        return addresses;
    }

    Bus_Server::Devices devices() const
    {
        Bus_Server::Devices devices;
        for (const auto& [address, unit] : units_)
            devices.emplace(address, &unit->faults);
        return devices;
    }

    bool has_satellite() const { return units_.begin()->second->satellite != nullptr; }

    Agenda time;

private:
    Bus_Line line_;
    std::map<unsigned int, std::unique_ptr<Unit>> units_;
};

}
