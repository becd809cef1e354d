#include "tests/support/command_cases.h"

namespace zavra::test
{

namespace
{

using Lines = std::vector<std::string>;

/// A title, and the lines of values that count up from 1.
Lines dump_of(const std::string& title, const Lines& names)
{
    Lines lines{title};
    for (const std::string& name : names)
        lines.push_back(name + ": dec = " + std::to_string(lines.size()));
    return lines;
}

using Device = ZAVRA_100;
constexpr unsigned char axis = 7;

}

TEST_F(Command_Test, single_axis_controller_commands)
{
    const std::string pid = Payload().f32_range(1, 5).u32(6).u64(7).hexadecimal();
    static constexpr ZAVRA_100_PID_Controller_Parameters pid_parameters{1, 2, 3, 4, 5, 6, 7};
    static constexpr ZAVRA_100_Cascaded_PID_Controller_Parameters cascaded_parameters{1, 2, 3, 4,  5,  6,
                                                                                      7, 8, 9, 10, 11, 12};
    const Lines pid_lines = dump_of("ZAVRA_100_PID_Controller_Parameters",
                                    {"K_P", "K_I", "K_D", "K_AW", "TH_AW", "CTRL_ACTUATOR_CMD_IF", "UPDATE_INTERVAL"});
    const std::string cascaded = Payload().f32_range(1, 10).u32(11).u64(12).hexadecimal();
    const std::string cascaded_as_sent =
        Payload().f32_range(1, 7).u32(0).f32_range(9, 10).u32(11).u64(12).hexadecimal();
    check({
        {"Set_SingleAxis_AngularVelocity_Controller_Parameters",
         [](auto& d) { d.Set_SingleAxis_AngularVelocity_Controller_Parameters(axis, pid_parameters); },
         "c011 2100 07" + pid, "", "Set Single-Axis Angular Velocity Controller PID Parameters", pid_lines},
        {"Get_SingleAxis_AngularVelocity_Controller_Parameters",
         read(&Device::Get_SingleAxis_AngularVelocity_Controller_Parameters, axis), "c012 0100 07", pid,
         "Get Single-Axis Angular Velocity Controller PID Parameters", pid_lines},
        {"Start_SingleAxis_AngularVelocity_Controller",
         [](auto& d) { d.Start_SingleAxis_AngularVelocity_Controller(7, 1); }, "c013 0500 07 3f800000", "",
         "Start Single-Axis Angular Velocity Controller"},
        {"Stop_SingleAxis_AngularVelocity_Controller", [](auto& d) { d.Stop_SingleAxis_AngularVelocity_Controller(7); },
         "c014 0100 07", "", "Stop Single-Axis Angular Velocity Controller"},
        {"Set_SingleAxis_AngleStep_Controller_Parameters",
         [](auto& d) { d.Set_SingleAxis_AngleStep_Controller_Parameters(axis, cascaded_parameters); },
         "c011 3500 07" + cascaded_as_sent, "", "Set Single-Axis Angle Step Controller Cascaded PID Parameters",
         dump_of("ZAVRA_100_BDot_Controller_Parameters",
                 {"K_P_IN", "K_I_IN", "K_D_IN", "K_AW_IN", "TH_AW_IN", "K_P_OUT", "K_I_OUT", "K_D_OUT", "K_AW_OUT",
                  "TH_AW_OUT", "CTRL_ACTUATOR_CMD_IF", "UPDATE_INTERVAL"})},
        {"Get_SingleAxis_AngleStep_Controller_Parameters",
         read(&Device::Get_SingleAxis_AngleStep_Controller_Parameters, axis),
         "c012 0100 07",
         cascaded,
         "Get Single-Axis Angular Velocity Controller PID Parameters",
         {"ZAVRA_100_BDot_Controller_Parameters", "K_P_IN: dec = 1", "K_I_IN: dec = 0", "K_D_IN: dec = 0",
          "K_AW_IN: dec = 0", "TH_AW_IN: dec = 0", "K_P_OUT: dec = 6", "K_I_OUT: dec = 0", "K_D_OUT: dec = 0",
          "K_AW_OUT: dec = 0", "TH_AW_OUT: dec = 0", "CTRL_ACTUATOR_CMD_IF: dec = 0", "UPDATE_INTERVAL: dec = 0"}},
        {"Start_SingleAxis_AngleStep_Controller", [](auto& d) { d.Start_SingleAxis_AngleStep_Controller(7, 1); },
         "c033 0500 07 3f800000", "", "Start Single-Axis Angle Step Controller"},
        {"Stop_SingleAxis_AngleStep_Controller", [](auto& d) { d.Stop_SingleAxis_AngleStep_Controller(7); },
         "c034 0100 07", "", "Stop Single-Axis Angle Step Controller"},
    });
}

TEST_F(Command_Test, three_axis_controller_commands)
{
    const std::string bdot = Payload().f32(1).u32(2).u64(3).hexadecimal();
    static constexpr ZAVRA_100_BDot_Controller_Parameters bdot_parameters{1, 2, 3};
    static constexpr ZAVRA_100_SunPointing_Controller_Parameters sun_parameters{
        1, {2, 3, 4, 5, 6, 7, 8, 9, 10}, {11, 12, 13}, 14, 15};
    static constexpr ZAVRA_100_Sliding_Controller_Parameters sliding_parameters{1, 2, 3, 4};
    const Lines bdot_lines =
        dump_of("ZAVRA_100_BDot_Controller_Parameters", {"K", "CTRL_ACTUATOR_CMD_IF", "UPDATE_INTERVAL"});
    const std::string sun = Payload().f32_range(1, 13).u32(14).u64(15).hexadecimal();
    const Lines sun_lines =
        dump_of("ZAVRA_100_SunPointing_Controller_Parameters",
                {"K_P", "K_V.m11", "K_V.m12", "K_V.m13", "K_V.m21", "K_V.m22", "K_V.m23", "K_V.m31", "K_V.m32",
                 "K_V.m33", "MAX_TORQUE.X", "MAX_TORQUE.Y", "MAX_TORQUE.Z", "CTRL_ACTUATOR_CMD_IF", "UPDATE_INTERVAL"});
    const std::string sliding = Payload().f32_range(1, 2).u32(3).u64(4).hexadecimal();
    const Lines sliding_lines =
        dump_of("ZAVRA_100_Sliding_Controller_Parameters", {"K_1", "K_2", "CTRL_ACTUATOR_CMD_IF", "UPDATE_INTERVAL"});
    check({
        {"Set_ThreeAxis_BDot_Controller_Max_Parameters",
         [](auto& d) { d.Set_ThreeAxis_BDot_Controller_Max_Parameters(bdot_parameters); }, "c051 1000" + bdot, "",
         "Set Three-Axis B-Dot Controller Max Parameters", bdot_lines},
        {"Get_ThreeAxis_BDot_Controller_Max_Parameters", read(&Device::Get_ThreeAxis_BDot_Controller_Max_Parameters),
         "c052 0000", bdot, "Get Three-Axis B-Dot Controller Max Parameters", bdot_lines},
        {"Set_ThreeAxis_BDot_Controller_Proportional_Parameters",
         [](auto& d) { d.Set_ThreeAxis_BDot_Controller_Proportional_Parameters(bdot_parameters); }, "c053 1000" + bdot,
         "", "Set Three-Axis B-Dot Controller Proportional Parameters", bdot_lines},
        {"Get_ThreeAxis_BDot_Controller_Proportional_Parameters",
         read(&Device::Get_ThreeAxis_BDot_Controller_Proportional_Parameters), "c054 0000", bdot,
         "Get Three-Axis B-Dot Controller Max Parameters", bdot_lines},
        {"Set_ThreeAxis_SunPointing_Controller_Parameters",
         [](auto& d) { d.Set_ThreeAxis_SunPointing_Controller_Parameters(sun_parameters); }, "c061 4000" + sun, "",
         "Set Three-Axis Sun Pointing Controller Parameters", sun_lines},
        {"Get_ThreeAxis_SunPointing_Controller_Parameters",
         read(&Device::Get_ThreeAxis_SunPointing_Controller_Parameters), "c062 0000", sun,
         "Get Three-Axis Sun Pointing Controller Parameters", sun_lines},
        {"Set_ThreeAxis_Sliding_Controller_Parameters",
         [](auto& d) { d.Set_ThreeAxis_Sliding_Controller_Parameters(sliding_parameters); }, "c081 1400" + sliding, "",
         "Set Three-Axis Sliding Controller Parameters", sliding_lines},
        {"Get_ThreeAxis_Sliding_Controller_Parameters", read(&Device::Get_ThreeAxis_Sliding_Controller_Parameters),
         "c082 0000", sliding, "Get Three-Axis Sliding Controller Parameters", sliding_lines},
    });
}

TEST_F(Command_Test, starting_and_stopping_a_controller_prints_nothing_and_a_setter_that_fails_has_printed)
{
    device.Start_SingleAxis_AngularVelocity_Controller(0, 1);
    device.Stop_SingleAxis_AngularVelocity_Controller(0);
    device.Start_SingleAxis_AngleStep_Controller(0, 1);
    device.Stop_SingleAxis_AngleStep_Controller(0);
    EXPECT_EQ(platform.dumped(), Lines{});

    platform.write_failure = "no bus";
    EXPECT_THROW(device.Set_SingleAxis_AngularVelocity_Controller_Parameters(0, {}), ZAVRA_100_Exception);
    EXPECT_EQ(platform.dumped().size(), 8U);
    EXPECT_THROW(device.Set_ThreeAxis_Sliding_Controller_Parameters({}), ZAVRA_100_Exception);
    EXPECT_EQ(platform.dumped().size(), 13U);
}

}
