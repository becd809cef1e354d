#pragma once

#include "command.h"
#include "records/controllers.h"
#include "vectors.h"

namespace zavra
{

template <>
inline constexpr auto field_list<ZAVRA_100_PID_Controller_Parameters> = [](auto& r) {
    return List{Field{"K_P", r.k_p},
                Field{"K_I", r.k_i},
                Field{"K_D", r.k_d},
                Field{"K_AW", r.k_aw},
                Field{"TH_AW", r.th_aw},
                Field{"CTRL_ACTUATOR_CMD_IF", r.ctrl_actuator_cmd_if},
                Field{"UPDATE_INTERVAL", r.update_interval}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Cascaded_PID_Controller_Parameters> = [](auto& r) {
    return List{Field{"K_P_IN", r.k_p_in},
                Field{"K_I_IN", r.k_i_in},
                Field{"K_D_IN", r.k_d_in},
                Field{"K_AW_IN", r.k_aw_in},
                Field{"TH_AW_IN", r.th_aw_in},
                Field{"K_P_OUT", r.k_p_out},
                Field{"K_I_OUT", r.k_i_out},
                Field{"K_D_OUT", r.k_d_out},
                Field{"K_AW_OUT", r.k_aw_out},
                Field{"TH_AW_OUT", r.th_aw_out},
                Field{"CTRL_ACTUATOR_CMD_IF", r.ctrl_actuator_cmd_if},
                Field{"UPDATE_INTERVAL", r.update_interval}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_BDot_Controller_Parameters> = [](auto& r) {
    return List{Field{"K", r.k}, Field{"CTRL_ACTUATOR_CMD_IF", r.ctrl_actuator_cmd_if},
                Field{"UPDATE_INTERVAL", r.update_interval}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_SunPointing_Controller_Parameters> = [](auto& r) {
    return List{Field{"K_P", r.k_p}, Field{"K_V", r.k_v, style::lower_case}, Field{"MAX_TORQUE", r.max_torque},
                Field{"CTRL_ACTUATOR_CMD_IF", r.ctrl_actuator_cmd_if}, Field{"UPDATE_INTERVAL", r.update_interval}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Sliding_Controller_Parameters> = [](auto& r) {
    return List{Field{"K_1", r.k_1}, Field{"K_2", r.k_2}, Field{"CTRL_ACTUATOR_CMD_IF", r.ctrl_actuator_cmd_if},
                Field{"UPDATE_INTERVAL", r.update_interval}};
};

static_assert(wire_size<ZAVRA_100_PID_Controller_Parameters> == 32 &&
              wire_size<ZAVRA_100_Cascaded_PID_Controller_Parameters> == 52 &&
              wire_size<ZAVRA_100_BDot_Controller_Parameters> == 16 &&
              wire_size<ZAVRA_100_SunPointing_Controller_Parameters> == 64 &&
              wire_size<ZAVRA_100_Sliding_Controller_Parameters> == 20);

namespace protocol
{

inline constexpr Command<void(unsigned char, ZAVRA_100_PID_Controller_Parameters)>
    set_singleaxis_angularvelocity_controller_parameters{0xC011,
                                                         "Set_SingleAxis_AngularVelocity_Controller_Parameters",
                                                         "Set Single-Axis Angular Velocity Controller PID Parameters",
                                                         {"axis", "parameters"}};
inline constexpr Command<ZAVRA_100_PID_Controller_Parameters(unsigned char)>
    get_singleaxis_angularvelocity_controller_parameters{0xC012,
                                                         "Get_SingleAxis_AngularVelocity_Controller_Parameters",
                                                         "Get Single-Axis Angular Velocity Controller PID Parameters",
                                                         {"axis"},
                                                         {"parameters"}};
inline constexpr Command<void(unsigned char, float)> start_singleaxis_angularvelocity_controller{
    0xC013,
    "Start_SingleAxis_AngularVelocity_Controller",
    "Start Single-Axis Angular Velocity Controller",
    {"axis", "target"}};
inline constexpr Command<void(unsigned char)> stop_singleaxis_angularvelocity_controller{
    0xC014, "Stop_SingleAxis_AngularVelocity_Controller", "Stop Single-Axis Angular Velocity Controller", {"axis"}};

// Quirk: the angle step controller's parameters share the angular velocity controller's identifiers: the unit tells
// them apart by the length of the request when they are set, and by the length of the read when they are asked for.
inline constexpr Command<void(unsigned char, ZAVRA_100_Cascaded_PID_Controller_Parameters)>
    set_singleaxis_anglestep_controller_parameters{0xC011,
                                                   "Set_SingleAxis_AngleStep_Controller_Parameters",
                                                   "Set Single-Axis Angle Step Controller Cascaded PID Parameters",
                                                   {"axis", "parameters"}};
// Quirk: the words are the angular velocity controller's.
inline constexpr Command<ZAVRA_100_Cascaded_PID_Controller_Parameters(unsigned char)>
    get_singleaxis_anglestep_controller_parameters{0xC012,
                                                   "Get_SingleAxis_AngleStep_Controller_Parameters",
                                                   "Get Single-Axis Angular Velocity Controller PID Parameters",
                                                   {"axis"},
                                                   {"parameters"}};
inline constexpr Command<void(unsigned char, float)> start_singleaxis_anglestep_controller{
    0xC033, "Start_SingleAxis_AngleStep_Controller", "Start Single-Axis Angle Step Controller", {"axis", "target"}};
inline constexpr Command<void(unsigned char)> stop_singleaxis_anglestep_controller{
    0xC034, "Stop_SingleAxis_AngleStep_Controller", "Stop Single-Axis Angle Step Controller", {"axis"}};

inline constexpr Command<void(ZAVRA_100_BDot_Controller_Parameters)> set_threeaxis_bdot_controller_max_parameters{
    0xC051,
    "Set_ThreeAxis_BDot_Controller_Max_Parameters",
    "Set Three-Axis B-Dot Controller Max Parameters",
    {"parameters"}};
inline constexpr Command<ZAVRA_100_BDot_Controller_Parameters()> get_threeaxis_bdot_controller_max_parameters{
    0xC052,
    "Get_ThreeAxis_BDot_Controller_Max_Parameters",
    "Get Three-Axis B-Dot Controller Max Parameters",
    {},
    {"parameters"}};
inline constexpr Command<void(ZAVRA_100_BDot_Controller_Parameters)>
    set_threeaxis_bdot_controller_proportional_parameters{0xC053,
                                                          "Set_ThreeAxis_BDot_Controller_Proportional_Parameters",
                                                          "Set Three-Axis B-Dot Controller Proportional Parameters",
                                                          {"parameters"}};
// Quirk: the words are those of the max variant.
inline constexpr Command<ZAVRA_100_BDot_Controller_Parameters()> get_threeaxis_bdot_controller_proportional_parameters{
    0xC054,
    "Get_ThreeAxis_BDot_Controller_Proportional_Parameters",
    "Get Three-Axis B-Dot Controller Max Parameters",
    {},
    {"parameters"}};

inline constexpr Command<void(ZAVRA_100_SunPointing_Controller_Parameters)>
    set_threeaxis_sunpointing_controller_parameters{0xC061,
                                                    "Set_ThreeAxis_SunPointing_Controller_Parameters",
                                                    "Set Three-Axis Sun Pointing Controller Parameters",
                                                    {"parameters"}};
inline constexpr Command<ZAVRA_100_SunPointing_Controller_Parameters()> get_threeaxis_sunpointing_controller_parameters{
    0xC062,
    "Get_ThreeAxis_SunPointing_Controller_Parameters",
    "Get Three-Axis Sun Pointing Controller Parameters",
    {},
    {"parameters"}};

inline constexpr Command<void(ZAVRA_100_Sliding_Controller_Parameters)> set_threeaxis_sliding_controller_parameters{
    0xC081,
    "Set_ThreeAxis_Sliding_Controller_Parameters",
    "Set Three-Axis Sliding Controller Parameters",
    {"parameters"}};
inline constexpr Command<ZAVRA_100_Sliding_Controller_Parameters()> get_threeaxis_sliding_controller_parameters{
    0xC082,
    "Get_ThreeAxis_Sliding_Controller_Parameters",
    "Get Three-Axis Sliding Controller Parameters",
    {},
    {"parameters"}};

inline constexpr List controllers_commands{set_singleaxis_angularvelocity_controller_parameters,
                                           get_singleaxis_angularvelocity_controller_parameters,
                                           start_singleaxis_angularvelocity_controller,
                                           stop_singleaxis_angularvelocity_controller,
                                           set_singleaxis_anglestep_controller_parameters,
                                           get_singleaxis_anglestep_controller_parameters,
                                           start_singleaxis_anglestep_controller,
                                           stop_singleaxis_anglestep_controller,
                                           set_threeaxis_bdot_controller_max_parameters,
                                           get_threeaxis_bdot_controller_max_parameters,
                                           set_threeaxis_bdot_controller_proportional_parameters,
                                           get_threeaxis_bdot_controller_proportional_parameters,
                                           set_threeaxis_sunpointing_controller_parameters,
                                           get_threeaxis_sunpointing_controller_parameters,
                                           set_threeaxis_sliding_controller_parameters,
                                           get_threeaxis_sliding_controller_parameters};

static_assert(controllers_commands.size == 16);

}

}
