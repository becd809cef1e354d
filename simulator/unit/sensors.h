#pragma once

#include "../../protocol/sensors.h"
#include "command_table.h"
#include "sensor_processing.h"
#include "unit_time.h"
#include "world.h"

#include <array>
#include <optional>

namespace zavra::simulator
{

/// The simulated unit's gyroscopes, magnetometer and sun sensor. What they measure, or what was injected for it until
/// the next reset, is corrected, has the bias removed and is filtered by the sensor's parameters, which
/// Processing_Parameters and Sensor_Filter tell of; sensor_stddev is for the filters, output_type is only kept.
///
/// The bias calculation takes the mean of the next bias_counter measurements for the bias.
///
/// In a satellite they measure at control ticks. Without one they measure when somebody asks, so that intervals,
/// averages and counters are of no matter.
class Sensors
{
public:
    struct Measurement
    {
        ZAVRA_100_Vector3_float vector;
        unsigned long long epoch_msec;
    };

    struct Bias_Calculation
    {
        Eigen::Vector3d sum = Eigen::Vector3d::Zero();
        unsigned int measurements = 0;
    };

    struct Gyroscope
    {
        ZAVRA_100_Gyroscope_Parameters parameters;
        ZAVRA_100_Vector3_float bias;
        bool bias_removal;
        std::optional<Measurement> injected{};
        Sensor_Filter filter{};
        std::optional<Bias_Calculation> bias_calculation{};

        void sum_up_bias(const Eigen::Vector3d& rate);
    };

    struct Magnetometer
    {
        ZAVRA_100_Magnetometer_Parameters parameters;
        std::optional<Measurement> injected{};
        Sensor_Filter filter{};
    };

    Sensors(Command_Table& commands, const Unit_Time& time, World& world);

    /// @throws Refused for a sensor that the unit does not have
    Measurement angular_velocity_radps(unsigned char gyro_index) const;
    /// @throws Refused for a sensor that the unit does not have
    Measurement magnetic_field_t(unsigned char magnetometer_index) const;
    Measurement sun_vector() const;

    /// One control tick: makes of what the sensors gave what the unit's software gets.
    Measurements measurements(const Measurements& sensed);

    void reset();

    std::array<Gyroscope, protocol::number_of_gyroscopes> gyroscopes;
    std::array<Magnetometer, protocol::number_of_magnetometers> magnetometers;
    std::optional<Measurement> injected_sun_vector;

private:
    void calculate_bias(Gyroscope& gyro, std::size_t index);
    Eigen::Vector3d present_rate(const Gyroscope& gyro, std::size_t index) const;
    Measurement measured(const Sensed<ZAVRA_100_Vector3_float>& sensed) const
    {
        return {sensed.value, time_.epoch_msec() - sensed.age_msec};
    }
    Measurement measured(const Measurements::Vector& output) const;

    const Unit_Time& time_;
    const World& world_;
    Sensor_Filter::Time tick_{0};      // the last one, in the time of measurements
    unsigned long long tick_msec_ = 0; // the same in the unit's system time
};

}
