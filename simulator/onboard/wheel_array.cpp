#include "wheel_array.h"

#include <Eigen/LU>

namespace zavra::simulator
{

namespace
{

Wheel_Axes axes_of(const Mission& mission)
{
    Wheel_Axes axes = Wheel_Axes::Zero();
    for (std::size_t i = 0; i < max_wheels; ++i)
        if (mission.wheel_axes[i])
            axes.col(static_cast<Eigen::Index>(i)) = *mission.wheel_axes[i];
    return axes;
}

}

Wheel_Axes wide(const ZAVRA_100_Matrix3x6_float& m)
{
    Wheel_Axes wide;
    wide << m.m00, m.m01, m.m02, m.m03, m.m04, m.m05, m.m10, m.m11, m.m12, m.m13, m.m14, m.m15, m.m20, m.m21, m.m22,
        m.m23, m.m24, m.m25;
    return wide;
}

ZAVRA_100_Matrix3x6_float torque_distribution(const Mission& mission)
{
    const Wheel_Axes axes = axes_of(mission);
    const Eigen::Matrix3d square = axes * axes.transpose();
    // Wheels that do not span the space share what they can.
    const Eigen::Matrix<float, 3, max_wheels> m =
        (square.completeOrthogonalDecomposition().pseudoInverse() * axes).cast<float>();
    return {m(0, 0), m(0, 1), m(0, 2), m(0, 3), m(0, 4), m(0, 5), m(1, 0), m(1, 1), m(1, 2),
            m(1, 3), m(1, 4), m(1, 5), m(2, 0), m(2, 1), m(2, 2), m(2, 3), m(2, 4), m(2, 5)};
}

Wheel_Array::Wheel_Array(const Mission& mission, const Control_Settings& settings, const Measurements& measurements,
                         const Eigen::Vector3d& rate_radps)
    : settings_(settings),
      measurements_(measurements),
      distribution_(wide(settings.wheel_array.torque_distribution_matrix))
{
    for (std::size_t i = 0; i < max_wheels; ++i)
        if (const auto& axis = mission.wheel_axes[i]) {
            const double speed = measurements.wheel_speed_radps[i];
            const auto& wheel = settings.wheels[i];
            momentum_ += double{wheel.moment_of_inertia} * (speed + axis->dot(rate_radps)) * *axis;
            if (std::abs(speed) >= 0.999 * double{wheel.max_speed})
                saturated_ |= 1U << i;
        }
}

double Wheel_Array::limit(const Eigen::Vector3d& wanted,
                          double (*of_wheel)(const ZAVRA_100_Single_Reactionwheel_Parameters&)) const
{
    const Eigen::Matrix<double, max_wheels, 1> parts = distribution_.transpose() * wanted;
    double limit = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < max_wheels; ++i)
        if (const double part = std::abs(parts[static_cast<Eigen::Index>(i)]); part > 0)
            limit = std::min(limit, of_wheel(settings_.wheels[i]) / part);
    return limit;
}

double Wheel_Array::rate_limit_radps(const Eigen::Vector3d& momentum_per_rate) const
{
    return 0.5 * limit(momentum_per_rate,
                       [](const auto& wheel) { return double{wheel.moment_of_inertia} * double{wheel.max_speed}; });
}

double Wheel_Array::acceleration_limit_radps2(const Eigen::Vector3d& torque_per_acceleration) const
{
    return 0.5 * limit(torque_per_acceleration, [](const auto& wheel) { return double{wheel.max_torque}; });
}

double Wheel_Array::apply(const Eigen::Vector3d& torque_nm, double tick_seconds, Actuation& actuation) const
{
    const double part = std::min(limit(torque_nm, [](const auto& wheel) { return double{wheel.max_torque}; }), 1.0);
    const Eigen::Matrix<double, max_wheels, 1> torques = -part * (distribution_.transpose() * torque_nm);
    for (std::size_t i = 0; i < max_wheels; ++i) {
        const double torque = torques[static_cast<Eigen::Index>(i)];
        const double inertia{settings_.wheels[i].moment_of_inertia};
        Wheel_Command& wheel = actuation.wheels[i];
        if (settings_.wheel_array.control_mode == 0 && inertia > 0) {
            wheel.kind = Wheel_Command::Kind::speed;
            wheel.target = measurements_.wheel_speed_radps[i] + torque * tick_seconds / inertia;
        } else {
            wheel.kind = Wheel_Command::Kind::torque;
            wheel.target = torque;
        }
    }
    return part;
}

}
