#pragma once

#include "protocol/modes.h"
#include "protocol/startracker_orbit.h"
#include "simulator/bench/satellite_file.h"
#include "simulator/bench/test_bench.h"
#include "simulator/orbit/frames.h"
#include "simulator/satellite/random.h"

#include <algorithm>
#include <cstring>
#include <numbers>
#include <type_traits>

namespace zavra::test
{

using namespace simulator;

inline constexpr double degree = std::numbers::pi / 180;
inline constexpr int orbit_s = 5680; ///< at 500 km

/// Two lines of a sun-synchronous orbit at 500 km, of the day of the example satellites.
struct Sun_Synchronous
{
    Sun_Synchronous() { line_2 += static_cast<char>('0' + sum(line_2) % 10); }

    static int sum(const std::string& line)
    {
        int sum = 0;
        for (const char c : line)
            sum += c >= '0' && c <= '9' ? c - '0' : c == '-' ? 1 : 0;
        return sum;
    }

    std::string line_1 = "1 25544U 98067A   18020.89808844  .00002078  00000-0  38550-4 0  9992";
    std::string line_2 = "2 25544  97.4000  10.0000 0010000  28.7227  39.5332 15.21900000 9561";
};

/// A satellite of the examples on that orbit, with its unit, as an application has it: orders go in over the protocol,
/// only what is asked of `satellite` is the truth.
class Rehearsal
{
public:
    /// The seed makes attitude and noise.
    Rehearsal(
        const std::string& name, unsigned long long seed,
        const std::function<void(Satellite_Settings&)>& change = [](Satellite_Settings&) {})
        : bench_(clock_, {.seed = seed, .satellite = settings(name, seed, change)})
    {
        ZAVRA_100_Orbit_TLE_Data tle{};
        const Sun_Synchronous orbit;
        orbit.line_1.copy(tle.tle_1, sizeof tle.tle_1 - 1);
        orbit.line_2.copy(tle.tle_2, sizeof tle.tle_2 - 1);
        tle.update_interval_msec = 1000;
        order(protocol::init_orbit_module, tle);
    }

    template <class Result, class... Argument>
    void order(const Command<Result(Argument...)>& command, const std::type_identity_t<Argument>&... arguments)
    {
        std::vector<unsigned char> bytes(Command<Result(Argument...)>::request_size);
        if constexpr (sizeof...(Argument) > 0)
            pack(bytes.data(), arguments...);
        if (unit.unit.command(command.identifier, bytes).status != Command_Table::Status::done)
            throw std::runtime_error(command.method);
    }

    /// Lets time pass; `each` is called every second.
    void pass(
        int seconds, const std::function<void()>& each = [] {})
    {
        for (int i = 0; i < seconds; ++i) {
            clock_.advance(std::chrono::seconds(1));
            bench_.time.run_due();
            satellite.look_around(); // it has moved on since the tick
            each();
        }
    }

    /// Between a direction in the body and one in space.
    double angle(const Eigen::Vector3d& body, const Eigen::Vector3d& inertial) const
    {
        const Eigen::Vector3d seen = satellite.in_body(inertial);
        return std::atan2(seen.cross(body).norm(), seen.dot(body)) / degree;
    }

    double rate_dps() const { return satellite.angular_velocity_radps().norm() / degree; }

    /// Of the fastest wheel, as a fraction of its maximum.
    double wheel_use() const
    {
        double most = 0;
        for (std::size_t i = 0; i < max_wheels; ++i)
            if (const auto& wheel = satellite.settings().wheels[i])
                most =
                    std::max(most, std::abs(satellite.wheel_speeds_radps()[i]) / wheel->max_speed_radps.value_or(1000));
        return most;
    }

private:
    static Satellite_Settings settings(const std::string& name, unsigned long long seed,
                                       const std::function<void(Satellite_Settings&)>& change)
    {
        auto settings = Satellite_File(ZAVRA_EXAMPLES "/satellites/" + name + ".toml").settings;
        const Sun_Synchronous orbit;
        if (parse_tle(orbit.line_1, orbit.line_2, settings.elements) != Tle_Error::none)
            throw std::logic_error("orbit");
        settings.start_epoch_msec = 1'516'485'600'000; // 20.01.2018 22:00:00 UTC
        Random random{seed, 1000};
        const Eigen::Vector3d vector = random.normal_vector();
        settings.attitude = Eigen::Quaterniond(random.normal(), vector.x(), vector.y(), vector.z()).normalized();
        settings.angular_velocity_radps.setZero();
        change(settings);
        return settings;
    }

    Manual_Clock clock_;
    Test_Bench bench_;

public:
    Test_Bench::Unit& unit = bench_.unit();
    Satellite& satellite = unit.satellite->satellite;
};

inline double percentile_95(std::vector<double> values)
{
    std::ranges::sort(values);
    return values.at(values.size() * 95 / 100);
}

// The cases of the accuracy table, each with what it measures in degrees or deg/s.

/// The rate two orbits after a separation with 10 deg/s about each axis.
inline double detumbled_dps(const std::string& name, unsigned long long seed, int seconds = 2 * orbit_s)
{
    Rehearsal run{name, seed, [&](Satellite_Settings& settings) {
                      settings.angular_velocity_radps.setConstant(10 * degree);
                      if (name == "3u")
                          settings.magnetorquers->max_dipole_moment_am2 = Eigen::Vector3d::Constant(0.2);
                  }};
    run.order(protocol::start_operationmode_detumbling, {});
    run.pass(seconds);
    return run.rate_dps();
}

/// The largest angle to the sun in the quarter of an hour that follows three orbits of sun pointing.
inline double from_sun_deg(unsigned long long seed, const ZAVRA_100_Vector3_float& line_of_sight = {1, 0, 0})
{
    Rehearsal run{"3u", seed};
    run.order(protocol::start_operationmode_sun_pointing, {line_of_sight, 0, 0});
    run.pass(3 * orbit_s);
    double most = 0;
    run.pass(900, [&] {
        most = std::max(most, run.angle(Eigen::Vector3d(line_of_sight.x, line_of_sight.y, line_of_sight.z).normalized(),
                                        run.satellite.surroundings().sun_vector));
    });
    return most;
}

struct Nadir_Result
{
    double percentile_95_deg;
    double wheel_use;
};

/// The 3U with its line of sight down; the star tracker looks away from the Earth then. Settles before it is measured.
inline Nadir_Result nadir(unsigned long long seed, bool star_tracker, int settle_s, int measure_s,
                          const Eigen::Vector3d& residual_dipole_am2 = {0.002, -0.001, 0.004})
{
    Rehearsal run{"3u", seed, [&](Satellite_Settings& settings) {
                      settings.sensors.star_tracker.failed = !star_tracker;
                      settings.residual_dipole_am2 = residual_dipole_am2;
                  }};
    run.order(protocol::start_targetpointing_nadir_mode, {star_tracker ? 0U : 1U, {0, 1, 0}, {1, 0, 0}, 0, 0, {}});
    run.pass(settle_s);
    std::vector<double> errors;
    double use = 0;
    run.pass(measure_s, [&] {
        const auto& around = run.satellite.surroundings();
        errors.push_back(std::max(run.angle({0, 1, 0}, -around.position_km),
                                  run.angle({0, 0, 1}, around.position_km.cross(around.velocity_kmps))));
        use = std::max(use, run.wheel_use());
    });
    return {percentile_95(errors), use};
}

/// The largest error towards a ground station, while it sees the satellite higher than 10 degrees.
inline double pass_over_station_deg(unsigned long long seed)
{
    Rehearsal run{"3u", seed};
    Satellite ahead{run.satellite.settings()};
    ahead.advance(std::chrono::seconds(1000));
    ahead.look_around();
    const Eigen::Vector3d below =
        teme_to_earth_fixed(julian_date(ahead.epoch_time_msec())) * ahead.surroundings().position_km;
    Geodetic_Position station = geodetic_position(below);
    station.altitude_km = 0;
    station.longitude_rad += 0.05; // not straight overhead
    run.order(protocol::start_targetpointing_earth_fix_mode, {0,
                                                              {0, 1, 0},
                                                              {1, 0, 0},
                                                              static_cast<float>(station.latitude_rad),
                                                              static_cast<float>(station.longitude_rad),
                                                              0,
                                                              0,
                                                              {}});
    double most = 0;
    const Eigen::Vector3d place = earth_fixed_position(station);
    run.pass(1600, [&] {
        const Eigen::Matrix3d to_earth = teme_to_earth_fixed(julian_date(run.satellite.epoch_time_msec()));
        const Eigen::Vector3d position = to_earth * run.satellite.surroundings().position_km;
        const Eigen::Vector3d line = place - position;
        if (-line.normalized().dot(place.normalized()) > std::sin(10 * degree))
            most = std::max(most, run.angle({0, 1, 0}, to_earth.transpose() * line));
    });
    return most;
}

/// The time in seconds from which on a turn of 90 degrees stays within 1 degree.
inline int slew_s(unsigned long long seed)
{
    Rehearsal run{"3u", seed};
    const auto attitude = [](const Eigen::Quaterniond& q) {
        Inertial_Request request{};
        request.los_vector_bf = {0, 0, 1};
        request.flight_vector_bf = {1, 0, 0};
        const Eigen::Quaternionf f = q.cast<float>();
        std::ranges::copy(f.coeffs(), request.polynomial_coeff);
        return request;
    };
    const Eigen::Quaterniond first = run.satellite.attitude();
    run.order(protocol::start_targetpointing_inertial_mode, attitude(first));
    run.pass(1200); // until the attitude is known
    Random random{seed, 1001};
    const Eigen::Quaterniond second =
        first * Eigen::Quaterniond(Eigen::AngleAxisd(90 * degree, random.normal_vector().normalized()));
    run.order(protocol::start_targetpointing_inertial_mode, attitude(second));
    int settled = 0;
    int now = 0;
    run.pass(200, [&] {
        ++now;
        if (run.satellite.attitude().angularDistance(second) > 1 * degree)
            settled = now;
    });
    return settled;
}

}
