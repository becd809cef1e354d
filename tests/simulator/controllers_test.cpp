#include "tests/support/simulated_bus.h"

namespace zavra::test
{

TEST_F(Connected_Test, the_two_families_of_single_axis_parameters_are_told_apart_by_length)
{
    device.Set_SingleAxis_AngularVelocity_Controller_Parameters(1, {1, 2, 3, 4, 5, 6, 7});
    device.Set_SingleAxis_AngleStep_Controller_Parameters(1, {11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22});

    const auto& axes = unit.parts.controllers.settings.axes;
    EXPECT_EQ(axes[1].angular_velocity.k_p, 1);
    EXPECT_EQ(axes[1].angular_velocity.update_interval, 7U);
    EXPECT_EQ(axes[1].angle_step.k_i_out, 17);
    EXPECT_EQ(axes[1].angle_step.k_d_out, 0) << "never arrives";
    EXPECT_EQ(axes[1].angle_step.k_aw_out, 19);
    EXPECT_EQ(axes[1].angle_step.update_interval, 22U);
    EXPECT_EQ(axes[0].angle_step.update_interval, 100U) << "another axis";

    ZAVRA_100_PID_Controller_Parameters pid;
    device.Get_SingleAxis_AngularVelocity_Controller_Parameters(1, &pid);
    EXPECT_EQ(pid.k_p, 1);
    EXPECT_EQ(pid.update_interval, 7U);
    ZAVRA_100_Cascaded_PID_Controller_Parameters cascaded;
    device.Get_SingleAxis_AngleStep_Controller_Parameters(1, &cascaded);
    EXPECT_EQ(cascaded.k_p_in, 11);
    EXPECT_EQ(cascaded.k_p_out, 16);

    unsigned char axis = 1;
    unsigned char reply[52];
    device.ZAVRA_Generic_Get(0xC012, &axis, 1, reply, sizeof reply);
    EXPECT_EQ(hexadecimal({reply, reply + sizeof reply}),
              Payload().f32_range(11, 17).u32(0).f32_range(19, 20).u32(21).u64(22).hexadecimal());
}

TEST_F(Connected_Test, one_controller_runs_on_an_axis)
{
    using Running = Controllers::Running;
    const auto& axis = unit.parts.controllers.settings.axes[2];
    device.Start_SingleAxis_AngularVelocity_Controller(2, 0.5F);
    EXPECT_EQ(axis.running, Running::angular_velocity);
    device.Start_SingleAxis_AngleStep_Controller(2, 1.5F);
    device.Stop_SingleAxis_AngularVelocity_Controller(2);
    EXPECT_EQ(axis.running, Running::angle_step) << "it took the axis over";
    EXPECT_EQ(axis.target, 1.5F);
    device.Stop_SingleAxis_AngleStep_Controller(2);
    EXPECT_EQ(axis.running, Running::nothing);

    device.Start_SingleAxis_AngleStep_Controller(3, 1);
    EXPECT_EQ(unit.parts.system.error_register, System::refused_command);
}

}
