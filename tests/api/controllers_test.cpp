#include "tests/support/operation_cases.h"

namespace zavra::test
{

using Api = VELM_ZAVRA_API;

TEST_F(Operation_Test, single_axis_controller_operations)
{
    constexpr auto y = VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS_Y;
    constexpr auto elsewhere = static_cast<VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS>(200);
    static constexpr VELM_ZAVRA_API_PID_CONTROLLER_PARAMETERS pid_parameters{1, 2, 3, 4, 5, 6, 7};
    static constexpr VELM_ZAVRA_API_CASCADED_PID_CONTROLLER_PARAMETERS cascaded_parameters{1, 2, 3, 4,  5,  6,
                                                                                           7, 8, 9, 10, 11, 12};
    const std::string pid = Payload().f32_range(1, 5).u32(6).u64(7).hexadecimal();
    const std::string cascaded = Payload().f32_range(1, 10).u32(11).u64(12).hexadecimal();
    const std::string cascaded_as_sent =
        Payload().f32_range(1, 7).u32(0).f32_range(9, 10).u32(11).u64(12).hexadecimal();
    check({
        {[](Api& a) { a.Set_SingleAxis_AngularVelocity_Controller_Parameters(y, pid_parameters); },
         "c011 2100 01" + pid, "", "Set Single-Axis Angular Velocity Controller Parameters",
         "Set Single-Axis Angular Velocity Controller PID Parameters"},
        {[](Api& a) {
             const auto p = a.Get_SingleAxis_AngularVelocity_Controller_Parameters(elsewhere);
             EXPECT_EQ(p.k_p, 1);
             EXPECT_EQ(p.k_i, 2);
             EXPECT_EQ(p.k_d, 3);
             EXPECT_EQ(p.k_aw, 4);
             EXPECT_EQ(p.th_aw, 5);
             EXPECT_EQ(p.ctrl_actuator_cmd_if, 6U);
             EXPECT_EQ(p.update_interval, 7U);
         },
         "c012 0100 c8", pid, "Get Single-Axis Angular Velocity Controller Parameters",
         "Get Single-Axis Angular Velocity Controller PID Parameters"},
        {[](Api& a) { a.Start_SingleAxis_AngularVelocity_Controller(elsewhere, 1); }, "c013 0500 c8 3f800000", "",
         "Start Single-Axis Angular Velocity Controller", "Start Single-Axis Angular Velocity Controller"},
        {[](Api& a) { a.Stop_SingleAxis_AngularVelocity_Controller(elsewhere); }, "c014 0100 c8", "",
         "Stop Single-Axis Angular Velocity Controller", "Stop Single-Axis Angular Velocity Controller"},
        {[](Api& a) { a.Set_SingleAxis_AngleStep_Controller_Parameters(y, cascaded_parameters); },
         "c011 3500 01" + cascaded_as_sent, "", "Set Single-Axis Angle Step Controller Parameters",
         "Set Single-Axis Angle Step Controller Cascaded PID Parameters"},
        {[](Api& a) {
             const auto p = a.Get_SingleAxis_AngleStep_Controller_Parameters(elsewhere);
             EXPECT_EQ(p.k_p_in, 1);
             EXPECT_EQ(p.k_p_out, 6);
             EXPECT_EQ(p.update_interval, 0U);
         },
         "c012 0100 c8", cascaded, "Get Single-Axis Angle Step Controller Parameters",
         "Get Single-Axis Angular Velocity Controller PID Parameters"},
        {[](Api& a) { a.Start_SingleAxis_AngleStep_Controller(elsewhere, 1); }, "c033 0500 c8 3f800000", "",
         "Start Single-Axis Angle Step Controller", "Start Single-Axis Angle Step Controller"},
        {[](Api& a) { a.Stop_SingleAxis_AngleStep_Controller(elsewhere); }, "c034 0100 c8", "",
         "Stop Single-Axis Angle Step Controller", "Stop Single-Axis Angle Step Controller"},
    });
}

TEST_F(Operation_Test, three_axis_controller_operations)
{
    static constexpr VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS bdot_parameters{1, 2, 3};
    static constexpr VELM_ZAVRA_API_SUN_POINTING_CONTROLLER_PARAMETERS sun_parameters{
        1, {2, 3, 4, 5, 6, 7, 8, 9, 10}, {11, 12, 13}, 14, 15};
    static constexpr VELM_ZAVRA_API_SLIDING_CONTROLLER_PARAMETERS sliding_parameters{1, 2, 3, 4};
    const std::string bdot = Payload().f32(1).u32(2).u64(3).hexadecimal();
    const std::string sun = Payload().f32_range(1, 13).u32(14).u64(15).hexadecimal();
    const std::string sliding = Payload().f32_range(1, 2).u32(3).u64(4).hexadecimal();
    const auto expect_bdot = [](const VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS& p) {
        EXPECT_EQ(p.k, 1);
        EXPECT_EQ(p.ctrl_actuator_cmd_if, 2U);
        EXPECT_EQ(p.update_interval, 3U);
    };
    check({
        {[](Api& a) { a.Set_ThreeAxis_BDot_Controller_Max_Parameters(bdot_parameters); }, "c051 1000" + bdot, "",
         "Set Three-Axis B-Dot Controller Max Parameters", "Set Three-Axis B-Dot Controller Max Parameters"},
        {[&](Api& a) { expect_bdot(a.Get_ThreeAxis_BDot_Controller_Max_Parameters()); }, "c052 0000", bdot,
         "Get Three-Axis B-Dot Controller Max Parameters", "Get Three-Axis B-Dot Controller Max Parameters"},
        {[](Api& a) { a.Set_ThreeAxis_BDot_Controller_Proportional_Parameters(bdot_parameters); }, "c053 1000" + bdot,
         "", "Set Three-Axis B-Dot Controller Proportional Parameters",
         "Set Three-Axis B-Dot Controller Proportional Parameters"},
        {[&](Api& a) { expect_bdot(a.Get_ThreeAxis_BDot_Controller_Proportional_Parameters()); }, "c054 0000", bdot,
         "Get Three-Axis B-Dot Controller Proportional Parameters", "Get Three-Axis B-Dot Controller Max Parameters"},
        {[](Api& a) { a.Set_ThreeAxis_SunPointing_Controller_Parameters(sun_parameters); }, "c061 4000" + sun, "",
         "Set Three-Axis Sun-Pointing Controller Parameters", "Set Three-Axis Sun Pointing Controller Parameters"},
        {[](Api& a) {
             const auto p = a.Get_ThreeAxis_SunPointing_Controller_Parameters();
             EXPECT_EQ(p.k_p, 1);
             EXPECT_EQ(p.k_v.m11, 2);
             EXPECT_EQ(p.k_v.m33, 10);
             EXPECT_EQ(p.max_torque.z, 13);
             EXPECT_EQ(p.ctrl_actuator_cmd_if, 14U);
             EXPECT_EQ(p.update_interval, 15U);
         },
         "c062 0000", sun, "Get Three-Axis Sun-Pointing Controller Parameters",
         "Get Three-Axis Sun Pointing Controller Parameters"},
        {[](Api& a) { a.Set_ThreeAxis_Sliding_Controller_Parameters(sliding_parameters); }, "c081 1400" + sliding, "",
         "Set Three-Axis Sliding Controller Parameters", "Set Three-Axis Sliding Controller Parameters"},
        {[](Api& a) {
             const auto p = a.Get_ThreeAxis_Sliding_Controller_Parameters();
             EXPECT_EQ(p.k_1, 1);
             EXPECT_EQ(p.k_2, 2);
             EXPECT_EQ(p.update_interval, 4U);
         },
         "c082 0000", sliding, "Get Three-Axis Sliding Controller Parameters",
         "Get Three-Axis Sliding Controller Parameters"},
    });
}

}
