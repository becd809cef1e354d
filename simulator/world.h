#pragma once

#include "../device/records/vectors.h"

namespace zavra
{

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
