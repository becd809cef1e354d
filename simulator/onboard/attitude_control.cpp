#include "attitude_control.h"

#include "../satellite/attitude.h"
#include "magnetic.h"
#include "onboard_software.h"
#include "vectors.h"

#include <Eigen/Eigenvalues>

#include <cmath>

namespace zavra::simulator
{

namespace
{

constexpr double fastest_slew_radps = 0.05;
constexpr double unloading_per_s = 1e-3; // of the wheels' momentum across the field

const double tick_seconds = seconds_of(Onboard_Software::control_tick);

Eigen::Vector3d direction(const Eigen::Vector3d& vector)
{
    return vector.squaredNorm() > 0 ? Eigen::Vector3d(vector.normalized()) : Eigen::Vector3d::UnitZ();
}

/// The magnetorquers rest in a tick until their coils have relaxed and the magnetometer has measured.
double duty_of(const ZAVRA_100_Magnetorquer_Parameters& coils)
{
    const auto relax = std::max({coils.relax_time_x, coils.relax_time_y, coils.relax_time_z});
    const auto tick = static_cast<unsigned long long>(Onboard_Software::control_tick.count());
    return static_cast<double>(tick - std::min(relax, tick * 9 / 10)) / static_cast<double>(tick);
}

}

Attitude_Control::Attitude_Control(const Mission& mission)
    : mission_(mission),
      smallest_moment_(
          Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d>(mission.inertia_kgm2, Eigen::EigenvaluesOnly).eigenvalues()[0])
{
}

void Attitude_Control::tick(const Measurements& measurements, const Attitude_Estimate& estimate,
                            const Control_Settings& settings, Actuation& actuation)
{
    report_ = {};
    if (settings.starts != starts_) {
        starts_ = settings.starts;
        progress_ = {};
        progress_.begin_msec = measurements.epoch_time_msec;
        bdot_.reset();
    }
    Tick now{measurements,
             estimate,
             settings,
             actuation,
             {mission_, settings, measurements, estimate.angular_velocity_radps},
             wide(settings.magnetorquers.max_dipole_moment).cwiseMax(0),
             wide(settings.magnetorquers.orientation_to_bf),
             duty_of(settings.magnetorquers)};
    report_.actuators_error = now.wheels.saturated();
    for (std::size_t i = 0; i < settings.controllers.axes.size(); ++i)
        if (settings.controllers.axes[i].running != Controller_Settings::Running::nothing)
            Control_Report::set(report_.single_axis_status[i], Single_Axis_Status::paused,
                                settings.mode != Operation::idle);

    switch (settings.mode) {
    case Operation::idle:
        turn_single_axes(now);
        break;
    case Operation::safe:
    case Operation::measurement:
        report_.acts = true;
        actuation.dipole_moment_am2.setZero();
        for (Wheel_Command& wheel : actuation.wheels)
            wheel.kind = Wheel_Command::Kind::idle;
        break;
    case Operation::detumbling:
        if (!settings.waiting)
            detumble(now);
        break;
    case Operation::sun_pointing:
        if (!settings.waiting)
            point_at_sun(now);
        break;
    case Operation::nadir:
    case Operation::earth_fixed:
    case Operation::earth_const_velocity:
    case Operation::inertial:
        point_at_target(now);
        break;
    }
    if (settings.magnetorquers_suspended)
        actuation.dipole_moment_am2.setZero();
}

void Attitude_Control::turn_single_axes(Tick& tick)
{
    Eigen::Vector3d by_wheels = Eigen::Vector3d::Zero();
    Eigen::Vector3d by_magnetorquers = Eigen::Vector3d::Zero();
    bool wheels = false;
    bool magnetorquers = false;
    for (std::size_t i = 0; i < single_axes_.size(); ++i) {
        using Running = Controller_Settings::Running;
        const auto& axis = tick.settings.controllers.axes[i];
        if (axis.running == Running::nothing)
            continue;
        const bool step = axis.running == Running::angle_step;
        unsigned int& status = report_.single_axis_status[i];
        Control_Report::set(status, step ? Single_Axis_Status::angle_step : Single_Axis_Status::angular_velocity);
        const auto interface = step ? axis.angle_step.ctrl_actuator_cmd_if : axis.angular_velocity.ctrl_actuator_cmd_if;
        const bool magnetic = drives_magnetorquers(interface, false);
        const auto index = static_cast<Eigen::Index>(i);
        const Eigen::Vector3d about = Eigen::Vector3d::Unit(index);
        const Eigen::Vector3d torque_per_acceleration = mission_.inertia_kgm2 * about;
        const double most = magnetic
                                ? tick.max_dipole_am2.minCoeff() * tick.measurements.magnetic_field_t.value.norm() /
                                      torque_per_acceleration.norm()
                                : 2 * tick.wheels.acceleration_limit_radps2(torque_per_acceleration);
        const Eigen::Vector3d torque =
            torque_per_acceleration * single_axes_[i].acceleration(axis, tick.estimate.angular_velocity_radps[index],
                                                                   tick.measurements.time, tick_seconds, most);
        Control_Report::set(status, Single_Axis_Status::limited, single_axes_[i].limited());
        (magnetic ? by_magnetorquers : by_wheels) += torque;
        (magnetic ? magnetorquers : wheels) = true;
    }
    if (wheels)
        turn(tick, by_wheels, false);
    if (magnetorquers)
        turn(tick, by_magnetorquers, true);
}

void Attitude_Control::detumble(Tick& tick)
{
    const auto& field = tick.measurements.magnetic_field_t;
    const auto& controllers = tick.settings.controllers;
    set_dipole(tick, bdot_.dipole(field, controllers, smallest_moment_, tick.max_dipole_am2));
    Control_Report::set(report_.all_axis_status,
                        bdot_.full() ? All_Axis_Status::bdot_max : All_Axis_Status::bdot_proportional);
    const auto& parameters = bdot_.full() ? controllers.bdot_max : controllers.bdot_proportional;
    if (!drives_magnetorquers(parameters.ctrl_actuator_cmd_if, true)) {
        Control_Report::set(report_.main_error, Control_Error::unknown_actuator_interface);
        tick.actuation.dipole_moment_am2.setZero();
    }
}

void Attitude_Control::point_at_sun(Tick& tick)
{
    const Eigen::Vector3d line_of_sight = direction(tick.settings.sun_line_of_sight);
    std::optional<Eigen::Vector3d> sun;
    if (tick.estimate.inertial && tick.estimate.orbit)
        sun = body_from_inertial(tick.estimate.attitude) * tick.estimate.orbit->sun_vector;
    else if (tick.measurements.sun_vector.valid)
        sun = tick.measurements.sun_vector.value;
    if (sun) {
        Control_Report::set(report_.all_axis_status, All_Axis_Status::sun_seen);
        report_.pointing_error_rad = std::atan2(sun->cross(line_of_sight).norm(), sun->dot(line_of_sight));
    }
    const auto& parameters = tick.settings.controllers.sun_pointing;
    if (progress_.control.due(tick.measurements.time, parameters.update_interval, 0))
        progress_.torque_nm =
            sun_pointing_torque(mission_, parameters, line_of_sight, sun, tick.estimate.angular_velocity_radps);
    turn(tick, progress_.torque_nm, drives_magnetorquers(parameters.ctrl_actuator_cmd_if, true));
}

void Attitude_Control::point_at_target(Tick& tick)
{
    const Control_Settings& settings = tick.settings;
    const bool needs_orbit = settings.mode != Operation::inertial;
    Control_Report::set(report_.main_error, Control_Error::no_attitude, !tick.estimate.inertial);
    Control_Report::set(report_.main_error, Control_Error::no_orbit, needs_orbit && !tick.estimate.orbit);
    if (report_.main_error != 0) {
        progress_.target.reset(); // until it is known where that is, the satellite is stopped
        turn(tick,
             -double{settings.controllers.sliding.k_2} * (mission_.inertia_kgm2 * tick.estimate.angular_velocity_radps),
             false);
        return;
    }
    const auto now = tick.measurements.time;
    if (progress_.guidance.due(now, settings.operation_in_use.update_interval, 0) || !progress_.target) {
        progress_.target = target({settings.mode, settings.target, settings.polynomial_degree, progress_.begin_msec,
                                   wide(settings.operation.angles)},
                                  needs_orbit ? &*tick.estimate.orbit : nullptr, tick.measurements.epoch_time_msec);
        progress_.target_time = now;
    }
    Target target = *progress_.target;
    const double age = seconds_of(now - progress_.target_time);
    target.attitude = turned(target.attitude, age * (target.rate_radps + age / 2 * target.acceleration_radps2));
    target.rate_radps += age * target.acceleration_radps2;

    const Eigen::Vector3d& rate = tick.estimate.angular_velocity_radps;
    const Pointing_Error error = pointing_error(tick.estimate.attitude, rate, target);
    report_.pointing_error_rad = error.rotation_rad.norm();
    report_.pointing = prealign(tick, target, error);

    const auto& sliding = settings.controllers.sliding;
    if (progress_.control.due(now, sliding.update_interval, 0)) {
        const Eigen::Vector3d axis = error.rotation_rad.normalized();
        const Eigen::Vector3d momentum_per_rate = mission_.inertia_kgm2 * axis;
        progress_.torque_nm =
            sliding_torque(mission_.inertia_kgm2, sliding, error, tick.estimate.attitude, target,
                           {std::min(fastest_slew_radps, tick.wheels.rate_limit_radps(momentum_per_rate)),
                            tick.wheels.acceleration_limit_radps2(momentum_per_rate)});
    }
    const bool magnetic = drives_magnetorquers(sliding.ctrl_actuator_cmd_if, false);
    Eigen::Vector3d torque = progress_.torque_nm;
    if (!magnetic) {
        unload_momentum(tick);
        torque -= tick.duty *
                  (tick.from_coils * tick.actuation.dipole_moment_am2).cross(tick.measurements.magnetic_field_t.value);
    }
    turn(tick, torque, magnetic);
}

Control_Report::Pointing Attitude_Control::prealign(const Tick& tick, const Target& target, const Pointing_Error& error)
{
    const auto& tolerance = tick.settings.operation_in_use.tolerance_parameters;
    const Eigen::Vector3d to_turn = -error.rotation_rad;
    if (!progress_.angle_at_start_rad)
        progress_.angle_at_start_rad = to_turn;
    const Eigen::Vector3d& whole = *progress_.angle_at_start_rad;

    Control_Report::Pointing pointing;
    pointing.target = target.attitude;
    pointing.target_angle_rad = whole;
    pointing.angle_rad = whole - to_turn;
    bool aligned = tolerance.prealignment_angular_velocity_tolerance_radps <= 0 ||
                   error.rate_radps.norm() <= double{tolerance.prealignment_angular_velocity_tolerance_radps};
    for (Eigen::Index i = 0; i < 3; ++i) {
        const double allowed =
            std::max(double{tolerance.prealignment_angle_tolerance_rad},
                     double{tolerance.prealignment_angle_tolerance_percent} / 100 * std::abs(whole[i]));
        pointing.active[static_cast<std::size_t>(i)] = allowed > 0 && std::abs(to_turn[i]) > allowed;
        aligned = aligned && !pointing.active[static_cast<std::size_t>(i)];
    }
    const double threshold{tolerance.prealignment_target_threshold_rad};
    const double angle = to_turn.norm();
    if (aligned && !progress_.aligned_since)
        progress_.aligned_since = tick.measurements.time;
    if (!aligned)
        progress_.aligned_since.reset();
    const auto wait = tick.settings.operation.wait_time;
    if (progress_.aligned_since &&
        static_cast<unsigned long long>((tick.measurements.time - *progress_.aligned_since).count()) >= wait)
        progress_.ready = true;
    if (progress_.ready && threshold > 0 && angle > threshold)
        progress_.ready = false; // lost
    pointing.ready = progress_.ready;
    if (progress_.ready)
        pointing.active = {};
    if (!pointing.ready) {
        Eigen::Index most = 0;
        to_turn.cwiseAbs().maxCoeff(&most);
        pointing.axis = static_cast<unsigned char>(most + 1);
    }
    pointing.state = !pointing.ready         ? Operation::prealigning
                     : tick.settings.waiting ? Operation::waiting_for_start
                                             : Operation::pointing;
    Control_Report::set(report_.all_axis_status,
                        pointing.ready ? All_Axis_Status::target_followed : All_Axis_Status::prealignment);
    return pointing;
}

void Attitude_Control::turn(Tick& tick, const Eigen::Vector3d& torque_nm, bool with_magnetorquers)
{
    if (with_magnetorquers) {
        const Eigen::Vector3d moment = dipole_for(torque_nm, tick.measurements.magnetic_field_t.value);
        set_dipole(tick, moment / tick.duty);
        return;
    }
    const Eigen::Vector3d& rate = tick.estimate.angular_velocity_radps;
    const Eigen::Vector3d gyroscopic = rate.cross(mission_.inertia_kgm2 * rate + tick.wheels.momentum_nms());
    report_.acts = true;
    tick.wheels.apply(torque_nm + gyroscopic, tick_seconds, tick.actuation);
}

void Attitude_Control::unload_momentum(Tick& tick)
{
    const auto& field = tick.measurements.magnetic_field_t;
    if (!field.valid || tick.settings.magnetorquers_suspended)
        return;
    set_dipole(tick, dipole_for(-unloading_per_s * tick.wheels.momentum_nms(), field.value));
    Control_Report::set(report_.all_axis_status, All_Axis_Status::momentum_unloading);
}

void Attitude_Control::set_dipole(Tick& tick, const Eigen::Vector3d& moment_am2)
{
    report_.acts = true;
    tick.actuation.dipole_moment_am2 = shortened(tick.from_coils.transpose() * moment_am2, tick.max_dipole_am2);
    Control_Report::set(report_.main_error, Control_Error::no_magnetic_field,
                        !tick.measurements.magnetic_field_t.valid);
    Control_Report::set(report_.main_error, Control_Error::magnetorquers_suspended,
                        tick.settings.magnetorquers_suspended);
}

bool Attitude_Control::drives_magnetorquers(unsigned int interface, bool usually)
{
    switch (static_cast<Actuator_Interface>(interface)) {
    case Actuator_Interface::usual:
        return usually;
    case Actuator_Interface::wheels:
        return false;
    case Actuator_Interface::magnetorquers:
        return true;
    }
    Control_Report::set(report_.main_error, Control_Error::unknown_actuator_interface);
    return usually;
}

}
