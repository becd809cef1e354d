#include "sensors.h"

#include "../onboard/vectors.h"

namespace zavra::simulator
{

namespace
{

constexpr ZAVRA_100_Quaternion_float aligned{0, 0, 0, 1};
constexpr ZAVRA_100_Matrix3x3_float identity{1, 0, 0, 0, 1, 0, 0, 0, 1};

constexpr ZAVRA_100_Gyroscope_Parameters default_gyroscope{
    .output_type = 1,
    .sensor_stddev = {1e-4F, 1e-4F, 1e-4F},
    .sensor_sensitivity = {1, 1, 1},
    .quaternion = aligned,
    .update_interval_msec = 100,
    .sensor_correction_enable = 0,
    .correction_scale = identity,
    .correction_offset = {0, 0, 0},
    .bias_counter = 100,
    .avg_filter_enable = 0,
    .avg_filter_counter = 10,
    .avg_filter_criterion = 0.5F,
};

constexpr ZAVRA_100_Magnetometer_Parameters default_magnetometer{
    .sensor_stddev = {1e-7F, 1e-7F, 1e-7F},
    .sensor_sensitivity = {1, 1, 1},
    .quaternion = aligned,
    .update_interval_msec = 200,
    .sensor_correction_enable = 0,
    .correction_scale = identity,
    .correction_offset = {0, 0, 0},
    .avg_filter_enable = 0,
    .avg_filter_counter = 10,
    .avg_filter_criterion = 0.5F,
    .moving_avg_filter_enable = 0,
    .moving_avg_filter_gain = 0.1F,
    .moving_avg_filter_criterion = 0.5F,
};

Measurements::Vector reading(const std::optional<Sensors::Measurement>& injected, const Measurements::Vector& sensed,
                             Sensor_Filter::Time now)
{
    return injected ? Measurements::Vector{wide(injected->vector), now, true} : sensed;
}

template <class Array>
auto& chosen(Array& sensors, unsigned char index)
{
    if (index >= sensors.size())
        throw Refused("no such sensor");
    return sensors[index];
}

/// For a setter and its getter; `of` finds the record of a sensor that has the value.
template <class Value, class Find, class Record_Of_Sensor>
void keep(Command_Table& commands, const Command<void(unsigned char, Value)>& set,
          const Command<Value(unsigned char)>& get, Find of, Value Record_Of_Sensor::*value)
{
    commands.on(set, [=](unsigned char index, const Value& given) { of(index).*value = given; });
    commands.on(get, [=](unsigned char index) { return of(index).*value; });
}

template <class Flag, class Find, class Record_Of_Sensor>
void keep_switch(Command_Table& commands, const Command<void(unsigned char)>& enable,
                 const Command<void(unsigned char)>& disable, Find of, Flag Record_Of_Sensor::*flag)
{
    commands.on(enable, [=](unsigned char index) { of(index).*flag = 1; });
    commands.on(disable, [=](unsigned char index) { of(index).*flag = 0; });
}

protocol::Timed_Vector sent(const Sensors::Measurement& measurement)
{
    return {measurement.vector, measurement.epoch_msec};
}

}

Sensors::Sensors(Command_Table& commands, const Unit_Time& time, World& world) : time_(time), world_(world)
{
    using namespace protocol;
    using Index = unsigned char;
    using Vector = ZAVRA_100_Vector3_float;
    using Gyro_Parameters = ZAVRA_100_Gyroscope_Parameters;
    using Mtm_Parameters = ZAVRA_100_Magnetometer_Parameters;
    reset();

    const auto gyro = [this](Index i) -> Gyroscope& { return chosen(gyroscopes, i); };
    const auto gyro_parameters = [=](Index i) -> Gyro_Parameters& { return gyro(i).parameters; };
    commands.on(set_gyro_values, [=, this](Index i, const Vector& rate) { gyro(i).injected = measured({rate}); });
    commands.on(get_gyro_values, [this](Index i) { return sent(angular_velocity_radps(i)); });
    commands.on(start_gyro_bias_calculation, [this](Index i) { calculate_bias(chosen(gyroscopes, i), i); });
    keep(commands, set_gyro_parameters, get_gyro_parameters, gyro, &Gyroscope::parameters);
    keep(commands, set_gyro_bias_value, get_gyro_bias_value, gyro, &Gyroscope::bias);
    keep(commands, set_gyro_update_interval, get_gyro_update_interval, gyro_parameters,
         &Gyro_Parameters::update_interval_msec);
    keep_switch(commands, enable_gyro_bias_removement, disable_gyro_bias_removement, gyro, &Gyroscope::bias_removal);
    keep_switch(commands, enable_gyro_correction, disable_gyro_correction, gyro_parameters,
                &Gyro_Parameters::sensor_correction_enable);
    keep_switch(commands, enable_gyro_averaging_filter, disable_gyro_averaging_filter, gyro_parameters,
                &Gyro_Parameters::avg_filter_enable);

    const auto mtm = [this](Index i) -> Magnetometer& { return chosen(magnetometers, i); };
    const auto mtm_parameters = [=](Index i) -> Mtm_Parameters& { return mtm(i).parameters; };
    commands.on(set_magnetometer_values,
                [=, this](Index i, const Vector& field) { mtm(i).injected = measured({field}); });
    commands.on(get_magnetometer_values, [this](Index i) { return sent(magnetic_field_t(i)); });
    keep(commands, set_magnetometer_parameters, get_magnetometer_parameters, mtm, &Magnetometer::parameters);
    keep(commands, set_magnetometer_update_interval, get_magnetometer_update_interval, mtm_parameters,
         &Mtm_Parameters::update_interval_msec);
    keep_switch(commands, enable_magnetometer_correction, disable_magnetometer_correction, mtm_parameters,
                &Mtm_Parameters::sensor_correction_enable);
    keep_switch(commands, enable_magnetometer_averaging_filter, disable_magnetometer_averaging_filter, mtm_parameters,
                &Mtm_Parameters::avg_filter_enable);
    keep_switch(commands, enable_magnetometer_moving_averaging_filter, disable_magnetometer_moving_averaging_filter,
                mtm_parameters, &Mtm_Parameters::moving_avg_filter_enable);

    commands.on(set_sun_vector, [this](const Vector& vector, unsigned long long epoch_msec) {
        injected_sun_vector = Measurement{vector, epoch_msec};
    });
}

Sensors::Measurement Sensors::measured(const Measurements::Vector& output) const
{
    const auto age = static_cast<unsigned long long>((tick_ - output.time).count());
    return measured({narrow(output.value), time_.system_msec() - tick_msec_ + age});
}

/// What a gyroscope without ticks would measure, and its bias.
Eigen::Vector3d Sensors::present_rate(const Gyroscope& gyro, std::size_t index) const
{
    const auto reading = gyro.injected ? gyro.injected->vector : world_.gyroscope(index).value;
    return Processing_Parameters(gyro.parameters).corrected(wide(reading));
}

Sensors::Measurement Sensors::angular_velocity_radps(unsigned char gyro_index) const
{
    const Gyroscope& gyro = chosen(gyroscopes, gyro_index);
    if (gyro.filter.output() && !gyro.injected)
        return measured(*gyro.filter.output());
    const Eigen::Vector3d rate = present_rate(gyro, gyro_index);
    const auto unbiased = narrow(gyro.bias_removal ? Eigen::Vector3d(rate - wide(gyro.bias)) : rate);
    return gyro.injected ? Measurement{unbiased, gyro.injected->epoch_msec}
                         : measured({unbiased, world_.gyroscope(gyro_index).age_msec});
}

Sensors::Measurement Sensors::magnetic_field_t(unsigned char magnetometer_index) const
{
    const Magnetometer& magnetometer = chosen(magnetometers, magnetometer_index);
    const auto corrected = [&](const ZAVRA_100_Vector3_float& reading) {
        return narrow(Processing_Parameters(magnetometer.parameters).corrected(wide(reading)));
    };
    if (const auto& injected = magnetometer.injected)
        return {corrected(injected->vector), injected->epoch_msec};
    if (const auto& output = magnetometer.filter.output())
        return measured(*output);
    const auto sensed = world_.magnetometer();
    return measured({corrected(sensed.value), sensed.age_msec});
}

Sensors::Measurement Sensors::sun_vector() const
{
    return injected_sun_vector ? *injected_sun_vector : measured(world_.sun_sensors());
}

void Sensors::calculate_bias(Gyroscope& gyro, std::size_t index)
{
    if (gyro.filter.output())
        gyro.bias_calculation = Bias_Calculation{};
    else
        gyro.bias = narrow(present_rate(gyro, index));
}

Measurements Sensors::measurements(const Measurements& sensed)
{
    Measurements seen = sensed;
    tick_ = sensed.time;
    tick_msec_ = time_.system_msec();
    for (std::size_t i = 0; i < gyroscopes.size(); ++i) {
        Gyroscope& gyro = gyroscopes[i];
        auto measurement = reading(gyro.injected, sensed.angular_velocity_radps[i], tick_);
        if (const Processing_Parameters parameters(gyro.parameters); gyro.filter.due(parameters, tick_)) {
            measurement.value = parameters.corrected(measurement.value);
            if (gyro.bias_calculation && measurement.valid)
                gyro.sum_up_bias(measurement.value);
            if (gyro.bias_removal)
                measurement.value -= wide(gyro.bias);
            gyro.filter.take(parameters, measurement, tick_);
        }
        seen.angular_velocity_radps[i] = *gyro.filter.output();
    }
    Magnetometer& magnetometer = magnetometers[0];
    auto measurement = reading(magnetometer.injected, sensed.magnetic_field_t, tick_);
    if (const Processing_Parameters parameters(magnetometer.parameters); magnetometer.filter.due(parameters, tick_)) {
        measurement.value = parameters.corrected(measurement.value);
        magnetometer.filter.take(parameters, measurement, tick_);
    }
    seen.magnetic_field_t = *magnetometer.filter.output();
    seen.sun_vector = reading(injected_sun_vector, sensed.sun_vector, tick_);
    return seen;
}

void Sensors::Gyroscope::sum_up_bias(const Eigen::Vector3d& rate)
{
    bias_calculation->sum += rate;
    ++bias_calculation->measurements;
    if (bias_calculation->measurements < parameters.bias_counter)
        return;
    bias = narrow(bias_calculation->sum / bias_calculation->measurements);
    bias_calculation.reset();
}

void Sensors::reset()
{
    gyroscopes.fill({.parameters = default_gyroscope, .bias = {0, 0, 0}, .bias_removal = false});
    magnetometers.fill({.parameters = default_magnetometer});
    injected_sun_vector.reset();
}

}
