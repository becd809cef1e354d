#include "satellite_event.h"

#include <cmath>
#include <stdexcept>

namespace zavra::simulator
{

namespace
{

using Action = std::function<void(Satellite_World&)>;

double finite(const Json& value, const std::string& where)
{
    const double number = json::to_number(value, where);
    if (!std::isfinite(number))
        json::fail(where, "expected a finite number, got " + json::shown(value));
    return number;
}

Eigen::Vector3d vector(const Json& value, const std::string& where)
{
    json::expect_array(value, 3, where);
    return {finite(value[0], where), finite(value[1], where), finite(value[2], where)};
}

bool flag(const Json& value, const std::string& where)
{
    if (!value.is_boolean())
        json::fail(where, "expected true or false, got " + json::shown(value));
    return value.get<bool>();
}

Clock::Time duration(const Json& change)
{
    if (!change.contains("for"))
        return std::chrono::hours(24 * 365 * 1000);
    const double seconds = finite(change["for"], "for");
    if (!(seconds >= 0 && seconds <= 1e12))
        json::fail("for", "expected a number of seconds, got " + json::shown(change["for"]));
    return Clock::Time(std::llround(1000 * seconds));
}

std::size_t wheel_named(const Json& name)
{
    const std::string names = "xyzuvw";
    const std::string text = json::to_text(name, 1000, "wheel");
    const std::size_t index = text.size() == 1 ? names.find(text) : std::string::npos;
    if (index == std::string::npos)
        json::fail("wheel", "expected x, y, z, u, v or w, got " + json::shown(name));
    return index;
}

Action on_sensor(const std::string& sensor, const Json& change)
{
    const bool all = sensor == "sun_sensors" || sensor == "star_tracker";
    if (change.contains("fails")) {
        const bool fails = flag(change["fails"], "fails");
        if (sensor == "star_tracker")
            return [=](Satellite_World& world) { world.sensors.settings.star_tracker.failed = fails; };
        if (sensor == "sun_sensors")
            return [=](Satellite_World& world) { world.sensors.settings.sun_sensors.failed.fill(fails); };
    }
    const std::size_t gyroscope = sensor.starts_with("gyroscope_") && sensor.size() == 11
                                      ? static_cast<std::size_t>(sensor.back() - '1')
                                      : max_gyroscopes;
    if (sensor != "magnetometer" && gyroscope >= max_gyroscopes && !all)
        json::fail("sensor", "there is no \"" + sensor + '"');
    const auto on_vector_sensor = [=](auto effect) {
        return [=](Satellite_World& world) {
            Sensor_Settings& settings = world.sensors.settings;
            effect(gyroscope < max_gyroscopes ? settings.gyroscopes[gyroscope] : settings.magnetometer);
        };
    };
    if (!all && change.contains("fails"))
        return on_vector_sensor(
            [fails = flag(change["fails"], "fails")](Vector_Sensor_Settings& s) { s.failed = fails; });
    if (!all && change.contains("bias"))
        return on_vector_sensor([bias = vector(change["bias"], "bias")](Vector_Sensor_Settings& s) { s.bias = bias; });
    if (change.contains("noise")) {
        const double noise = finite(change["noise"], "noise");
        if (sensor == "star_tracker")
            return [=](Satellite_World& world) {
                auto& tracker = world.sensors.settings.star_tracker;
                tracker.noise_across_rad = tracker.noise_along_rad = noise;
            };
        if (sensor == "sun_sensors")
            return [=](Satellite_World& world) { world.sensors.settings.sun_sensors.noise_rad = noise; };
        return on_vector_sensor([noise](Vector_Sensor_Settings& s) { s.noise = noise; });
    }
    json::fail("sensor", "expected \"fails\", \"noise\", or \"bias\" of a gyroscope or the magnetometer");
}

Action action(const Json& change)
{
    json::expect_object(change, "satellite");
    const auto expect_keys = [&](std::size_t number) {
        if (change.size() != number)
            json::fail("satellite", "has keys that have no meaning together: " + json::shown(change));
    };
    if (change.contains("torque_nm")) {
        expect_keys(change.contains("for") ? 2 : 1);
        return [torque = vector(change["torque_nm"], "torque_nm"), length = duration(change)](Satellite_World& world) {
            world.satellite.add_torque(torque, length);
        };
    }
    if (change.contains("angular_velocity_radps")) {
        expect_keys(1);
        return [rate = vector(change["angular_velocity_radps"], "angular_velocity_radps")](Satellite_World& world) {
            world.satellite.set_angular_velocity(rate);
        };
    }
    expect_keys(2);
    if (change.contains("sensor"))
        return on_sensor(json::to_text(change["sensor"], 1000, "sensor"), change);
    return [wheel = wheel_named(json::member(change, "wheel", "satellite")),
            sticks = flag(json::member(change, "sticks", "satellite"), "sticks")](Satellite_World& world) {
        world.satellite.stick_wheel(wheel, sticks);
    };
}

}

std::function<void(Test_Bench::Unit&)> satellite_action(const Json& change)
{
    return [act = action(change)](Test_Bench::Unit& bench_unit) {
        if (!bench_unit.satellite)
            throw std::runtime_error("the unit has no satellite");
        const auto guard = bench_unit.unit.lock();
        act(*bench_unit.satellite);
    };
}

}
