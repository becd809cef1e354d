#pragma once

#include "measurements.h"

#include <algorithm>
#include <cmath>

namespace zavra::simulator
{

/// A rigid body with reaction wheels, by
///
///     J dw/dt = external torque - A tau - w x (J w + A Js (Omega + A^T w))
///     dOmega/dt = tau / Js - A^T dw/dt
///     dq/dt = 1/2 (q4 w + r x w, -r . w)
///
/// J without the rotors' spin inertia, A the wheels' axes, tau what the motors and the friction do to the rotors, Omega
/// the wheels' speeds relative to the body (Hughes, "Spacecraft Attitude Dynamics", 1986; Markley, Crassidis,
/// "Fundamentals of Spacecraft Attitude Determination and Control", 2014). The integrator is the classic Runge-Kutta of
/// fourth order. A rotor's own momentum Js (Omega + a . w) grows by the integral of tau alone, so that this is the
/// wheels' state.
class Rigid_Body
{
public:
    using Vector = Eigen::Vector3d;

    struct Wheel
    {
        Vector axis = Vector::Zero(); ///< Unit vector, body frame
        double inertia_kgm2 = 0;      ///< 0 where there is none
    };

    using Wheels = std::array<Wheel, max_wheels>;
    using Per_Wheel = std::array<double, max_wheels>;

    Rigid_Body(const Eigen::Matrix3d& inertia_kgm2, const Wheels& wheels);

    const Eigen::Matrix3d& inertia_kgm2() const { return inertia_; }
    const Wheels& wheels() const { return wheels_; }
    const Eigen::Quaterniond& attitude() const { return attitude_; }
    const Vector& angular_velocity_radps() const { return rate_; }
    Per_Wheel wheel_speeds_radps() const;

    /// Of body and rotors, body frame.
    Vector angular_momentum_nms() const { return inertia_ * rate_ + rotors_momentum(); }

    void set_attitude(const Eigen::Quaterniond& attitude) { attitude_ = attitude.normalized(); }
    /// The wheels keep their speeds relative to the body.
    void set_angular_velocity(const Vector& rate_radps) { set(rate_radps, wheel_speeds_radps()); }
    void set_wheel_speeds(const Per_Wheel& speeds_radps) { set(rate_, speeds_radps); }

    /// Lets time pass, in as many equal steps as keep the angle that the body turns in one, or nutates for its wheels,
    /// within 0.03 rad. `external_torque_nm` is a function of attitude; the torques on the rotors are constant.
    template <class Torque>
    void advance(double seconds, const Torque& external_torque_nm, const Per_Wheel& rotor_torques_nm = {})
    {
        const Vector rotors_torque = sum(rotor_torques_nm);
        const int steps = steps_in(seconds);
        const double h = seconds / steps;
        for (int i = 0; i < steps; ++i)
            step(h, external_torque_nm, rotors_momentum() + i * h * rotors_torque, rotors_torque);
        for (std::size_t i = 0; i < max_wheels; ++i)
            rotor_momentum_[i] += seconds * rotor_torques_nm[i];
    }

private:
    struct Slope
    {
        Eigen::Vector4d attitude;
        Vector rate;
    };

    void set(const Vector& rate, const Per_Wheel& speeds);
    Vector sum(const Per_Wheel& along_axes) const;
    Vector rotors_momentum() const { return sum(rotor_momentum_); }
    int steps_in(double seconds) const;

    Slope slope(const Eigen::Vector4d& q, const Vector& w, const Vector& torque, const Vector& rotors_momentum) const
    {
        const Vector r = q.head<3>();
        Slope s;
        s.attitude << 0.5 * (q[3] * w + r.cross(w)), -0.5 * r.dot(w);
        s.rate = inverse_inertia_ * (torque - w.cross(inertia_ * w + rotors_momentum));
        return s;
    }

    template <class Torque>
    void step(double h, const Torque& external_torque, const Vector& rotors_momentum, const Vector& rotors_torque)
    {
        const Eigen::Vector4d q = attitude_.coeffs();
        const Vector w = rate_;
        const auto slope_at = [&](double after, const Slope& s) {
            const Eigen::Vector4d at = q + after * s.attitude;
            return slope(at, w + after * s.rate, external_torque(Eigen::Quaterniond(at)) - rotors_torque,
                         rotors_momentum + after * rotors_torque);
        };
        const Slope k1 = slope_at(0, {Eigen::Vector4d::Zero(), Vector::Zero()});
        const Slope k2 = slope_at(h / 2, k1);
        const Slope k3 = slope_at(h / 2, k2);
        const Slope k4 = slope_at(h, k3);
        attitude_.coeffs() = (q + h / 6 * (k1.attitude + 2 * k2.attitude + 2 * k3.attitude + k4.attitude)).normalized();
        rate_ = w + h / 6 * (k1.rate + 2 * k2.rate + 2 * k3.rate + k4.rate);
    }

    Eigen::Matrix3d inertia_;
    Eigen::Matrix3d inverse_inertia_;
    double smallest_moment_;
    Wheels wheels_;
    Eigen::Quaterniond attitude_ = Eigen::Quaterniond::Identity();
    Vector rate_ = Vector::Zero();
    Per_Wheel rotor_momentum_{};
};

/// The torque of the Earth's gravity gradient in N m; `up` is the direction away from the Earth's centre, both in the
/// body frame.
Eigen::Vector3d gravity_gradient_nm(const Eigen::Matrix3d& inertia_kgm2, const Eigen::Vector3d& up, double distance_km);

}
