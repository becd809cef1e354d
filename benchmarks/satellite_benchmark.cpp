// What a simulated satellite and its surroundings cost.

#include "simulator/bench/test_bench.h"

#include <benchmark/benchmark.h>

namespace zavra::simulator
{

namespace
{

/// A 3U with four wheels in the orbit of the ISS.
Satellite_Settings four_wheels()
{
    Satellite_Settings settings;
    settings.start_epoch_msec = 1'516'485'600'000; // 20.01.2018 22:00:00 UTC
    parse_tle("1 25544U 98067A   18020.89808844  .00002078  00000-0  38550-4 0  9992",
              "2 25544  51.6424  32.9776 0003646  28.7227  39.5332 15.54190080 95614", settings.elements);
    settings.angular_velocity_radps = {0.17, 0.17, 0.17};
    settings.inertia_kgm2 = Eigen::Vector3d(0.05, 0.042, 0.0085).asDiagonal();
    settings.gravity_gradient = true;
    settings.magnetorquers.emplace();
    for (std::size_t i = 0; i < 4; ++i)
        settings.wheels[i] = {.axis = Eigen::Vector3d(i % 2 == 0 ? 1 : -1, i < 2 ? 1 : -1, 1).normalized(),
                              .inertia_kgm2 = 2e-5,
                              .max_torque_nm = 1e-3,
                              .max_speed_radps = 800};
    return settings;
}

void tell_speed(benchmark::State& state, double seconds_per_iteration)
{
    state.counters["times_real_time"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * seconds_per_iteration, benchmark::Counter::kIsRate);
}

/// Body, wheels, torques, orbit, field, sun and eclipse at 10 Hz.
void satellite(benchmark::State& state)
{
    Satellite satellite{four_wheels()};
    Actuation actuation;
    for (Wheel_Command& wheel : actuation.wheels)
        wheel = {.kind = Wheel_Command::Kind::speed, .target = 100};
    actuation.dipole_moment_am2 = {0.1, 0.1, 0.1};
    for (auto _ : state) {
        satellite.look_around();
        satellite.act(actuation, Satellite_World::tick_length);
        satellite.advance(Satellite_World::tick_length);
    }
    benchmark::DoNotOptimize(satellite.angular_velocity_radps().norm());
    tell_speed(state, 0.1);
}

/// The same with sensors and the unit, by the agenda, as zavra-sim --run has it.
void satellite_and_unit(benchmark::State& state)
{
    Manual_Clock clock;
    Test_Bench bench{clock, {.satellite = four_wheels()}};
    for (auto _ : state) {
        clock.advance(std::chrono::seconds(1));
        bench.time.run_due();
    }
    tell_speed(state, 1);
}

/// The whole loop: determination with the filter, sensors with noise, pointing at nadir with four wheels and unloading.
void on_board_software(benchmark::State& state)
{
    Satellite_Settings settings = four_wheels();
    for (auto& gyroscope : settings.sensors.gyroscopes)
        gyroscope.noise = 1e-4;
    settings.sensors.magnetometer.noise = 5e-8;
    settings.sensors.sun_sensors.noise_rad = 0.005;
    settings.sensors.star_tracker.noise_across_rad = settings.sensors.star_tracker.noise_along_rad = 3e-5;
    Manual_Clock clock;
    Test_Bench bench{clock, {.satellite = settings}};
    Unit_Parts& parts = bench.unit().unit.parts;
    parts.startracker_orbit.load({"1 25544U 98067A   18020.89808844  .00002078  00000-0  38550-4 0  9992",
                                  "2 25544  51.6424  32.9776 0003646  28.7227  39.5332 15.54190080 95614", 1000});
    parts.modes.settings.mode = Modes::nadir;
    for (auto _ : state) {
        clock.advance(std::chrono::seconds(1));
        bench.time.run_due();
    }
    tell_speed(state, 1);
}

/// The argument is the highest degree: 13 for the satellite, 8 for on-board software.
void geomagnetic_field(benchmark::State& state)
{
    const Geomagnetic_Field field(2026.9, static_cast<int>(state.range(0)));
    const Eigen::Vector3d position_km(-1200.0, 4300.0, 5400.0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(position_km);
        benchmark::DoNotOptimize(field.at(position_km));
    }
}

void geomagnetic_coefficients(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(Geomagnetic_Field(2026.9));
}

BENCHMARK(satellite);
BENCHMARK(satellite_and_unit);
BENCHMARK(on_board_software);
BENCHMARK(geomagnetic_field)->Arg(8)->Arg(13);
BENCHMARK(geomagnetic_coefficients);

}

}
