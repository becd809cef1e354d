#include "tests/support/simulated_bus.h"

using namespace zavra::test;

struct Modes_Test : Connected_Test
{
    unsigned int status() { return read(&ZAVRA_100::Get_Standard_Telemetry).control_main_status; }
    auto target() { return read(&ZAVRA_100::Get_TargetPointing_Target_Parameters_Telemetry); }
    auto operation() { return read(&ZAVRA_100::Get_TargetPointing_Operation_Parameters_Telemetry); }
    auto progress() { return read(&ZAVRA_100::Get_TargetPointing_Operation_Data_Telemetry); }

    const ZAVRA_100_NadirPointing_Parameters nadir{5, {0, 0, 2}, {3, 0, 0}, 8, 9, {10, 11, 12, 13}};
    const ZAVRA_100_Earth_TargetPointing_Fixed_Parameters fixed{4, {1, 0, 0}, {0, 1, 0}, 0.5F, -1, 10, 11, {}};
    const ZAVRA_100_Earth_TargetPointing_Const_Velocity_Parameters moving{4,  {},   {},   0.5F, 0.6F, -1,
                                                                          -2, 3000, 4000, 14,   15,   {}};
    const ZAVRA_100_TargetPointing_Inertial_Parameters inertial{4, {}, {}, 6, {1, 2, 3, 4}, 0, 0, 0, 0};
};

TEST_F(Modes_Test, each_mode_shows_and_every_stop_returns_to_idle)
{
    using Z = ZAVRA_100;
    const std::tuple<unsigned int, std::function<void()>, void (Z::*)()> cases[] = {
        {1, [&] { device.Set_OperationMode_Safe(); }, &Z::Set_OperationMode_Idle},
        {2, [&] { device.Set_OperationMode_Measurement(); }, &Z::Stop_OperationMode_Detumbling},
        {3, [&] { device.Start_OperationMode_Detumbling({}); }, &Z::Stop_OperationMode_Detumbling},
        {4, [&] { device.Start_OperationMode_Sun_Pointing({}); }, &Z::Stop_OperationMode_Sun_Pointing},
        {5, [&] { device.Start_TargetPointing_Nadir_Mode(nadir); }, &Z::Stop_TargetPointing_Nadir_Mode},
        {6, [&] { device.Start_TargetPointing_Earth_Fix_Mode(fixed); }, &Z::Stop_TargetPointing_Earth_Fix_Mode},
        {0x107, [&] { device.Start_TargetPointing_Earth_Const_Velocity_Mode(moving); },
         &Z::Stop_TargetPointing_Earth_Const_Velocity_Mode},
        {8, [&] { device.Start_TargetPointing_Inertial_Mode(inertial); }, &Z::Stop_TargetPointing_Inertial_Mode},
    };
    EXPECT_EQ(status(), 0U);
    for (const auto& [expected, enter, leave] : cases) {
        SCOPED_TRACE(expected);
        enter();
        EXPECT_EQ(status(), expected);
        EXPECT_EQ(std::tuple(operation().general_mode, progress().main_register),
                  std::tuple(expected & 0xFFU, expected));
        (device.*leave)();
        EXPECT_EQ(status(), 0U);
        EXPECT_EQ(progress().state_target, Modes::not_pointing);
    }
    EXPECT_EQ(unit.parts.system.counters.failed_commands, 0U);

    device.Set_OperationMode_Safe();
    unit.reset();
    EXPECT_EQ(status(), 0U);
}

TEST_F(Modes_Test, a_timed_mode_waits_for_its_start_and_ends_after_its_stop)
{
    device.Set_Epoch_Time(1000);
    device.Start_OperationMode_Detumbling({1500, 2000});
    const std::pair<unsigned int, unsigned int> cases[] = {{0, 0x103}, {499, 0x103}, {1, 3},
                                                           {500, 3},   {1, 0},       {1000000, 0}};
    for (const auto& [step_msec, expected] : cases) {
        advance(step_msec);
        EXPECT_EQ(status(), expected) << "at " << unit.parts.time.epoch_msec();
    }
    device.Set_Epoch_Time(1600);
    EXPECT_EQ(status(), 3U) << "the epoch time decides, wherever it is set";

    device.Start_OperationMode_Sun_Pointing({{}, 2000, 0});
    EXPECT_EQ(status(), 0x104U);
    advance(4000000000);
    EXPECT_EQ(status(), 4U) << "no stop time, no end";
}

TEST_F(Modes_Test, target_pointing_telemetry_follows_what_was_started)
{
    world.angular_velocity = {0.1F, 0.2F, 0.3F};
    world.quaternion = {0.5F, -0.5F, 0.5F, -0.5F};
    device.Set_Epoch_Time(1000);
    device.Set_ReactionWheel_Speed(4, 500);
    device.Start_TargetPointing_Earth_Const_Velocity_Mode(moving);
    auto data = progress();
    const auto times = [&] { return std::tuple(data.current_epoch_time_msec, data.next_action_epoch_time_msec); };
    EXPECT_EQ(times(), std::tuple(1000U, 3000U));
    EXPECT_EQ(std::tuple(data.current_state, data.state_target), std::tuple(Modes::waiting_for_start, Modes::pointing));
    EXPECT_EQ(std::tuple(data.angular_velocity_bf.z, data.attitude_quaternion.q_2, data.target_rw_speed.v,
                         data.current_rw_speed.v),
              std::tuple(0.3F, -0.5F, 500.0F, 0.0F));
    advance(2000);
    data = progress();
    EXPECT_EQ(times(), std::tuple(3000U, 4000U));
    EXPECT_EQ(data.current_state, Modes::pointing);
    EXPECT_NEAR(data.current_rw_speed.v, 100, 0.01) << "1e-4 N m on 2e-6 kg m^2 for two seconds";
    const auto t = target();
    EXPECT_EQ(std::tuple(t.current_epoch_time_msec, t.stop_epoch_time, t.offset_time_msec),
              std::tuple(3000U, 4000U, 14U));
    EXPECT_EQ(std::tuple(t.stop_latitude, t.stop_longitude), std::tuple(0.6F, -2.0F));
    advance(1001);
    EXPECT_EQ(progress().state_target, Modes::not_pointing);
    EXPECT_EQ(target().control_mode, Modes::earth_const_velocity) << "the last one, although it has ended";

    device.Start_TargetPointing_Nadir_Mode(nadir);
    EXPECT_EQ(std::tuple(target().stop_epoch_time, target().stop_latitude, target().rotation_matrix.m22,
                         operation().determination_mode),
              std::tuple(0U, 0.0F, 1.0F, 5U));
    device.Set_TargetPointing_Operation_Parameters({1, 2, 3, 4, {5, 6, 7}, 8});
    const auto o = operation();
    EXPECT_EQ(std::tuple(o.update_interval, o.tolerance_parameters.prealignment_angular_velocity_tolerance_radps,
                         o.tolerance_parameters.prealignment_target_threshold_rad),
              std::tuple(1U, 4.0F, 13.0F))
        << "the last as the mode was started";

    device.Start_TargetPointing_Earth_Fix_Mode(fixed);
    const auto m = target().rotation_matrix; // x axis towards the flight vector, z axis along the line of sight
    EXPECT_EQ(std::tuple(m.m12, m.m23, m.m31), std::tuple(1.0F, 1.0F, 1.0F));
    EXPECT_EQ(operation().target_longitude, -1.0F);

    for (const unsigned int degree : {6U, 0U}) {
        auto parameters = inertial;
        parameters.degree = degree;
        device.Start_TargetPointing_Inertial_Mode(parameters);
        EXPECT_EQ(progress().target_quaternion.q_2, 2.0F);
        EXPECT_EQ(target().end_quaternion.q_4, 4.0F);
        EXPECT_EQ(target().polynomial_coeff[degree == 6 ? 14 : 2], 3.0F);
    }
}

TEST_F(Modes_Test, a_mode_that_is_refused_leaves_the_one_before_it)
{
    device.Start_TargetPointing_Earth_Fix_Mode(fixed);
    const auto refused = [&](auto start) {
        unit.parts.system.error_register = 0;
        start();
        EXPECT_EQ(unit.parts.system.error_register, System::refused_command);
        EXPECT_EQ(status(), Modes::earth_fixed);
        EXPECT_EQ(target().stop_latitude, 0.5F);
    };
    refused([&] { device.Start_OperationMode_Detumbling({2, 1}); });
    for (const float latitude : {1.58F, -1.58F, std::nanf("")}) {
        auto parameters = fixed;
        parameters.target_latitude = latitude;
        refused([&] { device.Start_TargetPointing_Earth_Fix_Mode(parameters); });
    }
    auto parameters = moving;
    parameters.stop_longitude = 3.15F;
    refused([&] { device.Start_TargetPointing_Earth_Const_Velocity_Mode(parameters); });

    // The driver sends no other degree than 0 and 6.
    unsigned char request[176] = {};
    request[31] = 5;
    refused([&] { device.ZAVRA_Generic_Set(0xC151, request, sizeof request); });
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
