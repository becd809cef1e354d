#include "rigid_body.h"

#include <Eigen/Eigenvalues>
#include <Eigen/LU>

namespace zavra::simulator
{

namespace
{

constexpr double max_angle_per_step = 0.03;
constexpr int max_steps = 1000; // whatever a file or a scenario asks for ends some time
constexpr double earth_mu_km3ps2 = 398600.4418;

}

Rigid_Body::Rigid_Body(const Eigen::Matrix3d& inertia_kgm2, const Wheels& wheels)
    : inertia_(inertia_kgm2),
      inverse_inertia_(inertia_kgm2.inverse()),
      smallest_moment_(
          Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d>(inertia_, Eigen::EigenvaluesOnly).eigenvalues()[0]),
      wheels_(wheels)
{
}

void Rigid_Body::set(const Vector& rate, const Per_Wheel& speeds)
{
    rate_ = rate;
    for (std::size_t i = 0; i < max_wheels; ++i)
        rotor_momentum_[i] = wheels_[i].inertia_kgm2 * (speeds[i] + wheels_[i].axis.dot(rate));
}

Rigid_Body::Per_Wheel Rigid_Body::wheel_speeds_radps() const
{
    Per_Wheel speeds{};
    for (std::size_t i = 0; i < max_wheels; ++i)
        if (wheels_[i].inertia_kgm2 > 0)
            speeds[i] = rotor_momentum_[i] / wheels_[i].inertia_kgm2 - wheels_[i].axis.dot(rate_);
    return speeds;
}

Eigen::Vector3d Rigid_Body::sum(const Per_Wheel& along_axes) const
{
    Vector total = Vector::Zero();
    for (std::size_t i = 0; i < max_wheels; ++i)
        total += along_axes[i] * wheels_[i].axis;
    return total;
}

int Rigid_Body::steps_in(double seconds) const
{
    const double rate = std::max(rate_.norm(), rotors_momentum().norm() / smallest_moment_);
    return static_cast<int>(std::clamp(std::ceil(rate * seconds / max_angle_per_step), 1.0, double{max_steps}));
}

Eigen::Vector3d gravity_gradient_nm(const Eigen::Matrix3d& inertia_kgm2, const Eigen::Vector3d& up, double distance_km)
{
    return 3 * earth_mu_km3ps2 / (distance_km * distance_km * distance_km) * up.cross(inertia_kgm2 * up);
}

}
