#include "test_bench.h"

namespace zavra::simulator
{

namespace
{

std::unique_ptr<Satellite_World> satellite_of(const Test_Bench::Options& options, const Agenda& time,
                                              unsigned long long seed)
{
    if (!options.satellite)
        return nullptr;
    return std::make_unique<Satellite_World>(*options.satellite, time, options.satellite->seed ^ seed << 32U);
}

}

Test_Bench::Unit::Unit(Agenda& time, Bus_Line& line, unsigned long long seed, const Options& options)
    : satellite(satellite_of(options, time, seed)),
      unit(satellite ? static_cast<World&>(*satellite) : world, time, options.unit),
      faults(unit, time, line, seed)
{
    if (satellite) {
        unit.parts.actuators.build_for(*options.satellite);
        unit.software = std::make_unique<Flight_Software>(mission_of(*options.satellite),
                                                          [this] { return unit.parts.flight_settings(); });
        unit.parts.time.set_epoch_msec(options.satellite->start_epoch_msec);
        tick_at(time, Clock::Time(0));
    }
}

void Test_Bench::Unit::tick_at(Agenda& agenda, Clock::Time when)
{
    agenda.at(when, [this, &agenda, when] {
        satellite->tick(unit);
        tick_at(agenda, when + Satellite_World::tick_length);
    });
}

}
