#pragma once

#include "../../protocol/records/startracker_orbit.h"

#include <cstddef>
#include <optional>

namespace zavra::simulator
{

/// What a sensor gave last, and how long ago.
template <class Value>
struct Sensed
{
    Value value;
    unsigned long long age_msec = 0;
};

/// What the simulated unit measures. Vectors are in the body frame.
class World
{
public:
    virtual ~World() = default;
    virtual ZAVRA_100_Vector3_float angular_velocity_radps() const = 0;
    virtual ZAVRA_100_Vector3_float magnetic_field_t() const = 0;
    virtual ZAVRA_100_Vector3_float sun_vector() const = 0;
    /// Inertial frame to body frame.
    virtual ZAVRA_100_Quaternion_float attitude() const = 0;
    virtual float temperature_degc() const = 0;

    // Where sensors differ, or measure from time to time.
    virtual Sensed<ZAVRA_100_Vector3_float> gyroscope(std::size_t) const { return {angular_velocity_radps()}; }
    virtual Sensed<ZAVRA_100_Vector3_float> magnetometer() const { return {magnetic_field_t()}; }
    virtual Sensed<ZAVRA_100_Vector3_float> sun_sensors() const { return {sun_vector()}; }
    virtual Sensed<ZAVRA_100_Quaternion_float> star_tracker() const { return {attitude()}; }

    // Nothing where nothing acts on anything.
    virtual std::optional<ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST> startracker_events() const { return {}; }
    virtual std::optional<ZAVRA_100_Vector6_float> wheel_speeds_radps() const { return {}; }
    virtual float wheel_power_w() const { return 0; }
    virtual float magnetorquer_duty() const { return 0; } ///< The part of the time in which their currents flow
};

/// Values that stay as they are set; the defaults are a small satellite that turns slowly in low Earth orbit.
struct Canned_World : World
{
    ZAVRA_100_Vector3_float angular_velocity{0.002F, -0.0011F, 0.0005F};
    ZAVRA_100_Vector3_float magnetic_field{18.2e-6F, -7.4e-6F, 33.9e-6F};
    ZAVRA_100_Vector3_float sun{0.6F, 0.0F, 0.8F};
    ZAVRA_100_Quaternion_float quaternion{0.0F, 0.0F, 0.0F, 1.0F};
    float temperature = 21.0F;

    ZAVRA_100_Vector3_float angular_velocity_radps() const override { return angular_velocity; }
    ZAVRA_100_Vector3_float magnetic_field_t() const override { return magnetic_field; }
    ZAVRA_100_Vector3_float sun_vector() const override { return sun; }
    ZAVRA_100_Quaternion_float attitude() const override { return quaternion; }
    float temperature_degc() const override { return temperature; }
};

}
