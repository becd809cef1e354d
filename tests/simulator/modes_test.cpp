#include "tests/support/simulated_bus.h"

#include <cmath>
#include <functional>

namespace zavra::test
{

class Modes_Test : public Connected_Test
{
protected:
    template <class Telemetry>
    Telemetry read(void (ZAVRA_100::*get)(Telemetry*))
    {
        Telemetry telemetry;
        (device.*get)(&telemetry);
        return telemetry;
    }

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
    const struct
    {
        const char* mode;
        std::function<void()> enter;
        unsigned int status;
        void (ZAVRA_100::*leave)();
    } cases[] = {
        {"safe", [&] { device.Set_OperationMode_Safe(); }, 1, &ZAVRA_100::Set_OperationMode_Idle},
        {"measurement", [&] { device.Set_OperationMode_Measurement(); }, 2, &ZAVRA_100::Stop_OperationMode_Detumbling},
        {"detumbling", [&] { device.Start_OperationMode_Detumbling({}); }, 3,
         &ZAVRA_100::Stop_OperationMode_Detumbling},
        {"sun pointing", [&] { device.Start_OperationMode_Sun_Pointing({}); }, 4,
         &ZAVRA_100::Stop_OperationMode_Sun_Pointing},
        {"nadir", [&] { device.Start_TargetPointing_Nadir_Mode(nadir); }, 5,
         &ZAVRA_100::Stop_TargetPointing_Nadir_Mode},
        {"earth fixed", [&] { device.Start_TargetPointing_Earth_Fix_Mode(fixed); }, 6,
         &ZAVRA_100::Stop_TargetPointing_Earth_Fix_Mode},
        {"const velocity", [&] { device.Start_TargetPointing_Earth_Const_Velocity_Mode(moving); }, 0x107,
         &ZAVRA_100::Stop_TargetPointing_Earth_Const_Velocity_Mode},
        {"inertial", [&] { device.Start_TargetPointing_Inertial_Mode(inertial); }, 8,
         &ZAVRA_100::Stop_TargetPointing_Inertial_Mode},
    };
    EXPECT_EQ(status(), 0U);
    for (const auto& [mode, enter, expected, leave] : cases) {
        SCOPED_TRACE(mode);
        enter();
        EXPECT_EQ(status(), expected);
        EXPECT_EQ(operation().general_mode, expected & 0xFFU);
        EXPECT_EQ(progress().main_register, expected);
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
    const struct
    {
        unsigned int step_msec;
        unsigned int status;
    } cases[] = {{0, 0x103}, {499, 0x103}, {1, 3}, {500, 3}, {1, 0}, {1000000, 0}};
    for (const auto& [step, expected] : cases) {
        advance(step);
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
    const auto data = progress();
    EXPECT_EQ(data.current_epoch_time_msec, 1000U);
    EXPECT_EQ(data.next_action_epoch_time_msec, 3000U);
    EXPECT_EQ(data.current_state, Modes::waiting_for_start);
    EXPECT_EQ(data.state_target, Modes::pointing);
    EXPECT_EQ(data.angular_velocity_bf.z, 0.3F);
    EXPECT_EQ(data.attitude_quaternion.q_2, -0.5F);
    EXPECT_EQ(data.target_rw_speed.v, 500.0F);
    EXPECT_EQ(data.current_rw_speed.v, 0.0F);
    advance(2000);
    EXPECT_NEAR(progress().current_rw_speed.v, 100, 0.01) << "1e-4 N m on 2e-6 kg m^2 for two seconds";
    EXPECT_EQ(progress().current_state, Modes::pointing);
    EXPECT_EQ(progress().next_action_epoch_time_msec, 4000U);
    EXPECT_EQ(target().current_epoch_time_msec, 3000U);
    EXPECT_EQ(target().stop_epoch_time, 4000U);
    EXPECT_EQ(target().offset_time_msec, 14U);
    EXPECT_EQ(target().stop_latitude, 0.6F);
    EXPECT_EQ(target().stop_longitude, -2.0F);
    advance(1001);
    EXPECT_EQ(progress().state_target, Modes::not_pointing);
    EXPECT_EQ(target().control_mode, Modes::earth_const_velocity) << "the last one, although it has ended";

    device.Start_TargetPointing_Nadir_Mode(nadir);
    EXPECT_EQ(target().stop_epoch_time, 0U);
    EXPECT_EQ(target().stop_latitude, 0.0F);
    EXPECT_EQ(target().rotation_matrix.m22, 1.0F);
    EXPECT_EQ(operation().determination_mode, 5U);
    EXPECT_EQ(operation().tolerance_parameters.prealignment_target_threshold_rad, 13.0F);

    device.Start_TargetPointing_Earth_Fix_Mode(fixed);
    EXPECT_EQ(target().rotation_matrix.m12, 1.0F) << "x axis towards the flight vector";
    EXPECT_EQ(target().rotation_matrix.m23, 1.0F);
    EXPECT_EQ(target().rotation_matrix.m31, 1.0F) << "z axis along the line of sight";
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

TEST_F(Modes_Test, settings_are_kept_and_used)
{
    device.Set_KalmanFilter_Parameters({0.1, 0.2, 0.3, 0.4, 1});
    const auto kalman = read(&ZAVRA_100::Get_KalmanFilter_Parameters);
    EXPECT_EQ(kalman.bias_process_variance, 0.1);
    EXPECT_EQ(kalman.sts_measurement_variance, 0.4);
    EXPECT_EQ(kalman.disable_bias, 1);

    device.Start_TargetPointing_Nadir_Mode(nadir);
    device.Set_TargetPointing_Operation_Parameters({1, 2, 3, 4, {5, 6, 7}, 8});
    EXPECT_EQ(unit.parts.modes.settings.operation.wait_time, 8U);
    const auto in_use = operation();
    EXPECT_EQ(in_use.update_interval, 1U);
    EXPECT_EQ(in_use.tolerance_parameters.prealignment_angular_velocity_tolerance_radps, 4.0F);
    EXPECT_EQ(in_use.tolerance_parameters.prealignment_target_threshold_rad, 13.0F) << "as the mode was started";
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

}
