#pragma once

#include "../../protocol/records/sensors.h"
#include "../satellite/measurements.h"

#include <optional>

namespace zavra::simulator
{

/// What the parameters of gyroscopes and of magnetometers have in common, as the simulated unit understands them.
struct Processing_Parameters
{
    struct Correction
    {
        Eigen::Matrix3d scale;
        Eigen::Vector3d offset;
    };

    struct Average
    {
        unsigned int measurements;
        double criterion;
    };

    struct Moving_Average
    {
        double gain;
        double criterion;
    };

    explicit Processing_Parameters(const ZAVRA_100_Gyroscope_Parameters& parameters);
    explicit Processing_Parameters(const ZAVRA_100_Magnetometer_Parameters& parameters);

    /// sensitivity * reading, turned by the mounting orientation; then, where it is on, scale * that + offset.
    Eigen::Vector3d corrected(const Eigen::Vector3d& reading) const;

    double update_interval_msec;
    double stddev; ///< Of all axes together
    Eigen::Vector3d sensitivity;
    Eigen::Matrix3d body_from_sensor; ///< The identity where the quaternion is none
    std::optional<Correction> correction;
    std::optional<Average> average;
    std::optional<Moving_Average> moving_average;

private:
    template <class Record>
    Processing_Parameters(const Record& parameters, std::optional<Moving_Average> moving);
};

/// A sensor's update interval and filters. Both filters start anew from a measurement that is further from their last
/// value than that value times their criterion and three standard deviations.
class Sensor_Filter
{
public:
    using Time = std::chrono::milliseconds;

    /// Whether the next measurement is due.
    bool due(const Processing_Parameters& parameters, Time now) const;
    void take(const Processing_Parameters& parameters, const Measurements::Vector& corrected, Time now);

    /// The last one, filtered; nothing before the first.
    const std::optional<Measurements::Vector>& output() const { return output_; }

private:
    /// The mean of each so many measurements, until the next mean; of what there is, before the first.
    Eigen::Vector3d averaged(const Eigen::Vector3d& value, const Processing_Parameters& parameters);
    /// Goes a part of the way towards each measurement.
    Eigen::Vector3d moving_averaged(const Eigen::Vector3d& value, const Processing_Parameters& parameters);

    Time updated_{0};
    std::optional<Measurements::Vector> output_;
    Eigen::Vector3d sum_ = Eigen::Vector3d::Zero();
    unsigned int summed_ = 0;
    std::optional<Eigen::Vector3d> mean_, moving_mean_;
    bool whole_mean_ = false;
};

}
