#include "tests/support/cases.h"

using namespace zavra::test;

using Device = ZAVRA_100;

const Payload xyz = Payload().f32_range(1, 3);
const Payload speeds = Payload().f32_range(1, 6);
const Payload wheel = Payload().f32_range(1, 4).u64(0x0102030405060708);
// The API holds the torque distribution matrix wheel by wheel.
const Payload array = Payload().u32(1).u32(2).f32_range(3, 6).u64(7).u64(8).f32_permuted(
    9, {0, 6, 12, 1, 7, 13, 2, 8, 14, 3, 9, 15, 4, 10, 16, 5, 11, 17});
const Payload magnetorquers = Payload().f32_range(1, 15).u64(16).u64(17).u64(18);

static Lines magnetorquer_lines(const std::string& title, const std::string& maximum)
{
    return dump(title, "",
                "CONV_FACTORS_DIPOLE_MOMENT_TO_CURRENT.{xyz} MAX_DIPOLE_MOMENT." + maximum +
                    " ORIENTATION_TO_BF.M{123}{123} RELAX_TIME_{XYZ}");
}

const Lines array_title{"ZAVRA_100_Reactionwheel_Array_Parameters", "NUMBER_OF_WHEELS: dec = 1",
                        "CONTROL_MODE: dec = 2"};
const Lines speed_lines = dump("", "speed_radps.", "{xyzuvw}");
const Lines torque_lines{"WHEEL_TORQUE_Nm (X): dec = 1", "WHEEL_TORQUE_Nm (Y): dec = 2",
                         "WHEEL_TORQUE_Nm (Z): dec = 3"};
const Lines moment_lines = dump("", "moment_Am.", "{xyz}");

/// With the axes of the wheels 0 to 2 and 3 to 5 in each row.
static Lines matrix_lines()
{
    Lines lines;
    for (int i = 0; i < 18; ++i)
        lines.push_back("TORQUE_DISTRIBUTION_MATRIX_M" + std::to_string(i / 6) + std::to_string(i % 6) + " (RW" +
                        std::to_string(i % 6) + "-" + "XUYVZW"[i / 3] + "): dec = " + std::to_string(9 + i));
    return lines;
}

/// The operations of one wheel whose index is checked, and of one whose index the unit judges.
static std::vector<Case> checked(unsigned char index)
{
    const std::string number = hexadecimal({index});
    const Lines lines{"WHEEL_INDEX: dec = " + std::to_string(index), "WHEEL_SPEED_rad/s: dec = -0.5"};
    return {
        set(call(&Api::Set_ReactionWheel_Speed, index, -0.5F), "set reaction wheel speed",
            "b001 0500" + number + "bf000000", lines),
        get(call(&Api::Get_ReactionWheel_Speed, index), "get reaction wheel speed", "b002 0100" + number,
            Payload().f32(-0.5F), lines),
        set(call(&Api::Enable_ReactionWheel_Idle_Mode, index), "enable reaction wheel idle mode", "b007 0100" + number),
    };
}

static std::vector<Case> unchecked(unsigned char index)
{
    const std::string number = hexadecimal({index});
    const Lines lines = dump("WHEEL_INDEX: dec = " + std::to_string(index), "",
                             "MOMENT_OF_INERTIA MAX_SPEED MAX_TORQUE MOTOR_CONSTANT "
                             "MAX_TIME_FOR_SPEED_MEASUREMENT=72623859790382856");
    return {
        set(call(BOTH(Set_ReactionWheel_Parameters), index, wheel), "set reaction wheel single parameters",
            "Set All Reaction Wheel Parameters", "b003 1900" + number + wheel, lines),
        get(call(BOTH(Get_ReactionWheel_Parameters), index), "get reaction wheel parameters",
            "Get All Reaction Wheel Parameters", "b004 0100" + number, wheel, lines),
    };
}

TEST_F(Operation_Test, reaction_wheel_of_an_index)
{
    check(checked(0));
    check(checked(5));
    for (const unsigned char index : octets("06ff"))
        check_refused(checked(index), "unknown reaction wheel index");
    check(unchecked(9));
    check(unchecked(255));
}

TEST_F(Operation_Test, reaction_wheels)
{
    check({
        set(call(&Api::Set_ReactionWheel_All_Update_Interval, 1000), "set reaction wheel all update interval",
            "Set All Reaction Wheel Update Interval", "b005 0800 00000000000003e8"),
        get(call(&Api::Get_ReactionWheel_All_Update_Interval), "get reaction wheel all update interval",
            "Get Reaction Wheel Speed", "b006 0000", Payload().u64(1000), {"interval_msec: dec = 1000"}),
        set(call(BOTH(Set_ReactionWheel_All_Speeds), speeds), "set reaction all speeds",
            "Set All Reaction Wheel Speeds", "b008 1800 3f800000 40000000 40400000 40800000 40a00000 40c00000",
            speed_lines),
        get(call(BOTH(Get_ReactionWheel_All_Speeds)), "get reaction wheel all speeds", "Get Reaction Wheel Speed",
            "b009 0000", speeds, speed_lines),
        set(call(BOTH(Set_ReactionWheel_All_Parameters), array), "set reaction wheel all parameters",
            "Set Parameters of All Reaction Wheels", "b00a 7000" + array,
            array_title + Lines{"UPDATE_INTERVAL: dec = 7", "MAX_VALID_TIME_SPEED_MEASUREMENT: dec = 8"} +
                matrix_lines()),
        get(call(BOTH(Get_ReactionWheel_All_Parameters)), "get reaction wheel all parameters",
            "Get Parameters of All Reaction Wheels", "b00b 0000", array,
            array_title +
                Lines{"MOMENT_OF_INERTIA = 3", "MAX_SPEED = 4", "MAX_TORQUE = 5", "MOTOR_CONSTANT = 6",
                      "UPDATE_INTERVAL: dec = 7", "MAX_VALID_TIME_SPEED_MEASUREMENT = 8"} +
                dump("", "TORQUE_DISTRIBUTION_MATRIX_", "M{012}{012345}", 9)),
        set(call(&Api::Enable_ReactionWheel_All_Idle_Mode), "enable all reaction wheel idle mode", "b00c 0000"),
        set(call(&Api::Set_ReactionWheel_Torque_Target, &Device::Set_ReactionWheel_Torque, xyz),
            "set reaction wheel torque", "Set Reaction Wheel Torque Target", "b00d 0c00 3f800000 40000000 40400000",
            torque_lines),
        get(call(&Api::Get_ReactionWheel_Torque_Target, &Device::Get_ReactionWheel_Torque), "get reaction wheel torque",
            "Get Reaction Wheel Torque Target", "b00e 0000", xyz, torque_lines),
    });
}

TEST_F(Operation_Test, magnetorquers)
{
    check({
        set_then_print(call(&Api::Set_Magnettorquer_All_Dipole_Moments, xyz), "set all magnettorquer dipole moments",
                       "Set Dipole Moment of All Magnetorquers", "b101 0c00 3f800000 40000000 40400000", moment_lines),
        get(call(&Api::Get_Magnettorquer_All_Dipole_Moments), "get all magnettorquer dipole moments",
            "Get Dipole Moments of All Magnetorquers", "b102 0000", xyz, moment_lines),
        set(call(&Api::Suspend_All_Magnettorquers), "suspend all magnettorquers", "Suspend All Magnetorquers",
            "b103 0000"),
        set(call(&Api::Resume_All_Magnettorquers), "resume all magnettorquers", "Resume All Magnetorquers",
            "b104 0000"),
        set(call(BOTH(Set_Magnettorquer_Parameters), magnetorquers), "set magnettorquer parameters",
            "Set Dipole Moment of All Magnetorquers", "b105 5400" + magnetorquers,
            magnetorquer_lines("ZAVRA_100_PID_Controller_Parameters", "{XYZ}")),
        get(call(BOTH(Get_Magnettorquer_Parameters)), "get magnettorquer single parameters",
            "Get Magnetorquer Parameters", "b106 0000", magnetorquers,
            magnetorquer_lines("ZAVRA_100_Magnettorquer_Parameters", "{xyz}")),
        set_then_print(call(&Api::Set_Magnettorquer_All_Currents, xyz), "set all magnettorquer currents",
                       "Set Currents of All Magnetorquers", "b107 0c00 3f800000 40000000 40400000",
                       dump("", "target_current_A.", "{xyz}")),
        // Dipole moments are what this one has always returned.
        get(call(&Api::Get_Magnettorquer_All_Currents), "get all magnettorquer currents",
            "Get Dipole Moments of All Magnetorquers", "b102 0000", xyz, moment_lines),
    });
}
