#pragma once

#include "../satellite/actuation.h"
#include "flight_settings.h"

namespace zavra::simulator
{

using Wheel_Axes = Eigen::Matrix<double, 3, max_wheels>;

/// The array's matrix as numbers: rows are axes, columns wheels.
Wheel_Axes wide(const ZAVRA_100_Matrix3x6_float& matrix);

/// Shares a torque among the wheels with the smallest torques: the transposed pseudo-inverse of their axes.
ZAVRA_100_Matrix3x6_float torque_distribution(const Mission& mission);

/// The wheels as a means to turn the body, in one control tick.
class Wheel_Array
{
public:
    Wheel_Array(const Mission& mission, const Control_Settings& settings, const Measurements& measurements,
                const Eigen::Vector3d& rate_radps);

    /// Of the rotors, body frame.
    const Eigen::Vector3d& momentum_nms() const { return momentum_; }
    /// What half of the wheels' torque and speed allow about an axis.
    double rate_limit_radps(const Eigen::Vector3d& momentum_per_rate) const;
    double acceleration_limit_radps2(const Eigen::Vector3d& torque_per_acceleration) const;
    /// Bits 0 to 5.
    unsigned int saturated() const { return saturated_; }

    /// Has the wheels turn the body for a tick, all with less where one cannot; the part of the torque that they give.
    double apply(const Eigen::Vector3d& torque_nm, double tick_seconds, Actuation& actuation) const;

private:
    double limit(const Eigen::Vector3d& wanted,
                 double (*of_wheel)(const ZAVRA_100_Single_Reactionwheel_Parameters&)) const;

    const Control_Settings& settings_;
    const Measurements& measurements_;
    Wheel_Axes distribution_;
    Eigen::Vector3d momentum_ = Eigen::Vector3d::Zero();
    unsigned int saturated_ = 0;
};

}
