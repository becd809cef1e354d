#pragma once

#include "command.h"
#include "records/actuators.h"
#include "vectors.h"

namespace zavra
{

template <>
inline constexpr auto field_list<ZAVRA_100_Single_Reactionwheel_Parameters> = [](auto& r) {
    return List{Field{"MOMENT_OF_INERTIA", r.moment_of_inertia}, Field{"MAX_SPEED", r.max_speed}.in("rad/s"),
                Field{"MAX_TORQUE", r.max_torque}.in("N m"), Field{"MOTOR_CONSTANT", r.motor_constant},
                Field{"MAX_TIME_FOR_SPEED_MEASUREMENT", r.max_time_for_speed_measurement}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Matrix3x6_float> = [](auto& m) {
    return List{Field{"M00", m.m00}, Field{"M01", m.m01}, Field{"M02", m.m02}, Field{"M03", m.m03}, Field{"M04", m.m04},
                Field{"M05", m.m05}, Field{"M10", m.m10}, Field{"M11", m.m11}, Field{"M12", m.m12}, Field{"M13", m.m13},
                Field{"M14", m.m14}, Field{"M15", m.m15}, Field{"M20", m.m20}, Field{"M21", m.m21}, Field{"M22", m.m22},
                Field{"M23", m.m23}, Field{"M24", m.m24}, Field{"M25", m.m25}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Reactionwheel_Array_Parameters> = [](auto& r) {
    return List{Field{"NUMBER_OF_WHEELS", r.number_of_wheels},
                Field{"CONTROL_MODE", r.control_mode},
                Field{"MOMENT_OF_INERTIA", r.moment_of_inertia, style::bare},
                Field{"MAX_SPEED", r.max_speed, style::bare}.in("rad/s"),
                Field{"MAX_TORQUE", r.max_torque, style::bare}.in("N m"),
                Field{"MOTOR_CONSTANT", r.motor_constant, style::bare},
                Field{"UPDATE_INTERVAL", r.update_interval}.in("ms"),
                Field{"MAX_VALID_TIME_SPEED_MEASUREMENT", r.max_valid_time_speed_measurement, style::bare},
                Field{"TORQUE_DISTRIBUTION_MATRIX", r.torque_distribution_matrix, style::underscored}};
};

// Quirk: dumps of what is set and of what was received print the members of the maximum in different cases.
template <class Max_Dipole_Moment_Style>
inline constexpr auto magnetorquer_fields = [](auto& r) {
    return List{
        Field{"CONV_FACTORS_DIPOLE_MOMENT_TO_CURRENT", r.conv_factors_dipole_moment_to_current, style::lower_case},
        Field{"MAX_DIPOLE_MOMENT", r.max_dipole_moment, Max_Dipole_Moment_Style{}}.in("A m^2"),
        Field{"ORIENTATION_TO_BF", r.orientation_to_bf},
        Field{"RELAX_TIME_X", r.relax_time_x},
        Field{"RELAX_TIME_Y", r.relax_time_y},
        Field{"RELAX_TIME_Z", r.relax_time_z}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Magnetorquer_Parameters> = magnetorquer_fields<Plain>;

static_assert(wire_size<ZAVRA_100_Single_Reactionwheel_Parameters> == 24 &&
              wire_size<ZAVRA_100_Reactionwheel_Array_Parameters> == 112 &&
              wire_size<ZAVRA_100_Magnetorquer_Parameters> == 84);

namespace protocol
{

inline constexpr Command<void(unsigned char, float)> set_reactionwheel_speed{
    0xB001, "Set_ReactionWheel_Speed", "Set Reaction Wheel Speed", {"index", Value_Name{"speed_radps", "rad/s"}}};
inline constexpr Command<float(unsigned char)> get_reactionwheel_speed{
    0xB002, "Get_ReactionWheel_Speed", "Get Reaction Wheel Speed", {"index"}, {Value_Name{"speed_radps", "rad/s"}}};

// Quirk: the words of these two speak of all wheels, though each call is about one.
inline constexpr Command<void(unsigned char, ZAVRA_100_Single_Reactionwheel_Parameters)> set_reactionwheel_parameters{
    0xB003, "Set_ReactionWheel_Parameters", "Set All Reaction Wheel Parameters", {"index", "parameters"}};
inline constexpr Command<ZAVRA_100_Single_Reactionwheel_Parameters(unsigned char)> get_reactionwheel_parameters{
    0xB004, "Get_ReactionWheel_Parameters", "Get All Reaction Wheel Parameters", {"index"}, {"parameters"}};

inline constexpr Command<void(unsigned long long)> set_reactionwheel_all_update_interval{
    0xB005,
    "Set_ReactionWheel_All_Update_Interval",
    "Set All Reaction Wheel Update Interval",
    {Value_Name{"interval_msec", "ms"}}};
// Quirk: the words of this getter and of that of all speeds are the single speed's.
inline constexpr Command<unsigned long long()> get_reactionwheel_all_update_interval{
    0xB006,
    "Get_ReactionWheel_All_Update_Interval",
    "Get Reaction Wheel Speed",
    {},
    {Value_Name{"interval_msec", "ms"}}};

inline constexpr Command<void(unsigned char)> enable_reactionwheel_idle_mode{
    0xB007, "Enable_ReactionWheel_Idle_Mode", "Enable Reaction Wheel Idle Mode", {"index"}};

inline constexpr Command<void(ZAVRA_100_Vector6_float)> set_reactionwheel_all_speeds{
    0xB008, "Set_ReactionWheel_All_Speeds", "Set All Reaction Wheel Speeds", {Value_Name{"speed_radps", "rad/s"}}};
inline constexpr Command<ZAVRA_100_Vector6_float()> get_reactionwheel_all_speeds{
    0xB009, "Get_ReactionWheel_All_Speeds", "Get Reaction Wheel Speed", {}, {Value_Name{"speed_radps", "rad/s"}}};

inline constexpr Command<void(ZAVRA_100_Reactionwheel_Array_Parameters)> set_reactionwheel_all_parameters{
    0xB00A, "Set_ReactionWheel_All_Parameters", "Set Parameters of All Reaction Wheels", {"parameters"}};
inline constexpr Command<ZAVRA_100_Reactionwheel_Array_Parameters()> get_reactionwheel_all_parameters{
    0xB00B, "Get_ReactionWheel_All_Parameters", "Get Parameters of All Reaction Wheels", {}, {"parameters"}};

inline constexpr Command<void()> enable_reactionwheel_all_idle_mode{0xB00C, "Enable_ReactionWheel_All_Idle_Mode",
                                                                    "Enable All Reaction Wheel Idle Mode"};

inline constexpr Command<void(ZAVRA_100_Vector3_float)> set_reactionwheel_torque{
    0xB00D, "Set_ReactionWheel_Torque", "Set Reaction Wheel Torque Target", {Value_Name{"torque_Nm", "N m"}}};
inline constexpr Command<ZAVRA_100_Vector3_float()> get_reactionwheel_torque{
    0xB00E, "Get_ReactionWheel_Torque", "Get Reaction Wheel Torque Target", {}, {Value_Name{"torque_Nm", "N m"}}};

inline constexpr Command<void(ZAVRA_100_Vector3_float)> set_magnettorquer_all_dipole_moments{
    0xB101,
    "Set_Magnettorquer_All_Dipole_Moments",
    "Set Dipole Moment of All Magnetorquers",
    {Value_Name{"moment_Am", "A m^2"}}};
inline constexpr Command<ZAVRA_100_Vector3_float()> get_magnettorquer_all_dipole_moments{
    0xB102,
    "Get_Magnettorquer_All_Dipole_Moments",
    "Get Dipole Moments of All Magnetorquers",
    {},
    {Value_Name{"moment_Am", "A m^2"}}};

inline constexpr Command<void()> suspend_all_magnettorquers{0xB103, "Suspend_All_Magnettorquers",
                                                            "Suspend All Magnetorquers"};
inline constexpr Command<void()> resume_all_magnettorquers{0xB104, "Resume_All_Magnettorquers",
                                                           "Resume All Magnetorquers"};

// Quirk: the words are those of the dipole moments' setter.
inline constexpr Command<void(ZAVRA_100_Magnetorquer_Parameters)> set_magnettorquer_parameters{
    0xB105, "Set_Magnettorquer_Parameters", "Set Dipole Moment of All Magnetorquers", {"parameters"}};
inline constexpr Command<ZAVRA_100_Magnetorquer_Parameters()> get_magnettorquer_parameters{
    0xB106, "Get_Magnettorquer_Parameters", "Get Magnetorquer Parameters", {}, {"parameters"}};

inline constexpr Command<void(ZAVRA_100_Vector3_float)> set_magnettorquer_all_currents{
    0xB107,
    "Set_Magnettorquer_All_Currents",
    "Set Currents of All Magnetorquers",
    {Value_Name{"target_current_A", "A"}}};
inline constexpr Command<ZAVRA_100_Vector3_float()> get_magnettorquer_all_currents{
    0xB108,
    "Get_Magnettorquer_All_Currents",
    "Get Currents of All Magnetorquers",
    {},
    {Value_Name{"target_current_A", "A"}}};

inline constexpr List actuators_commands{set_reactionwheel_speed,
                                         get_reactionwheel_speed,
                                         set_reactionwheel_parameters,
                                         get_reactionwheel_parameters,
                                         set_reactionwheel_all_update_interval,
                                         get_reactionwheel_all_update_interval,
                                         enable_reactionwheel_idle_mode,
                                         set_reactionwheel_all_speeds,
                                         get_reactionwheel_all_speeds,
                                         set_reactionwheel_all_parameters,
                                         get_reactionwheel_all_parameters,
                                         enable_reactionwheel_all_idle_mode,
                                         set_reactionwheel_torque,
                                         get_reactionwheel_torque,
                                         set_magnettorquer_all_dipole_moments,
                                         get_magnettorquer_all_dipole_moments,
                                         suspend_all_magnettorquers,
                                         resume_all_magnettorquers,
                                         set_magnettorquer_parameters,
                                         get_magnettorquer_parameters,
                                         set_magnettorquer_all_currents,
                                         get_magnettorquer_all_currents};

static_assert(actuators_commands.size == 22);

}

}
