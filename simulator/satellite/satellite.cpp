#include "satellite.h"

namespace zavra::simulator
{

namespace
{

Rigid_Body make_body(const Satellite_Settings& settings)
{
    Rigid_Body::Wheels wheels;
    Rigid_Body::Per_Wheel speeds{};
    for (std::size_t i = 0; i < max_wheels; ++i)
        if (const auto& wheel = settings.wheels[i]) {
            wheels[i] = {wheel->axis, wheel->inertia_kgm2};
            speeds[i] = wheel->speed_radps;
        }
    Rigid_Body body{settings.inertia_kgm2, wheels};
    body.set_attitude(settings.attitude);
    body.set_angular_velocity(settings.angular_velocity_radps);
    body.set_wheel_speeds(speeds);
    return body;
}

/// Limits and targets come as commands and parameters that may be any number, or none.
double clamped(double value, double limit)
{
    const double within = limit > 0 ? std::clamp(value, -limit, limit) : 0;
    return std::isfinite(within) ? within : 0;
}

}

Satellite::Satellite(const Satellite_Settings& settings)
    : settings_(settings),
      environment_(settings.elements),
      body_(make_body(settings)),
      temperature_(settings.temperature_degc),
      disturbance_torque_(settings.disturbance_torque_nm)
{
    look_around();
}

Eigen::Vector3d Satellite::dipole_moment_during_measurement_am2() const
{
    const bool rests = settings_.magnetorquers && settings_.magnetorquers->rest_msec > 0;
    return rests ? Eigen::Vector3d(Eigen::Vector3d::Zero()) : dipole_moment_;
}

/// What changes the rotor's speed during a control tick, held for the whole of it: the motor and, against the motion,
/// friction, which stops a rotor but does not turn it.
double Satellite::rotor_torque(std::size_t wheel, const Wheel_Command& command, double speed, double seconds)
{
    const Wheel_Settings& settings = *settings_.wheels[wheel];
    const double per_torque = seconds / settings.inertia_kgm2; // speed gained
    if (stuck_[wheel])
        return -speed / per_torque;
    const double max_torque = settings.max_torque_nm.value_or(command.max_torque_nm);
    const double max_speed = std::max(std::abs(speed), settings.max_speed_radps.value_or(command.max_speed_radps));
    const double friction = settings.viscous_friction_nms * std::abs(speed) + settings.coulomb_friction_nm;

    double motor = 0;
    if (command.kind == Wheel_Command::Kind::torque)
        motor = clamped(command.target, max_torque);
    if (command.kind == Wheel_Command::Kind::speed) {
        const double target = clamped(command.target, max_speed);
        const double against = target == 0 ? 0 : std::copysign(friction, target);
        motor = clamped((target - speed) / per_torque + against, max_torque);
    }
    const double without_friction = speed + motor * per_torque;
    const double slowed =
        std::copysign(std::max(std::abs(without_friction) - friction * per_torque, 0.0), without_friction);
    const double reached = clamped(slowed, max_speed);
    motor -= (slowed - reached) / per_torque;
    wheel_power_ += std::max(motor * speed, 0.0);
    return (reached - speed) / per_torque;
}

void Satellite::act(const Actuation& actuation, Time tick)
{
    const auto speeds = wheel_speeds_radps();
    wheel_power_ = 0;
    for (std::size_t i = 0; i < max_wheels; ++i)
        if (settings_.wheels[i])
            rotor_torques_[i] = rotor_torque(i, actuation.wheels[i], speeds[i], seconds_of(tick));

    if (const auto& torquers = settings_.magnetorquers) {
        duty_ = std::max(0.0, 1 - torquers->rest_msec / static_cast<double>(tick.count()));
        dipole_moment_ = actuation.dipole_moment_am2;
        if (const auto& most = torquers->max_dipole_moment_am2)
            dipole_moment_ = dipole_moment_.cwiseMin(*most).cwiseMax(-*most);
        dipole_moment_ = dipole_moment_.allFinite() ? Eigen::Vector3d(duty_ * dipole_moment_) : Eigen::Vector3d::Zero();
    }
}

Eigen::Vector3d Satellite::torque(const Eigen::Quaterniond& attitude) const
{
    const Eigen::Matrix3d to_body = body_from_inertial(attitude);
    const Surroundings& around = surroundings();
    Eigen::Vector3d torque =
        disturbance_torque_ + (dipole_moment_ + settings_.residual_dipole_am2).cross(to_body * around.magnetic_field_t);
    if (settings_.gravity_gradient) {
        const double distance = around.position_km.norm();
        torque += gravity_gradient_nm(settings_.inertia_kgm2, to_body * (around.position_km / distance), distance);
    }
    return torque;
}

void Satellite::advance(Time tick)
{
    std::erase_if(passing_torques_, [this](const Passing_Torque& passing) { return passing.end <= time_; });
    disturbance_torque_ = settings_.disturbance_torque_nm;
    for (const Passing_Torque& passing : passing_torques_)
        disturbance_torque_ += passing.torque_nm;
    const double seconds = seconds_of(tick);
    body_.advance(
        seconds, [this](const Eigen::Quaterniond& attitude) { return torque(attitude); }, rotor_torques_);
    const double equilibrium =
        settings_.temperature_degc - settings_.eclipse_cooling_degc * (1 - surroundings().sunlight);
    temperature_ += (equilibrium - temperature_) * std::min(seconds / settings_.thermal_time_constant_s, 1.0);
    time_ += tick;
}

}
