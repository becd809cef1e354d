#pragma once

#include "../satellite/sensor_suite.h"
#include "clock.h"
#include "simulated_unit.h"
#include "world.h"

#include <functional>

namespace zavra::simulator
{

/// The world of a unit that sits in a satellite: what the satellite's sensors gave at the last control tick.
class Satellite_World : public World
{
public:
    static constexpr Clock::Time tick_length = Onboard_Software::control_tick;

    /// The satellite's time starts now.
    Satellite_World(const Satellite_Settings& settings, const Clock& clock, unsigned long long seed);

    /// One control tick: sensors measure, the unit's software runs, actuators act, and the satellite moves on to the
    /// next one.
    void tick(Simulated_Unit& unit);

    /// Called in each control tick, before the satellite moves on.
    void observe(std::function<void()> observer) { observer_ = std::move(observer); }

    ZAVRA_100_Vector3_float angular_velocity_radps() const override { return gyroscope(0).value; }
    ZAVRA_100_Vector3_float magnetic_field_t() const override { return magnetometer().value; }
    ZAVRA_100_Vector3_float sun_vector() const override { return sun_sensors().value; }
    ZAVRA_100_Quaternion_float attitude() const override { return star_tracker().value; }
    float temperature_degc() const override;
    Sensed<ZAVRA_100_Vector3_float> gyroscope(std::size_t index) const override;
    Sensed<ZAVRA_100_Vector3_float> magnetometer() const override;
    Sensed<ZAVRA_100_Vector3_float> sun_sensors() const override;
    Sensed<ZAVRA_100_Quaternion_float> star_tracker() const override;
    std::optional<ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST> startracker_events() const override;
    std::optional<ZAVRA_100_Vector6_float> wheel_speeds_radps() const override;
    float wheel_power_w() const override { return static_cast<float>(satellite.wheel_power_w()); }
    float magnetorquer_duty() const override { return static_cast<float>(satellite.magnetorquer_duty()); }

    Satellite satellite;
    Sensor_Suite sensors;

private:
    unsigned long long age_msec(Clock::Time measured) const;
    Sensed<ZAVRA_100_Vector3_float> sensed(const Measurements::Vector& measured) const;

    const Clock& clock_;
    const Clock::Time start_;
    std::function<void()> observer_ = [] {};
};

}
