#include "actuators.h"

#include "../../protocol/actuators.h"
#include "../onboard/vectors.h"
#include "../onboard/wheel_array.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace zavra::simulator
{

namespace
{

constexpr float coasting_radps2 = 1.0F;

/// Applies a function to the components of two vectors.
template <class Function>
ZAVRA_100_Vector3_float by_component(const ZAVRA_100_Vector3_float& a, const ZAVRA_100_Vector3_float& b,
                                     Function function)
{
    return {function(a.x, b.x), function(a.y, b.y), function(a.z, b.z)};
}

float number_of_wheel(const ZAVRA_100_Vector6_float& v, std::size_t wheel)
{
    const float numbers[] = {v.x, v.y, v.z, v.u, v.v, v.w};
    return numbers[wheel];
}

void check_moment(const ZAVRA_100_Vector3_float& moment, const ZAVRA_100_Vector3_float& limit)
{
    by_component(moment, limit, [](float value, float maximum) {
        if (!(std::abs(value) <= maximum))
            throw Refused("dipole moment exceeds the maximum");
        return value;
    });
}

}

float Reaction_Wheel::speed_radps(unsigned long long now) const
{
    const float acceleration = idle_ ? coasting_radps2 : parameters_.max_torque / parameters_.moment_of_inertia;
    const float change = acceleration * static_cast<float>(now - then_) / 1000.0F;
    // Parameters may be anything; a wheel without torque, or with nonsense for it, keeps its speed.
    return change > 0 ? std::clamp(target_, speed_then_ - change, speed_then_ + change) : speed_then_;
}

bool Reaction_Wheel::can_reach(float speed_radps) const
{
    return std::abs(speed_radps) <= parameters_.max_speed;
}

void Reaction_Wheel::settle(unsigned long long now)
{
    speed_then_ = speed_radps(now);
    then_ = now;
}

Wheel_Command Reaction_Wheel::command(double torque_nm) const
{
    using enum Wheel_Command::Kind;
    return {.kind = follows_torque_ ? torque
                    : idle_         ? idle
                                    : speed,
            .target = follows_torque_ ? -torque_nm : double{target_},
            .max_torque_nm = parameters_.max_torque,
            .max_speed_radps = parameters_.max_speed};
}

void Reaction_Wheel::drive(float speed_radps, unsigned long long now)
{
    settle(now);
    target_ = speed_radps;
    idle_ = false;
    follows_torque_ = false;
}

void Reaction_Wheel::idle(unsigned long long now)
{
    settle(now);
    target_ = 0;
    idle_ = true;
    follows_torque_ = false;
}

void Reaction_Wheel::set_parameters(const ZAVRA_100_Single_Reactionwheel_Parameters& parameters, unsigned long long now)
{
    settle(now);
    parameters_ = parameters;
}

Actuators::Settings::Settings()
{
    const auto& wheel = wheels[0].parameters();
    array = {.number_of_wheels = number_of_wheels,
             .control_mode = 0,
             .moment_of_inertia = wheel.moment_of_inertia,
             .max_speed = wheel.max_speed,
             .max_torque = wheel.max_torque,
             .motor_constant = wheel.motor_constant,
             .update_interval = 100,
             .max_valid_time_speed_measurement = wheel.max_time_for_speed_measurement,
             .torque_distribution_matrix = {}};
    // Two wheels along each axis share its torque.
    auto& matrix = array.torque_distribution_matrix;
    matrix.m00 = matrix.m03 = matrix.m11 = matrix.m14 = matrix.m22 = matrix.m25 = 0.5F;

    magnetorquers = {.conv_factors_dipole_moment_to_current = {0.25F, 0.25F, 0.25F},
                     .max_dipole_moment = {0.4F, 0.4F, 0.4F},
                     .orientation_to_bf = {1, 0, 0, 0, 1, 0, 0, 0, 1},
                     .relax_time_x = 20,
                     .relax_time_y = 20,
                     .relax_time_z = 20};
}

void Actuators::build_for(const Satellite_Settings& satellite)
{
    const auto narrow_or = [](const std::optional<double>& value, float otherwise) {
        return value ? static_cast<float>(*value) : otherwise;
    };
    bool first = true;
    for (std::size_t i = 0; i < max_wheels; ++i)
        if (const auto& wheel = satellite.wheels[i]) {
            auto parameters = defaults_.wheels[i].parameters();
            parameters.moment_of_inertia = static_cast<float>(wheel->inertia_kgm2);
            parameters.max_torque = narrow_or(wheel->max_torque_nm, parameters.max_torque);
            parameters.max_speed = narrow_or(wheel->max_speed_radps, parameters.max_speed);
            defaults_.wheels[i].set_parameters(parameters, 0);
            if (std::exchange(first, false)) {
                defaults_.array.moment_of_inertia = parameters.moment_of_inertia;
                defaults_.array.max_torque = parameters.max_torque;
                defaults_.array.max_speed = parameters.max_speed;
            }
        }
    defaults_.array.torque_distribution_matrix = torque_distribution(mission_of(satellite));
    if (const auto& torquers = satellite.magnetorquers)
        if (const auto& most = torquers->max_dipole_moment_am2)
            defaults_.magnetorquers.max_dipole_moment = narrow(*most);
    settings = defaults_;
}

Actuators::Actuators(Command_Table& commands, const Unit_Time& time, World& world) : time_(time), world_(world)
{
    using namespace protocol;
    using Index = unsigned char;

    commands.on(set_reactionwheel_speed, [this](Index index, float speed) {
        if (!wheel(index).can_reach(speed))
            throw Refused("speed exceeds the maximum");
        wheel(index).drive(speed, time_.system_msec());
    });
    commands.on(get_reactionwheel_speed, [this](Index index) {
        wheel(index); // refused where there is none
        return number_of_wheel(wheel_speeds_radps(), index);
    });
    commands.on(set_reactionwheel_parameters, [this](Index index, const auto& parameters) {
        wheel(index).set_parameters(parameters, time_.system_msec());
    });
    commands.on(get_reactionwheel_parameters, [this](Index index) { return wheel(index).parameters(); });
    commands.keep(set_reactionwheel_all_update_interval, get_reactionwheel_all_update_interval,
                  settings.array.update_interval);
    commands.on(enable_reactionwheel_idle_mode, [this](Index index) { wheel(index).idle(time_.system_msec()); });
    commands.on(set_reactionwheel_all_speeds, [this](const auto& speeds) { drive(speeds); });
    commands.on(get_reactionwheel_all_speeds, [this] { return wheel_speeds_radps(); });
    commands.on(set_reactionwheel_all_parameters, [this](const auto& array) { set_array(array); });
    commands.on(get_reactionwheel_all_parameters, [this] { return settings.array; });
    commands.on(enable_reactionwheel_all_idle_mode, [this] {
        for (Reaction_Wheel& wheel : settings.wheels)
            wheel.idle(time_.system_msec());
    });
    commands.on(set_reactionwheel_torque, [this](const ZAVRA_100_Vector3_float& torque_nm) {
        settings.torque_nm = torque_nm;
        for (Reaction_Wheel& wheel : settings.wheels)
            wheel.follow_torque();
    });
    commands.on(get_reactionwheel_torque, [this] { return settings.torque_nm; });

    commands.on(set_magnettorquer_all_dipole_moments, [this](const auto& moment) { set_dipole_moment(moment); });
    commands.on(get_magnettorquer_all_dipole_moments, [this] { return dipole_moment_am2(); });
    commands.on(suspend_all_magnettorquers, [this] { settings.suspended = true; });
    commands.on(resume_all_magnettorquers, [this] { settings.suspended = false; });
    commands.keep(set_magnettorquer_parameters, get_magnettorquer_parameters, settings.magnetorquers);
    commands.on(set_magnettorquer_all_currents, [this](const auto& current) { set_current(current); });
    commands.on(get_magnettorquer_all_currents, [this] { return current_a(); });
}

Reaction_Wheel& Actuators::wheel(unsigned char index)
{
    if (index >= settings.wheels.size())
        throw Refused("unknown reaction wheel");
    return settings.wheels[index];
}

ZAVRA_100_Vector6_float Actuators::wheel_targets_radps() const
{
    if (by_software_) {
        const auto target = [this](std::size_t wheel) {
            const Wheel_Command& command = by_software_->wheels[wheel];
            return command.kind == Wheel_Command::Kind::speed ? static_cast<float>(command.target) : 0;
        };
        return {target(0), target(1), target(2), target(3), target(4), target(5)};
    }
    const auto& w = settings.wheels;
    return {w[0].target_radps(), w[1].target_radps(), w[2].target_radps(),
            w[3].target_radps(), w[4].target_radps(), w[5].target_radps()};
}

ZAVRA_100_Vector6_float Actuators::wheel_speeds_radps() const
{
    if (const auto measured = world_.wheel_speeds_radps())
        return *measured;
    const auto& w = settings.wheels;
    const auto now = time_.system_msec();
    return {w[0].speed_radps(now), w[1].speed_radps(now), w[2].speed_radps(now),
            w[3].speed_radps(now), w[4].speed_radps(now), w[5].speed_radps(now)};
}

void Actuators::drive(const ZAVRA_100_Vector6_float& speed_radps)
{
    for (std::size_t i = 0; i < number_of_wheels; ++i)
        if (!settings.wheels[i].can_reach(number_of_wheel(speed_radps, i)))
            throw Refused("speed exceeds the maximum");
    for (std::size_t i = 0; i < number_of_wheels; ++i)
        settings.wheels[i].drive(number_of_wheel(speed_radps, i), time_.system_msec());
}

void Actuators::set_array(const ZAVRA_100_Reactionwheel_Array_Parameters& array)
{
    settings.array = array;
    for (Reaction_Wheel& wheel : settings.wheels)
        wheel.set_parameters({.moment_of_inertia = array.moment_of_inertia,
                              .max_speed = array.max_speed,
                              .max_torque = array.max_torque,
                              .motor_constant = array.motor_constant,
                              .max_time_for_speed_measurement = array.max_valid_time_speed_measurement},
                             time_.system_msec());
}

void Actuators::set_dipole_moment(const ZAVRA_100_Vector3_float& moment_am2)
{
    const auto& coils = settings.magnetorquers;
    check_moment(moment_am2, coils.max_dipole_moment);
    settings.dipole_moment_am2 = moment_am2;
    settings.current_a =
        by_component(moment_am2, coils.conv_factors_dipole_moment_to_current, std::multiplies<float>());
}

void Actuators::set_current(const ZAVRA_100_Vector3_float& current_a)
{
    const auto& coils = settings.magnetorquers;
    const auto moment = by_component(current_a, coils.conv_factors_dipole_moment_to_current,
                                     [](float current, float factor) { return factor == 0 ? 0 : current / factor; });
    check_moment(moment, coils.max_dipole_moment);
    settings.dipole_moment_am2 = moment;
    settings.current_a = current_a;
}

ZAVRA_100_Vector3_float Actuators::dipole_moment_am2() const
{
    if (settings.suspended)
        return {};
    return by_software_ ? narrow(by_software_->dipole_moment_am2) : settings.dipole_moment_am2;
}

ZAVRA_100_Vector3_float Actuators::current_a() const
{
    if (settings.suspended)
        return {};
    return by_software_
               ? by_component(narrow(by_software_->dipole_moment_am2),
                              settings.magnetorquers.conv_factors_dipole_moment_to_current, std::multiplies<float>())
               : settings.current_a;
}

Actuation Actuators::actuation() const
{
    const auto& m = settings.array.torque_distribution_matrix;
    const auto& t = settings.torque_nm;
    const float of_x[] = {m.m00, m.m01, m.m02, m.m03, m.m04, m.m05};
    const float of_y[] = {m.m10, m.m11, m.m12, m.m13, m.m14, m.m15};
    const float of_z[] = {m.m20, m.m21, m.m22, m.m23, m.m24, m.m25};
    Actuation actuation;
    for (std::size_t i = 0; i < number_of_wheels; ++i)
        actuation.wheels[i] = settings.wheels[i].command(of_x[i] * t.x + of_y[i] * t.y + of_z[i] * t.z);
    const auto moment = settings.suspended ? ZAVRA_100_Vector3_float{} : settings.dipole_moment_am2;
    actuation.dipole_moment_am2 = {moment.x, moment.y, moment.z};
    return actuation;
}

void Actuators::reset()
{
    settings = defaults_;
    by_software_.reset();
}

}
