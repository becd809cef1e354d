#include "satellite_world.h"

#include "../../protocol/startracker_orbit.h"

namespace zavra::simulator
{

Satellite_World::Satellite_World(const Satellite_Settings& settings, const Clock& clock, unsigned long long seed)
    : satellite(settings),
      sensors(settings.sensors, seed),
      clock_(clock),
      start_(clock.now())
{
    sensors.measure(satellite);
}

void Satellite_World::tick(Simulated_Unit& unit)
{
    const auto guard = unit.lock();
    satellite.look_around();
    if (satellite.time() > Satellite::Time(0)) // measured already
        sensors.measure(satellite);
    satellite.act(unit.control_tick(sensors.measurements()), tick_length);
    observer_();
    satellite.advance(tick_length);
}

unsigned long long Satellite_World::age_msec(Clock::Time measured) const
{
    return static_cast<unsigned long long>(std::max(clock_.now() - start_ - measured, Clock::Time(0)).count());
}

Sensed<ZAVRA_100_Vector3_float> Satellite_World::sensed(const Measurements::Vector& measured) const
{
    const Eigen::Vector3f v = measured.value.cast<float>();
    return {{v.x(), v.y(), v.z()}, age_msec(measured.time)};
}

float Satellite_World::temperature_degc() const
{
    return static_cast<float>(sensors.measurements().temperature_degc);
}

Sensed<ZAVRA_100_Vector3_float> Satellite_World::gyroscope(std::size_t index) const
{
    return sensed(sensors.measurements().angular_velocity_radps.at(index));
}

Sensed<ZAVRA_100_Vector3_float> Satellite_World::magnetometer() const
{
    return sensed(sensors.measurements().magnetic_field_t);
}

Sensed<ZAVRA_100_Vector3_float> Satellite_World::sun_sensors() const
{
    return sensed(sensors.measurements().sun_vector);
}

Sensed<ZAVRA_100_Quaternion_float> Satellite_World::star_tracker() const
{
    const auto& measured = sensors.measurements().attitude;
    const Eigen::Quaternionf q = measured.value.cast<float>();
    return {{q.x(), q.y(), q.z(), q.w()}, age_msec(measured.time)};
}

std::optional<ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST> Satellite_World::startracker_events() const
{
    ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST list;
    list.header = 0;
    list.num_event = 0;
    for (const Star_Tracker::Event& event : sensors.star_tracker().events(max_events)) {
        list.xisf[list.num_event] = event.x;
        list.yisf[list.num_event] = event.y;
        ++list.num_event;
    }
    return list;
}

std::optional<ZAVRA_100_Vector6_float> Satellite_World::wheel_speeds_radps() const
{
    const auto& speeds = sensors.measurements().wheel_speed_radps;
    const auto speed = [&](std::size_t wheel) { return static_cast<float>(speeds[wheel]); };
    return ZAVRA_100_Vector6_float{speed(0), speed(1), speed(2), speed(3), speed(4), speed(5)};
}

}
