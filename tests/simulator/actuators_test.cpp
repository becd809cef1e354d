#include "tests/support/simulated_bus.h"

#include <VELM_ZAVRA_API.h>
#include <cmath>

namespace zavra::test
{

namespace
{

ZAVRA_100_Actuator_Telemetry telemetry_of(ZAVRA_100& device)
{
    ZAVRA_100_Actuator_Telemetry telemetry;
    device.Get_Actuator_Telemetry(&telemetry);
    return telemetry;
}

}

TEST_F(Connected_Test, the_arrays_parameters_are_every_wheels)
{
    device.Set_ReactionWheel_Parameters(5, {1, 2, 3, 4, 5});
    device.Set_ReactionWheel_All_Parameters({6, 1, 2, 3, 4, 5, 6, 7, {}});
    ZAVRA_100_Single_Reactionwheel_Parameters wheel;
    device.Get_ReactionWheel_Parameters(5, &wheel);
    EXPECT_EQ(wheel.motor_constant, 5);
    EXPECT_EQ(unit.parts.system.counters.failed_commands, 0U);
}

TEST_F(Connected_Test, a_wheel_takes_its_target_at_once_and_its_speed_in_time)
{
    testing::internal::CaptureStdout();
    VELM_ZAVRA_API api;
    testing::internal::GetCapturedStdout();

    // 1e-4 N m on 2e-6 kg m^2 are 50 rad/s^2.
    api.Set_ReactionWheel_Speed(VELM_ZAVRA_API_REACTIONWHEEL_1, 100.0F);
    const struct
    {
        unsigned int msec_later;
        float speed;
    } cases[] = {{0, 0}, {500, 25}, {1000, 75}, {499, 99.95F}, {1, 100}, {60000, 100}};
    for (const auto& [msec_later, speed] : cases) {
        advance(msec_later);
        const auto telemetry = telemetry_of(device);
        EXPECT_EQ(telemetry.reactionwheel_target_y_radps, 100.0F);
        EXPECT_FLOAT_EQ(telemetry.reactionwheel_current_speed_y_radps, speed);
        EXPECT_FLOAT_EQ(api.Get_ReactionWheel_Speed(VELM_ZAVRA_API_REACTIONWHEEL_1), speed);
        EXPECT_EQ(telemetry.reactionwheel_current_speed_x_radps, 0.0F);
    }

    // Turned round half way, it starts from where it is.
    device.Set_ReactionWheel_All_Speeds({0, -100, 0, 10, 20, 30});
    advance(1000);
    device.Set_ReactionWheel_Speed(1, 0);
    ZAVRA_100_Vector6_float speeds;
    device.Get_ReactionWheel_All_Speeds(&speeds);
    EXPECT_FLOAT_EQ(speeds.y, 50.0F);
    EXPECT_FLOAT_EQ(speeds.w, 30.0F);
    EXPECT_EQ(telemetry_of(device).reactionwheel_target_w_radps, 30.0F);
}

TEST_F(Connected_Test, an_idle_wheel_coasts_down)
{
    device.Set_ReactionWheel_All_Speeds({100, 100, 100, 100, 100, 100});
    advance(2000);
    device.Enable_ReactionWheel_Idle_Mode(0);
    advance(1000);
    auto telemetry = telemetry_of(device);
    EXPECT_EQ(telemetry.reactionwheel_target_x_radps, 0.0F);
    EXPECT_FLOAT_EQ(telemetry.reactionwheel_current_speed_x_radps, 99.0F);
    EXPECT_FLOAT_EQ(telemetry.reactionwheel_current_speed_y_radps, 100.0F);

    device.Enable_ReactionWheel_All_Idle_Mode();
    advance(100000);
    telemetry = telemetry_of(device);
    EXPECT_EQ(telemetry.reactionwheel_target_w_radps, 0.0F);
    EXPECT_EQ(telemetry.reactionwheel_current_speed_w_radps, 0.0F);
}

TEST_F(Connected_Test, a_wheel_that_cannot_turn_keeps_its_speed)
{
    for (const ZAVRA_100_Single_Reactionwheel_Parameters& parameters :
         {ZAVRA_100_Single_Reactionwheel_Parameters{0, 1000, 0, 0, 0}, {1, 1000, 0, 0, 0}, {1, 1000, -1, 0, 0}}) {
        device.Set_ReactionWheel_Parameters(0, parameters);
        device.Set_ReactionWheel_Speed(0, 100);
        advance(1000);
        EXPECT_EQ(telemetry_of(device).reactionwheel_current_speed_x_radps, 0.0F);
    }
}

TEST_F(Connected_Test, suspended_magnetorquers_show_zero_until_they_are_resumed)
{
    const auto shown = [&] {
        ZAVRA_100_Vector3_float moment;
        ZAVRA_100_Vector3_float current;
        device.Get_Magnettorquer_All_Dipole_Moments(&moment);
        device.Get_Magnettorquer_All_Currents(&current);
        const auto telemetry = telemetry_of(device);
        EXPECT_EQ(telemetry.magnetorquers_target_dipole_moment_z_am2, moment.z);
        return std::array{moment.z, current.z, static_cast<float>(telemetry.magnetorquers_current_state)};
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

TEST_F(Connected_Test, what_an_actuator_cannot_do_is_refused_and_changes_nothing)
{
    device.Set_ReactionWheel_All_Speeds({1, 2, 3, 4, 5, 6});
    device.Set_Magnettorquer_All_Dipole_Moments({0.1F, 0.1F, 0.1F});
    void (*const calls[])(ZAVRA_100&) = {
        [](ZAVRA_100& d) { d.Set_ReactionWheel_Parameters(6, {}); },
        [](ZAVRA_100& d) { d.Set_ReactionWheel_Speed(0, -1001); },
        [](ZAVRA_100& d) { d.Set_ReactionWheel_Speed(0, std::nanf("")); },
        [](ZAVRA_100& d) {
            d.Set_ReactionWheel_All_Speeds({0, 0, 0, 0, 0, 1001});
        },
        [](ZAVRA_100& d) {
            d.Set_Magnettorquer_All_Dipole_Moments({0, 0, -0.5F});
        },
        [](ZAVRA_100& d) {
            d.Set_Magnettorquer_All_Currents({0.2F, 0, 0});
        },
    };
    unsigned int refused = 0;
    for (const auto& call : calls) {
        unit.parts.system.error_register = 0;
        call(device);
        EXPECT_EQ(unit.parts.system.error_register, System::refused_command);
        EXPECT_EQ(unit.parts.system.counters.failed_commands, ++refused);
    }
    EXPECT_EQ(unit.parts.actuators.wheel_targets_radps().x, 1.0F);
    EXPECT_EQ(unit.parts.actuators.dipole_moment_am2().x, 0.1F);

    unit.reset();
    EXPECT_EQ(unit.parts.actuators.wheel_targets_radps().x, 0.0F);
    EXPECT_EQ(unit.parts.actuators.dipole_moment_am2().x, 0.0F);
}

}
