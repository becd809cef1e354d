#include "../protocol/actuators.h"
#include "dump.h"
#include "exchange.h"

using namespace zavra;

namespace
{

constexpr unsigned char max_wheel_index = 5;
constexpr const char* array_title = "ZAVRA_100_Reactionwheel_Array_Parameters";

void check_wheel(unsigned char index, const char* action_words)
{
    if (index > max_wheel_index)
        reject(action_words, "unknown reaction wheel index");
}

void dump_speed(unsigned char index, float speed_radps)
{
    dump_fields(List{Field{"WHEEL_INDEX", index}, Field{"WHEEL_SPEED_rad/s", speed_radps}});
}

void dump_parameters(unsigned char index, const ZAVRA_100_Single_Reactionwheel_Parameters& parameters)
{
    dump_fields(List{Field{"WHEEL_INDEX", index}});
    dump_fields(parameters);
}

void dump_torque(const ZAVRA_100_Vector3_float& torque)
{
    dump_fields(List{Field{"WHEEL_TORQUE_Nm (X)", torque.x}, Field{"WHEEL_TORQUE_Nm (Y)", torque.y},
                     Field{"WHEEL_TORQUE_Nm (Z)", torque.z}});
}

/// One line for each component, its name in lower case.
template <class Vector>
void dump_components(const char* name, const Vector& vector)
{
    dump_fields(List{Field{name, vector, style::lower_case}});
}

/// The matrix with the wheel and the axis that each entry belongs to.
void dump_distribution(const ZAVRA_100_Matrix3x6_float& matrix)
{
    constexpr int wheels = 6;
    constexpr const char* axes[][2] = {{"X", "U"}, {"Y", "V"}, {"Z", "W"}};
    int entry = 0;
    for_each_field(fields(matrix), [&](const auto& field) {
        const int wheel = entry % wheels;
        debug_line(values, "TORQUE_DISTRIBUTION_MATRIX_", field.name, " (RW", wheel, '-',
                   axes[entry / wheels][wheel / 3], "): dec = ", field.value);
        ++entry;
    });
}

}

void ZAVRA_100::Set_ReactionWheel_Speed(unsigned char index, float speed_radps)
{
    check_wheel(index, protocol::set_reactionwheel_speed.action);
    dump_speed(index, speed_radps);
    send(*this, protocol::set_reactionwheel_speed, index, speed_radps);
}

void ZAVRA_100::Get_ReactionWheel_Speed(unsigned char index, float* speed_radps)
{
    check_wheel(index, protocol::get_reactionwheel_speed.action);
    *speed_radps = ask(*this, protocol::get_reactionwheel_speed, index);
    dump_speed(index, *speed_radps);
}

// The unit itself judges the index of a wheel's parameters.
void ZAVRA_100::Set_ReactionWheel_Parameters(unsigned char index, ZAVRA_100_Single_Reactionwheel_Parameters parameters)
{
    dump_parameters(index, parameters);
    send(*this, protocol::set_reactionwheel_parameters, index, parameters);
}

void ZAVRA_100::Get_ReactionWheel_Parameters(unsigned char index, ZAVRA_100_Single_Reactionwheel_Parameters* parameters)
{
    *parameters = ask(*this, protocol::get_reactionwheel_parameters, index);
    dump_parameters(index, *parameters);
}

void ZAVRA_100::Set_ReactionWheel_All_Update_Interval(unsigned long long interval_msec)
{
    send(*this, protocol::set_reactionwheel_all_update_interval, interval_msec);
}

void ZAVRA_100::Get_ReactionWheel_All_Update_Interval(unsigned long long* interval_msec)
{
    *interval_msec = ask(*this, protocol::get_reactionwheel_all_update_interval);
    debug_line(values, "interval_msec: dec = ", *interval_msec);
}

void ZAVRA_100::Enable_ReactionWheel_Idle_Mode(unsigned char index)
{
    check_wheel(index, protocol::enable_reactionwheel_idle_mode.action);
    send(*this, protocol::enable_reactionwheel_idle_mode, index);
}

void ZAVRA_100::Set_ReactionWheel_All_Speeds(ZAVRA_100_Vector6_float speed_radps)
{
    dump_components("speed_radps", speed_radps);
    send(*this, protocol::set_reactionwheel_all_speeds, speed_radps);
}

void ZAVRA_100::Get_ReactionWheel_All_Speeds(ZAVRA_100_Vector6_float* speed_radps)
{
    *speed_radps = ask(*this, protocol::get_reactionwheel_all_speeds);
    dump_components("speed_radps", *speed_radps);
}

// Quirk: what is set prints otherwise than what was received: without the four floats, every number as ": dec", and the
// matrix with wheels and axes.
void ZAVRA_100::Set_ReactionWheel_All_Parameters(ZAVRA_100_Reactionwheel_Array_Parameters parameters)
{
    dump(array_title,
         List{Field{"NUMBER_OF_WHEELS", parameters.number_of_wheels}, Field{"CONTROL_MODE", parameters.control_mode},
              Field{"UPDATE_INTERVAL", parameters.update_interval},
              Field{"MAX_VALID_TIME_SPEED_MEASUREMENT", parameters.max_valid_time_speed_measurement}});
    dump_distribution(parameters.torque_distribution_matrix);
    send(*this, protocol::set_reactionwheel_all_parameters, parameters);
}

void ZAVRA_100::Get_ReactionWheel_All_Parameters(ZAVRA_100_Reactionwheel_Array_Parameters* parameters)
{
    *parameters = ask(*this, protocol::get_reactionwheel_all_parameters);
    dump(array_title, *parameters);
}

void ZAVRA_100::Enable_ReactionWheel_All_Idle_Mode()
{
    send(*this, protocol::enable_reactionwheel_all_idle_mode);
}

void ZAVRA_100::Set_ReactionWheel_Torque(ZAVRA_100_Vector3_float torque_Nm)
{
    dump_torque(torque_Nm);
    send(*this, protocol::set_reactionwheel_torque, torque_Nm);
}

void ZAVRA_100::Get_ReactionWheel_Torque(ZAVRA_100_Vector3_float* torque_Nm)
{
    *torque_Nm = ask(*this, protocol::get_reactionwheel_torque);
    dump_torque(*torque_Nm);
}

// Quirk: dipole moments and currents print once they are sent; every other setter of an actuator prints before.
void ZAVRA_100::Set_Magnettorquer_All_Dipole_Moments(ZAVRA_100_Vector3_float moment_Am)
{
    send(*this, protocol::set_magnettorquer_all_dipole_moments, moment_Am);
    dump_components("moment_Am", moment_Am);
}

void ZAVRA_100::Get_Magnettorquer_All_Dipole_Moments(ZAVRA_100_Vector3_float* moment_Am)
{
    *moment_Am = ask(*this, protocol::get_magnettorquer_all_dipole_moments);
    dump_components("moment_Am", *moment_Am);
}

void ZAVRA_100::Suspend_All_Magnettorquers()
{
    send(*this, protocol::suspend_all_magnettorquers);
}

void ZAVRA_100::Resume_All_Magnettorquers()
{
    send(*this, protocol::resume_all_magnettorquers);
}

// Quirk: the title is another record's.
void ZAVRA_100::Set_Magnettorquer_Parameters(ZAVRA_100_Magnetorquer_Parameters parameters)
{
    dump("ZAVRA_100_PID_Controller_Parameters", parameters);
    send(*this, protocol::set_magnettorquer_parameters, parameters);
}

void ZAVRA_100::Get_Magnettorquer_Parameters(ZAVRA_100_Magnetorquer_Parameters* parameters)
{
    *parameters = ask(*this, protocol::get_magnettorquer_parameters);
    dump("ZAVRA_100_Magnettorquer_Parameters", magnetorquer_fields<Lower_Case>(*parameters));
}

void ZAVRA_100::Set_Magnettorquer_All_Currents(ZAVRA_100_Vector3_float target_current_A)
{
    send(*this, protocol::set_magnettorquer_all_currents, target_current_A);
    dump_components("target_current_A", target_current_A);
}

void ZAVRA_100::Get_Magnettorquer_All_Currents(ZAVRA_100_Vector3_float* target_current_A)
{
    *target_current_A = ask(*this, protocol::get_magnettorquer_all_currents);
    dump_components("target_current_A", *target_current_A);
}
