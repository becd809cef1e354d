#include "tests/support/cases.h"

using namespace zavra::test;

TEST_F(Operation_Test, single_axis_controllers)
{
    constexpr auto axis = static_cast<VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS>(200); // any value is sent
    const Payload pid = Payload().f32_range(1, 5).u32(6).u64(7);
    const Lines pid_lines =
        dump("ZAVRA_100_PID_Controller_Parameters", "", "K_P K_I K_D K_AW TH_AW CTRL_ACTUATOR_CMD_IF UPDATE_INTERVAL");
    const Payload cascaded = Payload().f32_range(1, 10).u32(11).u64(12);
    const Payload without_k_d_out = Payload().f32_range(1, 7).u32(0).f32_range(9, 10).u32(11).u64(12);
    Payload only_k_p = Payload().wire(octets(cascaded.hexadecimal())).member(1.0F);
    for (const int member : {0, 0, 0, 0, 6, 0, 0, 0, 0})
        only_k_p.member(static_cast<float>(member));
    only_k_p.member(0U).member(0ULL);
    check({
        set(call(BOTH(Set_SingleAxis_AngularVelocity_Controller_Parameters), axis, pid),
            "Set Single-Axis Angular Velocity Controller Parameters",
            "Set Single-Axis Angular Velocity Controller PID Parameters", "c011 2100 c8" + pid, pid_lines),
        get(call(BOTH(Get_SingleAxis_AngularVelocity_Controller_Parameters), axis),
            "Get Single-Axis Angular Velocity Controller Parameters",
            "Get Single-Axis Angular Velocity Controller PID Parameters", "c012 0100 c8", pid, pid_lines),
        set(call(&Api::Start_SingleAxis_AngularVelocity_Controller, axis, 1),
            "Start Single-Axis Angular Velocity Controller", "c013 0500 c8 3f800000"),
        set(call(&Api::Stop_SingleAxis_AngularVelocity_Controller, axis),
            "Stop Single-Axis Angular Velocity Controller", "c014 0100 c8"),
        set(call(BOTH(Set_SingleAxis_AngleStep_Controller_Parameters), axis, cascaded),
            "Set Single-Axis Angle Step Controller Parameters",
            "Set Single-Axis Angle Step Controller Cascaded PID Parameters", "c011 3500 c8" + without_k_d_out,
            dump("ZAVRA_100_BDot_Controller_Parameters", "",
                 "K_P_IN K_I_IN K_D_IN K_AW_IN TH_AW_IN K_P_OUT K_I_OUT K_D_OUT K_AW_OUT TH_AW_OUT "
                 "CTRL_ACTUATOR_CMD_IF UPDATE_INTERVAL")),
        get(call(BOTH(Get_SingleAxis_AngleStep_Controller_Parameters), axis),
            "Get Single-Axis Angle Step Controller Parameters",
            "Get Single-Axis Angular Velocity Controller PID Parameters", "c012 0100 c8", only_k_p,
            dump("ZAVRA_100_BDot_Controller_Parameters", "",
                 "K_P_IN K_I_IN=0 K_D_IN=0 K_AW_IN=0 TH_AW_IN=0 K_P_OUT K_I_OUT=0 K_D_OUT=0 K_AW_OUT=0 TH_AW_OUT=0 "
                 "CTRL_ACTUATOR_CMD_IF=0 UPDATE_INTERVAL=0")),
        set(call(&Api::Start_SingleAxis_AngleStep_Controller, axis, 1), "Start Single-Axis Angle Step Controller",
            "c033 0500 c8 3f800000"),
        set(call(&Api::Stop_SingleAxis_AngleStep_Controller, axis), "Stop Single-Axis Angle Step Controller",
            "c034 0100 c8"),
    });
}

TEST_F(Operation_Test, three_axis_controllers)
{
    const Payload bdot = Payload().f32(1).u32(2).u64(3);
    const Lines bdot_lines = dump("ZAVRA_100_BDot_Controller_Parameters", "", "K CTRL_ACTUATOR_CMD_IF UPDATE_INTERVAL");
    const Payload sun = Payload().f32_range(1, 13).u32(14).u64(15);
    const Lines sun_lines = dump("ZAVRA_100_SunPointing_Controller_Parameters", "",
                                 "K_P K_V.m{123}{123} MAX_TORQUE.{XYZ} CTRL_ACTUATOR_CMD_IF UPDATE_INTERVAL");
    const Payload sliding = Payload().f32_range(1, 2).u32(3).u64(4);
    const Lines sliding_lines =
        dump("ZAVRA_100_Sliding_Controller_Parameters", "", "K_1 K_2 CTRL_ACTUATOR_CMD_IF UPDATE_INTERVAL");
    check({
        set(call(BOTH(Set_ThreeAxis_BDot_Controller_Max_Parameters), bdot),
            "Set Three-Axis B-Dot Controller Max Parameters", "c051 1000" + bdot, bdot_lines),
        get(call(BOTH(Get_ThreeAxis_BDot_Controller_Max_Parameters)), "Get Three-Axis B-Dot Controller Max Parameters",
            "c052 0000", bdot, bdot_lines),
        set(call(&Api::Set_ThreeAxis_BDot_Controller_Proportional_Parameters, bdot),
            "Set Three-Axis B-Dot Controller Proportional Parameters", "c053 1000" + bdot, bdot_lines),
        get(call(&Api::Get_ThreeAxis_BDot_Controller_Proportional_Parameters),
            "Get Three-Axis B-Dot Controller Proportional Parameters", "Get Three-Axis B-Dot Controller Max Parameters",
            "c054 0000", bdot, bdot_lines),
        set(call(BOTH(Set_ThreeAxis_SunPointing_Controller_Parameters), sun),
            "Set Three-Axis Sun-Pointing Controller Parameters", "Set Three-Axis Sun Pointing Controller Parameters",
            "c061 4000" + sun, sun_lines),
        get(call(BOTH(Get_ThreeAxis_SunPointing_Controller_Parameters)),
            "Get Three-Axis Sun-Pointing Controller Parameters", "Get Three-Axis Sun Pointing Controller Parameters",
            "c062 0000", sun, sun_lines),
        set(call(BOTH(Set_ThreeAxis_Sliding_Controller_Parameters), sliding),
            "Set Three-Axis Sliding Controller Parameters", "c081 1400" + sliding, sliding_lines),
        get(call(BOTH(Get_ThreeAxis_Sliding_Controller_Parameters)), "Get Three-Axis Sliding Controller Parameters",
            "c082 0000", sliding, sliding_lines),
    });
}
