#include "tests/support/command_cases.h"

namespace zavra::test
{

namespace
{

using Lines = std::vector<std::string>;

Lines after(Lines lines, const Lines& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
    return lines;
}

/// The labels with the numbers from `first` on behind them.
Lines numbered(const Lines& labels, int first = 1)
{
    Lines lines;
    for (const std::string& label : labels)
        lines.push_back(label + std::to_string(first++));
    return lines;
}

using Device = ZAVRA_100;
constexpr unsigned char wheel_255 = 255;
constexpr ZAVRA_100_Vector3_float xyz{1, 2, 3};
constexpr ZAVRA_100_Vector6_float speeds{1, 2, 3, 4, 5, 6};

const std::string array_payload = Payload().u32(1).u32(2).f32_range(3, 6).u64(7).u64(8).f32_range(9, 26).hexadecimal();
const ZAVRA_100_Reactionwheel_Array_Parameters array{
    1, 2, 3, 4, 5, 6, 7, 8, {9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26}};

const std::string wheel_payload = Payload().f32_range(1, 4).u64(0x0102030405060708).hexadecimal();
const ZAVRA_100_Single_Reactionwheel_Parameters wheel{1, 2, 3, 4, 0x0102030405060708};

const std::string magnetorquer_payload = Payload().f32_range(1, 15).u64(16).u64(17).u64(18).hexadecimal();
const ZAVRA_100_Magnetorquer_Parameters magnetorquers{{1, 2, 3}, {4, 5, 6}, {7, 8, 9, 10, 11, 12, 13, 14, 15},
                                                      16,        17,        18};

Lines wheel_lines(int index)
{
    return {"WHEEL_INDEX: dec = " + std::to_string(index),
            "MOMENT_OF_INERTIA: dec = 1",
            "MAX_SPEED: dec = 2",
            "MAX_TORQUE: dec = 3",
            "MOTOR_CONSTANT: dec = 4",
            "MAX_TIME_FOR_SPEED_MEASUREMENT: dec = 72623859790382856"};
}

Lines magnetorquer_lines(const std::string& title, const std::string& maximum_axes)
{
    Lines labels;
    for (const char axis : {'x', 'y', 'z'})
        labels.push_back(std::string("CONV_FACTORS_DIPOLE_MOMENT_TO_CURRENT.") + axis + ": dec = ");
    for (const char axis : maximum_axes)
        labels.push_back(std::string("MAX_DIPOLE_MOMENT.") + axis + ": dec = ");
    for (const char* element : {"11", "12", "13", "21", "22", "23", "31", "32", "33"})
        labels.push_back(std::string("ORIENTATION_TO_BF.M") + element + ": dec = ");
    for (const char axis : {'X', 'Y', 'Z'})
        labels.push_back(std::string("RELAX_TIME_") + axis + ": dec = ");
    return after({title}, numbered(labels));
}

Lines matrix_lines(const Lines& suffixes)
{
    Lines labels;
    for (std::size_t i = 0; i < 18; ++i)
        labels.push_back("TORQUE_DISTRIBUTION_MATRIX_M" + std::to_string(i / 6) + std::to_string(i % 6) +
                         (suffixes.empty() ? "" : " (" + suffixes[i] + ")") + ": dec = ");
    return numbered(labels, 9);
}

const Lines speed_lines = numbered({"speed_radps.x: dec = ", "speed_radps.y: dec = ", "speed_radps.z: dec = ",
                                    "speed_radps.u: dec = ", "speed_radps.v: dec = ", "speed_radps.w: dec = "});
const Lines torque_lines =
    numbered({"WHEEL_TORQUE_Nm (X): dec = ", "WHEEL_TORQUE_Nm (Y): dec = ", "WHEEL_TORQUE_Nm (Z): dec = "});
const Lines moment_lines = numbered({"moment_Am.x: dec = ", "moment_Am.y: dec = ", "moment_Am.z: dec = "});
const Lines current_lines =
    numbered({"target_current_A.x: dec = ", "target_current_A.y: dec = ", "target_current_A.z: dec = "});

const std::string one_two_three = "3f800000 40000000 40400000";
const std::string one_to_six = one_two_three + "40800000 40a00000 40c00000";

}

TEST_F(Command_Test, reaction_wheel_commands)
{
    check({
        {"Set_ReactionWheel_Speed",
         [](auto& d) { d.Set_ReactionWheel_Speed(5, -0.5F); },
         "b001 0500 05 bf000000",
         "",
         "Set Reaction Wheel Speed",
         {"WHEEL_INDEX: dec = 5", "WHEEL_SPEED_rad/s: dec = -0.5"}},
        {"Get_ReactionWheel_Speed",
         [](auto& d) {
             float speed;
             d.Get_ReactionWheel_Speed(0, &speed);
             EXPECT_EQ(speed, 1.0F);
         },
         "b002 0100 00",
         "3f800000",
         "Get Reaction Wheel Speed",
         {"WHEEL_INDEX: dec = 0", "WHEEL_SPEED_rad/s: dec = 1"}},
        {"Set_ReactionWheel_Parameters", [](auto& d) { d.Set_ReactionWheel_Parameters(9, wheel); },
         "b003 1900 09" + wheel_payload, "", "Set All Reaction Wheel Parameters", wheel_lines(9)},
        {"Get_ReactionWheel_Parameters", read(&Device::Get_ReactionWheel_Parameters, wheel_255), "b004 0100 ff",
         wheel_payload, "Get All Reaction Wheel Parameters", wheel_lines(255)},
        {"Set_ReactionWheel_All_Update_Interval", [](auto& d) { d.Set_ReactionWheel_All_Update_Interval(1000); },
         "b005 0800 00000000000003e8", "", "Set All Reaction Wheel Update Interval"},
        {"Get_ReactionWheel_All_Update_Interval",
         [](auto& d) {
             unsigned long long msec;
             d.Get_ReactionWheel_All_Update_Interval(&msec);
             EXPECT_EQ(msec, 1000U);
         },
         "b006 0000",
         "00000000000003e8",
         "Get Reaction Wheel Speed",
         {"interval_msec: dec = 1000"}},
        {"Enable_ReactionWheel_Idle_Mode", [](auto& d) { d.Enable_ReactionWheel_Idle_Mode(3); }, "b007 0100 03", "",
         "Enable Reaction Wheel Idle Mode"},
        {"Set_ReactionWheel_All_Speeds", [](auto& d) { d.Set_ReactionWheel_All_Speeds(speeds); },
         "b008 1800" + one_to_six, "", "Set All Reaction Wheel Speeds", speed_lines},
        {"Get_ReactionWheel_All_Speeds", read(&Device::Get_ReactionWheel_All_Speeds), "b009 0000", one_to_six,
         "Get Reaction Wheel Speed", speed_lines},
        {"Set_ReactionWheel_All_Parameters", [](auto& d) { d.Set_ReactionWheel_All_Parameters(array); },
         "b00a 7000" + array_payload, "", "Set Parameters of All Reaction Wheels",
         after({"ZAVRA_100_Reactionwheel_Array_Parameters", "NUMBER_OF_WHEELS: dec = 1", "CONTROL_MODE: dec = 2",
                "UPDATE_INTERVAL: dec = 7", "MAX_VALID_TIME_SPEED_MEASUREMENT: dec = 8"},
               matrix_lines({"RW0-X", "RW1-X", "RW2-X", "RW3-U", "RW4-U", "RW5-U", "RW0-Y", "RW1-Y", "RW2-Y", "RW3-V",
                             "RW4-V", "RW5-V", "RW0-Z", "RW1-Z", "RW2-Z", "RW3-W", "RW4-W", "RW5-W"}))},
        {"Get_ReactionWheel_All_Parameters", read(&Device::Get_ReactionWheel_All_Parameters), "b00b 0000",
         array_payload, "Get Parameters of All Reaction Wheels",
         after({"ZAVRA_100_Reactionwheel_Array_Parameters", "NUMBER_OF_WHEELS: dec = 1", "CONTROL_MODE: dec = 2",
                "MOMENT_OF_INERTIA = 3", "MAX_SPEED = 4", "MAX_TORQUE = 5", "MOTOR_CONSTANT = 6",
                "UPDATE_INTERVAL: dec = 7", "MAX_VALID_TIME_SPEED_MEASUREMENT = 8"},
               matrix_lines({}))},
        {"Enable_ReactionWheel_All_Idle_Mode", [](auto& d) { d.Enable_ReactionWheel_All_Idle_Mode(); }, "b00c 0000", "",
         "Enable All Reaction Wheel Idle Mode"},
        {"Set_ReactionWheel_Torque", [](auto& d) { d.Set_ReactionWheel_Torque(xyz); }, "b00d 0c00" + one_two_three, "",
         "Set Reaction Wheel Torque Target", torque_lines},
        {"Get_ReactionWheel_Torque", read(&Device::Get_ReactionWheel_Torque), "b00e 0000", one_two_three,
         "Get Reaction Wheel Torque Target", torque_lines},
    });
}

TEST_F(Command_Test, magnetorquer_commands)
{
    check({
        {"Set_Magnettorquer_All_Dipole_Moments", [](auto& d) { d.Set_Magnettorquer_All_Dipole_Moments(xyz); },
         "b101 0c00" + one_two_three, "", "Set Dipole Moment of All Magnetorquers", moment_lines},
        {"Get_Magnettorquer_All_Dipole_Moments", read(&Device::Get_Magnettorquer_All_Dipole_Moments), "b102 0000",
         one_two_three, "Get Dipole Moments of All Magnetorquers", moment_lines},
        {"Suspend_All_Magnettorquers", [](auto& d) { d.Suspend_All_Magnettorquers(); }, "b103 0000", "",
         "Suspend All Magnetorquers"},
        {"Resume_All_Magnettorquers", [](auto& d) { d.Resume_All_Magnettorquers(); }, "b104 0000", "",
         "Resume All Magnetorquers"},
        {"Set_Magnettorquer_Parameters", [](auto& d) { d.Set_Magnettorquer_Parameters(magnetorquers); },
         "b105 5400" + magnetorquer_payload, "", "Set Dipole Moment of All Magnetorquers",
         magnetorquer_lines("ZAVRA_100_PID_Controller_Parameters", "XYZ")},
        {"Get_Magnettorquer_Parameters", read(&Device::Get_Magnettorquer_Parameters), "b106 0000", magnetorquer_payload,
         "Get Magnetorquer Parameters", magnetorquer_lines("ZAVRA_100_Magnettorquer_Parameters", "xyz")},
        {"Set_Magnettorquer_All_Currents", [](auto& d) { d.Set_Magnettorquer_All_Currents(xyz); },
         "b107 0c00" + one_two_three, "", "Set Currents of All Magnetorquers", current_lines},
        {"Get_Magnettorquer_All_Currents", read(&Device::Get_Magnettorquer_All_Currents), "b108 0000", one_two_three,
         "Get Currents of All Magnetorquers", current_lines},
    });
}

TEST_F(Command_Test, actuator_commands_without_values_print_nothing)
{
    device.Set_ReactionWheel_All_Update_Interval(1);
    device.Enable_ReactionWheel_Idle_Mode(0);
    device.Enable_ReactionWheel_All_Idle_Mode();
    device.Suspend_All_Magnettorquers();
    device.Resume_All_Magnettorquers();
    EXPECT_EQ(platform.dumped(), Lines{});
}

TEST_F(Command_Test, a_wheel_that_does_not_exist_is_refused_before_anything_is_sent_or_printed)
{
    for (const unsigned char index : octets("06ff")) {
        float speed = 7;
        EXPECT_EQ(message_of<ZAVRA_100_Exception>([&] { device.Set_ReactionWheel_Speed(index, 1); }),
                  "Failed to Set Reaction Wheel Speed (unknown reaction wheel index)");
        EXPECT_EQ(message_of<ZAVRA_100_Exception>([&] { device.Get_ReactionWheel_Speed(index, &speed); }),
                  "Failed to Get Reaction Wheel Speed (unknown reaction wheel index)");
        EXPECT_EQ(message_of<ZAVRA_100_Exception>([&] { device.Enable_ReactionWheel_Idle_Mode(index); }),
                  "Failed to Enable Reaction Wheel Idle Mode (unknown reaction wheel index)");
        EXPECT_EQ(speed, 7.0F);
    }
    EXPECT_EQ(platform.frames(), Lines{});
    EXPECT_EQ(platform.dumped(), Lines{});
}

TEST_F(Command_Test, setters_of_actuators_print_before_they_send_but_for_dipole_moments_and_currents)
{
    const struct
    {
        const char* name;
        void (*call)(ZAVRA_100&);
        std::size_t lines;
    } cases[] = {
        {"speed", [](ZAVRA_100& d) { d.Set_ReactionWheel_Speed(0, 1); }, 2},
        {"parameters", [](ZAVRA_100& d) { d.Set_ReactionWheel_Parameters(0, wheel); }, 6},
        {"speeds", [](ZAVRA_100& d) { d.Set_ReactionWheel_All_Speeds({}); }, 6},
        {"array", [](ZAVRA_100& d) { d.Set_ReactionWheel_All_Parameters(array); }, 23},
        {"torque", [](ZAVRA_100& d) { d.Set_ReactionWheel_Torque({}); }, 3},
        {"magnetorquers", [](ZAVRA_100& d) { d.Set_Magnettorquer_Parameters(magnetorquers); }, 19},
        {"moments", [](ZAVRA_100& d) { d.Set_Magnettorquer_All_Dipole_Moments({}); }, 0},
        {"currents", [](ZAVRA_100& d) { d.Set_Magnettorquer_All_Currents({}); }, 0},
    };
    for (const auto& [name, call, lines] : cases) {
        platform = {};
        platform.write_failure = "no bus";
        EXPECT_THROW(call(device), ZAVRA_100_Exception) << name;
        EXPECT_EQ(platform.dumped().size(), lines) << name;
    }
}

}
