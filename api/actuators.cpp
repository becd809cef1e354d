#include "VELM_ZAVRA_API.h"

#include "../device/ZAVRA_100.h"
#include "call.h"
#include "like_actuators.h"

using namespace zavra;

void VELM_ZAVRA_API::Set_ReactionWheel_Speed(VELM_ZAVRA_API_REACTIONWHEELS wheel, float speed_radps)
{
    command(*device_, "set reaction wheel speed", &ZAVRA_100::Set_ReactionWheel_Speed, wheel, speed_radps);
}

float VELM_ZAVRA_API::Get_ReactionWheel_Speed(VELM_ZAVRA_API_REACTIONWHEELS wheel)
{
    return query<float>(*device_, "get reaction wheel speed", &ZAVRA_100::Get_ReactionWheel_Speed, wheel);
}

void VELM_ZAVRA_API::Set_ReactionWheel_Parameters(VELM_ZAVRA_API_REACTIONWHEELS wheel,
                                                  VELM_ZAVRA_API_SINGLE_REACTIONWHEEL_PARAMETERS parameters)
{
    command(*device_, "set reaction wheel single parameters", &ZAVRA_100::Set_ReactionWheel_Parameters, wheel,
            parameters);
}

VELM_ZAVRA_API_SINGLE_REACTIONWHEEL_PARAMETERS
VELM_ZAVRA_API::Get_ReactionWheel_Parameters(VELM_ZAVRA_API_REACTIONWHEELS wheel)
{
    return query<VELM_ZAVRA_API_SINGLE_REACTIONWHEEL_PARAMETERS>(*device_, "get reaction wheel parameters",
                                                                 &ZAVRA_100::Get_ReactionWheel_Parameters, wheel);
}

void VELM_ZAVRA_API::Set_ReactionWheel_All_Update_Interval(unsigned long long interval_msec)
{
    command(*device_, "set reaction wheel all update interval", &ZAVRA_100::Set_ReactionWheel_All_Update_Interval,
            interval_msec);
}

unsigned long long VELM_ZAVRA_API::Get_ReactionWheel_All_Update_Interval()
{
    return query<unsigned long long>(*device_, "get reaction wheel all update interval",
                                     &ZAVRA_100::Get_ReactionWheel_All_Update_Interval);
}

void VELM_ZAVRA_API::Enable_ReactionWheel_Idle_Mode(VELM_ZAVRA_API_REACTIONWHEELS wheel)
{
    command(*device_, "enable reaction wheel idle mode", &ZAVRA_100::Enable_ReactionWheel_Idle_Mode, wheel);
}

void VELM_ZAVRA_API::Set_ReactionWheel_All_Speeds(VELM_ZAVRA_API_REACTIONWHEEL_SPEEDS speeds)
{
    command(*device_, "set reaction all speeds", &ZAVRA_100::Set_ReactionWheel_All_Speeds, speeds);
}

VELM_ZAVRA_API_REACTIONWHEEL_SPEEDS VELM_ZAVRA_API::Get_ReactionWheel_All_Speeds()
{
    return query<VELM_ZAVRA_API_REACTIONWHEEL_SPEEDS>(*device_, "get reaction wheel all speeds",
                                                      &ZAVRA_100::Get_ReactionWheel_All_Speeds);
}

void VELM_ZAVRA_API::Set_ReactionWheel_All_Parameters(VELM_ZAVRA_API_REACTIONWHEEL_ARRAY_PARAMETERS parameters)
{
    command(*device_, "set reaction wheel all parameters", &ZAVRA_100::Set_ReactionWheel_All_Parameters, parameters);
}

VELM_ZAVRA_API_REACTIONWHEEL_ARRAY_PARAMETERS VELM_ZAVRA_API::Get_ReactionWheel_All_Parameters()
{
    return query<VELM_ZAVRA_API_REACTIONWHEEL_ARRAY_PARAMETERS>(*device_, "get reaction wheel all parameters",
                                                                &ZAVRA_100::Get_ReactionWheel_All_Parameters);
}

void VELM_ZAVRA_API::Enable_ReactionWheel_All_Idle_Mode()
{
    command(*device_, "enable all reaction wheel idle mode", &ZAVRA_100::Enable_ReactionWheel_All_Idle_Mode);
}

void VELM_ZAVRA_API::Set_ReactionWheel_Torque_Target(VELM_ZAVRA_API_REACTIONWHEEL_TORQUE torque)
{
    command(*device_, "set reaction wheel torque", &ZAVRA_100::Set_ReactionWheel_Torque, torque);
}

VELM_ZAVRA_API_REACTIONWHEEL_TORQUE VELM_ZAVRA_API::Get_ReactionWheel_Torque_Target()
{
    return query<VELM_ZAVRA_API_REACTIONWHEEL_TORQUE>(*device_, "get reaction wheel torque",
                                                      &ZAVRA_100::Get_ReactionWheel_Torque);
}

void VELM_ZAVRA_API::Set_Magnettorquer_All_Dipole_Moments(VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT moment_Am)
{
    command(*device_, "set all magnettorquer dipole moments", &ZAVRA_100::Set_Magnettorquer_All_Dipole_Moments,
            moment_Am);
}

VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT VELM_ZAVRA_API::Get_Magnettorquer_All_Dipole_Moments()
{
    return query<VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT>(*device_, "get all magnettorquer dipole moments",
                                                   &ZAVRA_100::Get_Magnettorquer_All_Dipole_Moments);
}

void VELM_ZAVRA_API::Suspend_All_Magnettorquers()
{
    command(*device_, "suspend all magnettorquers", &ZAVRA_100::Suspend_All_Magnettorquers);
}

void VELM_ZAVRA_API::Resume_All_Magnettorquers()
{
    command(*device_, "resume all magnettorquers", &ZAVRA_100::Resume_All_Magnettorquers);
}

void VELM_ZAVRA_API::Set_Magnettorquer_Parameters(VELM_ZAVRA_API_MAGNETORQUER_PARAMETERS parameters)
{
    command(*device_, "set magnettorquer parameters", &ZAVRA_100::Set_Magnettorquer_Parameters, parameters);
}

VELM_ZAVRA_API_MAGNETORQUER_PARAMETERS VELM_ZAVRA_API::Get_Magnettorquer_Parameters()
{
    return query<VELM_ZAVRA_API_MAGNETORQUER_PARAMETERS>(*device_, "get magnettorquer single parameters",
                                                         &ZAVRA_100::Get_Magnettorquer_Parameters);
}

void VELM_ZAVRA_API::Set_Magnettorquer_All_Currents(VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT target_current_A)
{
    command(*device_, "set all magnettorquer currents", &ZAVRA_100::Set_Magnettorquer_All_Currents, target_current_A);
}

// Quirk: asks for the dipole moments, not for the currents.
VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT VELM_ZAVRA_API::Get_Magnettorquer_All_Currents()
{
    return query<VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT>(*device_, "get all magnettorquer currents",
                                                   &ZAVRA_100::Get_Magnettorquer_All_Dipole_Moments);
}
