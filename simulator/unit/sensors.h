#pragma once

#include "../../protocol/sensors.h"
#include "command_table.h"
#include "unit_time.h"
#include "world.h"

#include <array>
#include <optional>

namespace zavra::simulator
{

/// The simulated unit's gyroscopes, magnetometer and sun sensor. They measure what the world gives them: correction and
/// filters are settings that are kept and change nothing; the bias calculation takes the present rate for the bias, and
/// bias removal subtracts it. An injected value stands for all later measurements, as it is, until the next reset.
class Sensors
{
public:
    struct Measurement
    {
        ZAVRA_100_Vector3_float vector;
        unsigned long long epoch_msec;
    };

    struct Gyroscope
    {
        ZAVRA_100_Gyroscope_Parameters parameters;
        ZAVRA_100_Vector3_float bias;
        bool bias_removal;
        std::optional<Measurement> injected;
    };

    struct Magnetometer
    {
        ZAVRA_100_Magnetometer_Parameters parameters;
        std::optional<Measurement> injected;
    };

    Sensors(Command_Table& commands, const Unit_Time& time, World& world);

    /// @throws Refused for a sensor that the unit does not have
    Measurement angular_velocity_radps(unsigned char gyro_index) const;
    /// @throws Refused for a sensor that the unit does not have
    Measurement magnetic_field_t(unsigned char magnetometer_index) const;
    Measurement sun_vector() const;

    void reset();

    std::array<Gyroscope, protocol::number_of_gyroscopes> gyroscopes;
    std::array<Magnetometer, protocol::number_of_magnetometers> magnetometers;
    std::optional<Measurement> injected_sun_vector;

private:
    Measurement measured(const Sensed<ZAVRA_100_Vector3_float>& sensed) const
    {
        return {sensed.value, time_.epoch_msec() - sensed.age_msec};
    }

    const Unit_Time& time_;
    const World& world_;
};

}
