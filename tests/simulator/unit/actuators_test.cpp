#include "tests/support/simulated_bus.h"

using namespace zavra::test;

struct Actuators_Test : Connected_Test
{
    auto telemetry() { return read(&ZAVRA_100::Get_Actuator_Telemetry); }
};

TEST_F(Actuators_Test, the_arrays_parameters_are_every_wheels)
{
    device.Set_ReactionWheel_Parameters(5, {1, 2, 3, 4, 5});
    device.Set_ReactionWheel_All_Parameters({6, 1, 2, 3, 4, 5, 6, 7, {}});
    ZAVRA_100_Single_Reactionwheel_Parameters wheel;
    device.Get_ReactionWheel_Parameters(5, &wheel);
    EXPECT_EQ(wheel.motor_constant, 5);
    EXPECT_EQ(unit.parts.system.counters.failed_commands, 0U);
}

TEST_F(Actuators_Test, a_wheel_takes_its_target_at_once_and_its_speed_in_time)
{
    // 1e-4 N m on 2e-6 kg m^2 are 50 rad/s^2.
    device.Set_ReactionWheel_Speed(1, 100.0F);
    const std::pair<unsigned int, float> cases[] = {{0, 0},        {500, 25}, {1000, 75},
                                                    {499, 99.95F}, {1, 100},  {60000, 100}};
    for (const auto& [msec_later, speed] : cases) {
        advance(msec_later);
        EXPECT_EQ(telemetry().reactionwheel_target_y_radps, 100.0F);
        EXPECT_FLOAT_EQ(telemetry().reactionwheel_current_speed_y_radps, speed);
    }

    // Turned round half way, it starts from where it is.
    device.Set_ReactionWheel_All_Speeds({0, -100, 0, 10, 20, 30});
    advance(1000);
    device.Set_ReactionWheel_Speed(1, 0);
    EXPECT_FLOAT_EQ(telemetry().reactionwheel_current_speed_y_radps, 50.0F);
    EXPECT_FLOAT_EQ(telemetry().reactionwheel_current_speed_w_radps, 30.0F);
    EXPECT_EQ(telemetry().reactionwheel_target_w_radps, 30.0F);
}

TEST_F(Actuators_Test, an_idle_wheel_coasts_down_and_one_without_torque_keeps_its_speed)
{
    device.Set_ReactionWheel_All_Speeds({100, 100, 100, 100, 100, 100});
    advance(2000);
    device.Enable_ReactionWheel_Idle_Mode(0);
    advance(1000);
    EXPECT_EQ(telemetry().reactionwheel_target_x_radps, 0.0F);
    EXPECT_FLOAT_EQ(telemetry().reactionwheel_current_speed_x_radps, 99.0F);
    EXPECT_FLOAT_EQ(telemetry().reactionwheel_current_speed_y_radps, 100.0F);

    device.Enable_ReactionWheel_All_Idle_Mode();
    advance(100000);
    EXPECT_EQ(telemetry().reactionwheel_target_w_radps, 0.0F);
    EXPECT_EQ(telemetry().reactionwheel_current_speed_w_radps, 0.0F);

    const std::pair<float, float> inertia_and_torque[] = {{0, 0}, {1, 0}, {1, -1}};
    for (const auto& [inertia, torque] : inertia_and_torque) {
        device.Set_ReactionWheel_Parameters(0, {inertia, 1000, torque, 0, 0});
        device.Set_ReactionWheel_Speed(0, 100);
        advance(1000);
        EXPECT_EQ(telemetry().reactionwheel_current_speed_x_radps, 0.0F);
    }
}

TEST_F(Actuators_Test, suspended_magnetorquers_show_zero_until_they_are_resumed)
{
    const auto shown = [&] {
        const auto moment = read(&ZAVRA_100::Get_Magnettorquer_All_Dipole_Moments);
        const auto current = read(&ZAVRA_100::Get_Magnettorquer_All_Currents);
        EXPECT_EQ(telemetry().magnetorquers_target_dipole_moment_z_am2, moment.z);
        return std::array{moment.z, current.z, static_cast<float>(telemetry().magnetorquers_current_state)};
    };
    device.Set_Magnettorquer_All_Dipole_Moments({0, 0, 0.2F});
    EXPECT_EQ(shown(), (std::array{0.2F, 0.05F, 1.0F}));
    device.Suspend_All_Magnettorquers();
    EXPECT_EQ(shown(), (std::array{0.0F, 0.0F, 0.0F}));
    device.Set_Magnettorquer_All_Currents({0, 0, 0.025F});
    EXPECT_EQ(shown(), (std::array{0.0F, 0.0F, 0.0F}));
    device.Resume_All_Magnettorquers();
    EXPECT_EQ(shown(), (std::array{0.1F, 0.025F, 1.0F}));
}

TEST_F(Actuators_Test, what_an_actuator_cannot_do_is_refused_and_changes_nothing)
{
    device.Set_ReactionWheel_All_Speeds({1, 2, 3, 4, 5, 6});
    device.Set_Magnettorquer_All_Dipole_Moments({0.1F, 0.1F, 0.1F});
    unsigned int calls = 0;
    for (const float speed : {-1001.0F, 1001.0F, std::nanf("")}) {
        device.Set_ReactionWheel_Speed(0, speed);
        device.Set_ReactionWheel_All_Speeds({0, 0, 0, 0, 0, speed});
        calls += 2;
    }
    device.Set_ReactionWheel_Parameters(6, {});
    device.Set_Magnettorquer_All_Dipole_Moments({0, 0, -0.5F});
    device.Set_Magnettorquer_All_Currents({0.2F, 0, 0});
    EXPECT_EQ(unit.parts.system.error_register, System::refused_command);
    EXPECT_EQ(unit.parts.system.counters.failed_commands, calls + 3);
    const auto& actuators = unit.parts.actuators;
    const auto targets = [&] { return std::pair(actuators.wheel_targets_radps().x, actuators.dipole_moment_am2().x); };
    EXPECT_EQ(targets(), std::pair(1.0F, 0.1F));
    unit.reset();
    EXPECT_EQ(targets(), std::pair(0.0F, 0.0F));
}
