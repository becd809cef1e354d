#include "telemetry.h"

#include "../../protocol/telemetry.h"
#include "../onboard/vectors.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace zavra::simulator
{

namespace
{

constexpr unsigned int alive = 1;
constexpr unsigned int magnetorquers_suspended = 0;
constexpr unsigned int magnetorquers_active = 1;
constexpr float bus_voltage_v = 5.0F;
constexpr float unit_current_a = 0.19F;

void store(const ZAVRA_100_Vector3_float& vector, float& x, float& y, float& z)
{
    x = vector.x;
    y = vector.y;
    z = vector.z;
}

/// The sensor gives a byte, which travels as it is: below zero it is 256 more for who reads it without a sign.
unsigned char temperature_byte(float degc)
{
    const float whole = std::isnan(degc) ? 0.0F : std::clamp(std::round(degc), -128.0F, 255.0F);
    return static_cast<unsigned char>(static_cast<int>(whole));
}

/// Fills a text field of a zeroed record; what does not fit is cut.
template <std::size_t size>
void set_text(char (&field)[size], std::string_view text)
{
    text.copy(field, size - 1);
}

#ifdef __clang__
constexpr const char* compiler_name = "clang";
constexpr const char* compiler_version = __clang_version__;
#else
constexpr const char* compiler_name = "gcc";
constexpr const char* compiler_version = __VERSION__;
#endif

ZAVRA_100_Info_Telemetry info_frame()
{
    ZAVRA_100_Info_Telemetry info{};
    set_text(info.frame_identifier, "IF");
    info.frame_version = 1;
    info.sw_version_major = 1;
    info.sw_version_minor = 18;
    info.device_serial_number = 100;
    set_text(info.device_name, "ZAVRA-SIM");
    set_text(info.build_timestamp, "19.Nov.2020 12:00:00");
    set_text(info.compiler_name, compiler_name);
    set_text(info.compiler_version, compiler_version);
    set_text(info.low_level_sw_version, "simulated");
    return info;
}

}

Telemetry::Telemetry(Command_Table& commands, const Unit_Parts& parts, const World& world)
    : parts_(parts),
      world_(world)
{
    commands.on(protocol::get_info_frame, info_frame);
    commands.on(protocol::get_standard_telemetry, [this] { return standard(); });
    commands.on(protocol::get_sensor_telemetry, [this] { return sensor(); });
    commands.on(protocol::get_actuator_telemetry, [this] { return actuator(); });
    commands.on(protocol::get_attitude_telemetry, [this] { return attitude(); });
    commands.on(protocol::get_power_telemetry, [this] { return power(); });
}

ZAVRA_100_Standard_Telemetry Telemetry::standard() const
{
    ZAVRA_100_Standard_Telemetry t{};
    t.system_time_msec = parts_.time.system_msec();
    t.epoch_time_msec = parts_.time.epoch_msec();
    t.livelyhood_register = alive;
    t.system_scheduler_register = parts_.system.settings.scheduler_register;
    t.system_error_register = parts_.system.error_register;
    t.control_main_status = parts_.modes.main_status();
    if (parts_.report) {
        const auto& [attitude, control] = *parts_.report;
        t.sat_main_register = attitude.status;
        t.sat_error_register = attitude.errors;
        t.actuators_error_register = control.actuators_error;
        t.control_main_error = control.main_error;
        t.control_single_axis_status_x = control.single_axis_status[0];
        t.control_single_axis_status_y = control.single_axis_status[1];
        t.control_single_axis_status_z = control.single_axis_status[2];
        t.control_all_axis_status = control.all_axis_status;
    }
    t.number_of_received_commands = parts_.system.counters.received_commands;
    t.number_of_failed_commands = parts_.system.counters.failed_commands;
    return t;
}

ZAVRA_100_Sensor_Telemetry Telemetry::sensor() const
{
    ZAVRA_100_Sensor_Telemetry t{};
    t.epoch_time_msec = parts_.time.epoch_msec();
    const auto q = world_.attitude();
    t.quaternion_attitude_1_bf = q.q_1;
    t.quaternion_attitude_2_bf = q.q_2;
    t.quaternion_attitude_3_bf = q.q_3;
    t.quaternion_attitude_4_bf = q.q_4;
    t.index_of_active_gyro = parts_.system.settings.active_gyroscope;
    t.index_of_active_magnetometer = parts_.system.settings.active_magnetometer;

    store(parts_.sensors.angular_velocity_radps(0).vector, t.measured_angular_velocity_gyro_1_x_radps,
          t.measured_angular_velocity_gyro_1_y_radps, t.measured_angular_velocity_gyro_1_z_radps);
    store(parts_.sensors.angular_velocity_radps(1).vector, t.measured_angular_velocity_gyro_2_x_radps,
          t.measured_angular_velocity_gyro_2_y_radps, t.measured_angular_velocity_gyro_2_z_radps);
    store(parts_.sensors.angular_velocity_radps(2).vector, t.measured_angular_velocity_gyro_3_x_radps,
          t.measured_angular_velocity_gyro_3_y_radps, t.measured_angular_velocity_gyro_3_z_radps);
    store(parts_.sensors.magnetic_field_t(0).vector, t.measured_magnetic_field_magnetometer_1_x_t,
          t.measured_magnetic_field_magnetometer_1_y_t, t.measured_magnetic_field_magnetometer_1_z_t);
    store(parts_.sensors.sun_vector().vector, t.measured_sun_vector_sunsensor_1_x, t.measured_sun_vector_sunsensor_1_y,
          t.measured_sun_vector_sunsensor_1_z);
    t.temperature_degc = temperature_byte(world_.temperature_degc());
    return t;
}

ZAVRA_100_Actuator_Telemetry Telemetry::actuator() const
{
    const Actuators& actuators = parts_.actuators;
    ZAVRA_100_Actuator_Telemetry t{};
    t.epoch_time_msec = parts_.time.epoch_msec();
    const auto target = actuators.wheel_targets_radps();
    store({target.x, target.y, target.z}, t.reactionwheel_target_x_radps, t.reactionwheel_target_y_radps,
          t.reactionwheel_target_z_radps);
    store({target.u, target.v, target.w}, t.reactionwheel_target_u_radps, t.reactionwheel_target_v_radps,
          t.reactionwheel_target_w_radps);
    const auto speed = actuators.wheel_speeds_radps();
    store({speed.x, speed.y, speed.z}, t.reactionwheel_current_speed_x_radps, t.reactionwheel_current_speed_y_radps,
          t.reactionwheel_current_speed_z_radps);
    store({speed.u, speed.v, speed.w}, t.reactionwheel_current_speed_u_radps, t.reactionwheel_current_speed_v_radps,
          t.reactionwheel_current_speed_w_radps);
    store(actuators.dipole_moment_am2(), t.magnetorquers_target_dipole_moment_x_am2,
          t.magnetorquers_target_dipole_moment_y_am2, t.magnetorquers_target_dipole_moment_z_am2);
    t.magnetorquers_current_state = actuators.settings.suspended ? magnetorquers_suspended : magnetorquers_active;
    return t;
}

ZAVRA_100_Attitude_Telemetry Telemetry::attitude() const
{
    ZAVRA_100_Attitude_Telemetry t{};
    t.epoch_time_msec = t.epoch_time_last_attitude_determination_msec = parts_.time.epoch_msec();
    auto q = world_.attitude();
    auto rate = world_.angular_velocity_radps();
    if (parts_.report) {
        const Attitude_Estimate& believed = parts_.report->attitude;
        q = believed.inertial ? narrow(believed.attitude) : ZAVRA_100_Quaternion_float{};
        rate = narrow(believed.angular_velocity_radps);
        t.epoch_time_last_attitude_determination_msec = believed.epoch_time_msec;
    }
    t.quaternion_attitude_1_bf = q.q_1;
    t.quaternion_attitude_2_bf = q.q_2;
    t.quaternion_attitude_3_bf = q.q_3;
    t.quaternion_attitude_4_bf = q.q_4;
    store(rate, t.angular_velocity_x_radps, t.angular_velocity_y_radps, t.angular_velocity_z_radps);
    const auto field = parts_.sensors.magnetic_field_t(0);
    store(field.vector, t.measured_magnetic_field_x_bf_t, t.measured_magnetic_field_y_bf_t,
          t.measured_magnetic_field_z_bf_t);
    t.epoch_time_last_magnetic_field_measurement_msec = field.epoch_msec;
    const auto sun = parts_.sensors.sun_vector();
    store(sun.vector, t.measured_sun_vector_x_bf, t.measured_sun_vector_y_bf, t.measured_sun_vector_z_bf);
    t.epoch_time_last_sun_vector_measurement_msec = sun.epoch_msec;
    return t;
}

ZAVRA_100_Power_Telemetry Telemetry::power() const
{
    ZAVRA_100_Power_Telemetry t{};
    t.epoch_time_msec = parts_.time.epoch_msec();
    t.zavra_supply_voltage_v = t.magnettorquer_supply_voltage_v = t.startracker_supply_voltage_v =
        t.reactionwheel_supply_voltage_v = bus_voltage_v;
    t.zavra_current_consumption_a = unit_current_a;
    t.zavra_power_consumption_w = bus_voltage_v * unit_current_a;
    const auto current = parts_.actuators.current_a();
    t.magnettorquer_current_consumption_a =
        world_.magnetorquer_duty() * (std::abs(current.x) + std::abs(current.y) + std::abs(current.z));
    t.magnettorquer_power_consumption_w = bus_voltage_v * t.magnettorquer_current_consumption_a;
    t.reactionwheel_power_consumption_w = world_.wheel_power_w();
    t.reactionwheel_current_consumption_a = t.reactionwheel_power_consumption_w / bus_voltage_v;
    return t;
}

}
