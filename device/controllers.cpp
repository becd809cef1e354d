#include "../protocol/controllers.h"
#include "dump.h"
#include "exchange.h"

using namespace zavra;

namespace
{

constexpr const char* pid_title = "ZAVRA_100_PID_Controller_Parameters";
constexpr const char* bdot_title = "ZAVRA_100_BDot_Controller_Parameters";
constexpr const char* cascaded_pid_title = bdot_title; // Quirk: this is not the record's name.
constexpr const char* sunpointing_title = "ZAVRA_100_SunPointing_Controller_Parameters";
constexpr const char* sliding_title = "ZAVRA_100_Sliding_Controller_Parameters";

template <class Parameters>
void set_parameters(ZAVRA_100& device, const Command<void(Parameters)>& command, const char* title,
                    const Parameters& parameters)
{
    dump(title, parameters);
    send(device, command, parameters);
}

template <class Parameters>
void get_parameters(ZAVRA_100& device, const Command<Parameters()>& command, const char* title, Parameters* parameters)
{
    *parameters = ask(device, command);
    dump(title, *parameters);
}

}

void ZAVRA_100::Set_SingleAxis_AngularVelocity_Controller_Parameters(unsigned char axis,
                                                                     ZAVRA_100_PID_Controller_Parameters parameters)
{
    dump(pid_title, parameters);
    send(*this, protocol::set_singleaxis_angularvelocity_controller_parameters, axis, parameters);
}

void ZAVRA_100::Get_SingleAxis_AngularVelocity_Controller_Parameters(unsigned char axis,
                                                                     ZAVRA_100_PID_Controller_Parameters* parameters)
{
    *parameters = ask(*this, protocol::get_singleaxis_angularvelocity_controller_parameters, axis);
    dump(pid_title, *parameters);
}

void ZAVRA_100::Start_SingleAxis_AngularVelocity_Controller(unsigned char axis, float target)
{
    send(*this, protocol::start_singleaxis_angularvelocity_controller, axis, target);
}

void ZAVRA_100::Stop_SingleAxis_AngularVelocity_Controller(unsigned char axis)
{
    send(*this, protocol::stop_singleaxis_angularvelocity_controller, axis);
}

void ZAVRA_100::Set_SingleAxis_AngleStep_Controller_Parameters(unsigned char axis,
                                                               ZAVRA_100_Cascaded_PID_Controller_Parameters parameters)
{
    dump(cascaded_pid_title, parameters);
    // Quirk: in this request k_d_out's place lies ten bytes too far, under th_aw_out and ctrl_actuator_cmd_if, which
    // overwrite it: the value never travels, and the bytes where the unit expects it stay zero.
    parameters.k_d_out = 0;
    send(*this, protocol::set_singleaxis_anglestep_controller_parameters, axis, parameters);
}

void ZAVRA_100::Get_SingleAxis_AngleStep_Controller_Parameters(unsigned char axis,
                                                               ZAVRA_100_Cascaded_PID_Controller_Parameters* parameters)
{
    const auto answer = ask(*this, protocol::get_singleaxis_anglestep_controller_parameters, axis);
    // Quirk: only the proportional gains come from the response; the other fields are taken from the request, where
    // everything beyond the axis is zero.
    *parameters = {};
    parameters->k_p_in = answer.k_p_in;
    parameters->k_p_out = answer.k_p_out;
    dump(cascaded_pid_title, *parameters);
}

void ZAVRA_100::Start_SingleAxis_AngleStep_Controller(unsigned char axis, float target)
{
    send(*this, protocol::start_singleaxis_anglestep_controller, axis, target);
}

void ZAVRA_100::Stop_SingleAxis_AngleStep_Controller(unsigned char axis)
{
    send(*this, protocol::stop_singleaxis_anglestep_controller, axis);
}

void ZAVRA_100::Set_ThreeAxis_BDot_Controller_Max_Parameters(ZAVRA_100_BDot_Controller_Parameters parameters)
{
    set_parameters(*this, protocol::set_threeaxis_bdot_controller_max_parameters, bdot_title, parameters);
}

void ZAVRA_100::Get_ThreeAxis_BDot_Controller_Max_Parameters(ZAVRA_100_BDot_Controller_Parameters* parameters)
{
    get_parameters(*this, protocol::get_threeaxis_bdot_controller_max_parameters, bdot_title, parameters);
}

void ZAVRA_100::Set_ThreeAxis_BDot_Controller_Proportional_Parameters(ZAVRA_100_BDot_Controller_Parameters parameters)
{
    set_parameters(*this, protocol::set_threeaxis_bdot_controller_proportional_parameters, bdot_title, parameters);
}

void ZAVRA_100::Get_ThreeAxis_BDot_Controller_Proportional_Parameters(ZAVRA_100_BDot_Controller_Parameters* parameters)
{
    get_parameters(*this, protocol::get_threeaxis_bdot_controller_proportional_parameters, bdot_title, parameters);
}

void ZAVRA_100::Set_ThreeAxis_SunPointing_Controller_Parameters(ZAVRA_100_SunPointing_Controller_Parameters parameters)
{
    set_parameters(*this, protocol::set_threeaxis_sunpointing_controller_parameters, sunpointing_title, parameters);
}

void ZAVRA_100::Get_ThreeAxis_SunPointing_Controller_Parameters(ZAVRA_100_SunPointing_Controller_Parameters* parameters)
{
    get_parameters(*this, protocol::get_threeaxis_sunpointing_controller_parameters, sunpointing_title, parameters);
}

void ZAVRA_100::Set_ThreeAxis_Sliding_Controller_Parameters(ZAVRA_100_Sliding_Controller_Parameters parameters)
{
    set_parameters(*this, protocol::set_threeaxis_sliding_controller_parameters, sliding_title, parameters);
}

void ZAVRA_100::Get_ThreeAxis_Sliding_Controller_Parameters(ZAVRA_100_Sliding_Controller_Parameters* parameters)
{
    get_parameters(*this, protocol::get_threeaxis_sliding_controller_parameters, sliding_title, parameters);
}
