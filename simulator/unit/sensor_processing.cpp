#include "sensor_processing.h"

#include "../onboard/vectors.h"
#include "../satellite/attitude.h"

namespace zavra::simulator
{

namespace
{

Eigen::Matrix3d matrix_of(const ZAVRA_100_Quaternion_float& q)
{
    const Eigen::Quaterniond quaternion(q.q_4, q.q_1, q.q_2, q.q_3);
    const double norm = quaternion.norm();
    return norm > 0 && std::isfinite(norm) ? body_from_inertial(quaternion.normalized()) : Eigen::Matrix3d::Identity();
}

/// True for what is not a number, too.
bool far(const Eigen::Vector3d& value, const Eigen::Vector3d& from, double criterion, double stddev)
{
    return !((value - from).norm() <= criterion * from.norm() + 3 * stddev);
}

}

template <class Record>
Processing_Parameters::Processing_Parameters(const Record& p, std::optional<Moving_Average> moving)
    : update_interval_msec(static_cast<double>(p.update_interval_msec)),
      stddev(wide(p.sensor_stddev).norm()),
      sensitivity(wide(p.sensor_sensitivity)),
      body_from_sensor(matrix_of(p.quaternion)),
      moving_average(moving)
{
    if (p.sensor_correction_enable != 0)
        correction = {wide(p.correction_scale), wide(p.correction_offset)};
    if (p.avg_filter_enable != 0)
        average = {p.avg_filter_counter, p.avg_filter_criterion};
}

Processing_Parameters::Processing_Parameters(const ZAVRA_100_Gyroscope_Parameters& parameters)
    : Processing_Parameters(parameters, std::nullopt)
{
}

Processing_Parameters::Processing_Parameters(const ZAVRA_100_Magnetometer_Parameters& p)
    : Processing_Parameters(p,
                            p.moving_avg_filter_enable != 0
                                ? std::optional(Moving_Average{p.moving_avg_filter_gain, p.moving_avg_filter_criterion})
                                : std::nullopt)
{
}

Eigen::Vector3d Processing_Parameters::corrected(const Eigen::Vector3d& reading) const
{
    const Eigen::Vector3d in_body = body_from_sensor * sensitivity.cwiseProduct(reading);
    return correction ? Eigen::Vector3d(correction->scale * in_body + correction->offset) : in_body;
}

bool Sensor_Filter::due(const Processing_Parameters& parameters, Time now) const
{
    return !output_ || static_cast<double>((now - updated_).count()) >= parameters.update_interval_msec;
}

void Sensor_Filter::take(const Processing_Parameters& parameters, const Measurements::Vector& corrected, Time now)
{
    updated_ = now;
    if (!output_)
        output_ = corrected;
    output_->valid = corrected.valid;
    if (!corrected.valid)
        return;
    output_->time = corrected.time;
    output_->value = moving_averaged(averaged(corrected.value, parameters), parameters);
}

Eigen::Vector3d Sensor_Filter::averaged(const Eigen::Vector3d& value, const Processing_Parameters& parameters)
{
    const auto& average = parameters.average;
    if (!average || !mean_ || far(value, *mean_, average->criterion, parameters.stddev)) {
        mean_ = value;
        sum_ = value;
        summed_ = 1;
        whole_mean_ = false;
        return value;
    }
    sum_ += value;
    ++summed_;
    const bool whole = summed_ >= average->measurements;
    if (whole || !whole_mean_)
        mean_ = sum_ / summed_;
    if (whole) {
        sum_.setZero();
        summed_ = 0;
        whole_mean_ = true;
    }
    return *mean_;
}

Eigen::Vector3d Sensor_Filter::moving_averaged(const Eigen::Vector3d& value, const Processing_Parameters& parameters)
{
    const auto& moving = parameters.moving_average;
    const bool starts = !moving || !(moving->gain > 0 && moving->gain <= 1) || !moving_mean_ ||
                        far(value, *moving_mean_, moving->criterion, parameters.stddev);
    moving_mean_ = starts ? value : Eigen::Vector3d(*moving_mean_ + moving->gain * (value - *moving_mean_));
    return *moving_mean_;
}

}
