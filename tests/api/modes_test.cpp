#include "tests/support/operation_cases.h"

#include <cmath>
#include <limits>

namespace zavra::test
{

using Api = VELM_ZAVRA_API;

namespace
{

using Const_Velocity = VELM_ZAVRA_API_TARGET_POINTING_CONST_VELOCITY_MODE_PARAMETERS;
using Fixed = VELM_ZAVRA_API_TARGET_POINTING_FIXED_MODE_PARAMETERS;

/// Start and stop latitude, start and stop longitude, start and stop time.
Const_Velocity const_velocity(float lat_1, float lat_2, float lon_1, float lon_2, unsigned long long start = 0)
{
    return {1, {2, 3, 4}, {5, 6, 7}, lat_1, lat_2, lon_1, lon_2, start, 10, 14, 15, {16, 17, 18, 19}};
}

Fixed fixed(float latitude, float longitude)
{
    return {1, {2, 3, 4}, {5, 6, 7}, latitude, longitude, 10, 11, {12, 13, 14, 15}};
}

// The floats nearest to pi/2 and pi, which are larger, and the next below.
constexpr float right_angle = 1.57079637F;
constexpr float half_turn = 3.14159274F;
constexpr float below_right_angle = 1.5707963F;
constexpr float below_half_turn = 3.1415925F;

}

TEST_F(Operation_Test, modes_without_parameters)
{
    const struct
    {
        void (Api::*operation)();
        std::string frame;
        std::string action;
        std::string device_action;
    } cases[] = {
        {&Api::Set_Operation_Mode_Idle, "c102 0000", "goto idle mode", "Set Operation Mode to Idle"},
        {&Api::Set_Operation_Mode_Safe, "c103 0000", "goto safe mode", "Set Operation Mode to Safe"},
        {&Api::Set_Operation_Mode_Measurement, "c104 0000", "goto measurement mode",
         "Set Operation Mode to Measurement"},
        {&Api::Stop_Operation_Mode_Detumbling, "c101 0000", "stop operation mode detumbling",
         "Stop Operation Mode Detumbling"},
        {&Api::Stop_Operation_Mode_Sun_Pointing, "c101 0000", "stop operation mode sun pointing",
         "Stop Operation Mode Sun Pointing"},
        {&Api::Stop_Target_Pointing_Earth_Const_Velocity_Mode, "c101 0000",
         "stop operation mode target pointing earth constant velocity",
         "Stop Target Pointing Earth Const Velocity Mode"},
        {&Api::Stop_Target_Pointing_Earth_Fix_Mode, "c101 0000", "stop operation mode target pointing earth fix",
         "Stop Target Pointing Earth Fix Mode"},
        {&Api::Stop_Target_Pointing_Nadir_Mode, "c101 0000", "stop operation mode target pointing nadir",
         "Stop Target Pointing Nadir Mode"},
        {&Api::Stop_Target_Pointing_Inertial_Mode, "c101 0000", "stop operation mode target pointing inertial",
         "Stop Target Pointing Inertial Mode"},
    };
    for (const auto& [operation, frame, action, device_action] : cases)
        check({{operation, frame, "", action, device_action}});
}

TEST_F(Operation_Test, modes_with_parameters)
{
    const VELM_ZAVRA_API_SUN_POINTING_MODE_PARAMETERS sun{{1, 2, 3}, 4, 4};
    const VELM_ZAVRA_API_TARGET_POINTING_NADIR_MODE_PARAMETERS nadir{1, {2, 3, 4}, {5, 6, 7}, 8, 9, {10, 11, 12, 13}};
    VELM_ZAVRA_API_TARGET_POINTING_INERTIAL_MODE_PARAMETERS inertial{};
    inertial.base_quaternion.q_2 = 0.5F;
    inertial.base_quaternion.q_3 = 2;
    inertial.start_epoch_time = 2;
    inertial.stop_epoch_time = 1;
    const std::string pointing = Payload().u32(1).f32_range(2, 7).hexadecimal();
    check({
        {[](Api& a) {
             a.Start_Operation_Mode_Detumbling({7, 7});
         },
         "c111 1000 0000000000000007 0000000000000007", "", "start operation mode detumbling",
         "Start Operation Mode Detumbling"},
        {[&](Api& a) { a.Start_Operation_Mode_Sun_Pointing(sun); },
         "c121 1c00 3f800000 40000000 40400000 0000000000000004 0000000000000004", "",
         "start operation mode sun pointing", "Start Operation Mode Sun Pointing"},
        {[](Api& a) { a.Start_Target_Pointing_Earth_Const_Velocity_Mode(const_velocity(1, -1, 2, 3, 10)); },
         "c154 5c00" + pointing + "3f800000 bf800000 40000000 40400000" +
             Payload().u64(10).u64(10).u64(14).u64(15).f32_range(16, 19).hexadecimal(),
         "", "start operation mode target pointing earth constant velocity",
         "Start Target Pointing Earth Const Velocity Mode"},
        {[](Api& a) { a.Start_Target_Pointing_Earth_Fix_Mode(fixed(1, -2)); },
         "c153 4400" + pointing + "3f800000 c0000000" + Payload().u64(10).u64(11).f32_range(12, 15).hexadecimal(), "",
         "start operation mode target pointing earth fix", "Start Target Pointing Earth Fix Mode"},
        {[&](Api& a) { a.Start_Target_Pointing_Nadir_Mode(nadir); },
         "c152 3c00" + pointing + Payload().u64(8).u64(9).f32_range(10, 13).hexadecimal(), "",
         "start operation mode target pointing nadir", "Start Target Pointing Nadir Mode"},
        {[&](Api& a) { a.Start_Target_Pointing_Inertial_Mode(inertial); },
         "c151 b000" + std::string(8 * 9, '0') + "3f000000 40000000" + std::string(8 * 25, '0') +
             Payload().u64(2).u64(1).u64(0).u64(0).hexadecimal(),
         "", "start operation mode target pointing inertial", "Start Target Pointing Inertial Mode"},
    });
}

TEST_F(Operation_Test, filter_and_target_pointing_operations)
{
    const VELM_ZAVRA_API_KALMAN_FILTER_PARAMETERS kalman{0.1, 2, 3, 4, 5};
    const std::string kalman_bytes = Payload().f64(0.1).f64(2).f64(3).f64(4).u8(5).hexadecimal();
    const VELM_ZAVRA_API_TARGET_POINTING_OPERATION_PARAMETERS parameters{1, 2, 3, 4, {5, 6, 7}, 8};
    VELM_ZAVRA_API_TARGET_POINTING_TARGET_PARAMETERS_TELEMETRY target{};
    VELM_ZAVRA_API_TARGET_POINTING_OPERATION_PARAMETERS_TELEMETRY operation{};
    VELM_ZAVRA_API_TARGET_POINTING_OPERATION_DATA_TELEMETRY data{};
    check({
        {[&](Api& a) { target = a.Get_Target_Pointing_Target_Parameters_Telemetry(); }, "c160 0000",
         Payload().u64(1).u64(2).u64(3).u64(4).u32(5).f32_range(6, 54).hexadecimal(),
         "get target pointing target telemetry", "get target pointing target parameter telemetry"},
        {[&](Api& a) { operation = a.Get_Target_Pointing_Operation_Parameters_Telemetry(); }, "c161 0000",
         Payload().u32(1).u32(2).u32(77).f32_range(3, 6).u64(7).f32_range(8, 9).u64(10).hexadecimal(),
         "get target pointing operation telemetry", "get target pointing operation parameter telemetry"},
        {[&](Api& a) { data = a.Get_Target_Pointing_Operation_Data_Telemetry(); }, "c162 0000",
         Payload().u64(1).u64(2).u32(3).hexadecimal() + "0405060708ff0a" + Payload().f32_range(1, 29).hexadecimal(),
         "get target pointing data telemetry", "get target pointing operation data telemetry"},
        {[&](Api& a) { a.Set_Kalman_Filter_Parameters(kalman); }, "c312 2100" + kalman_bytes, "",
         "set Kalman filter parameters", "Set Kalman Filter parameters"},
        {[](Api& a) { EXPECT_EQ(a.Get_Kalman_Filter_Parameters().bias_process_variance, 0.1); }, "c311 0000",
         kalman_bytes, "get Kalman filter parameters", "get Kalman Filter parameters"},
        {[&](Api& a) { a.Set_Target_Pointing_Operation_Parameters(parameters); },
         "c163 2d00" + Payload().u64(1).f32_range(2, 7).u64(8).hexadecimal() + "0000000000", "",
         "set Target Pointing operation parameters", "Set Target Pointing operation parameters"},
    });
    EXPECT_EQ(target.rotation_matrix.m32, 13.0F);
    EXPECT_EQ(target.polynomial_coeff[27], 42.0F);
    EXPECT_EQ(target.start_quaternion.q_2, 44.0F);
    EXPECT_EQ(target.end_quaternion.q_3, 49.0F);
    EXPECT_EQ(operation.unprinted_u32, 77U);
    EXPECT_EQ(operation.tolerance_parameters.prealignment_target_threshold_rad, 6.0F);
    EXPECT_EQ(data.prealignment_active_flag.y, 255);
    EXPECT_EQ(data.target_quaternion.q_3, 12.0F);
    EXPECT_EQ(data.attitude_quaternion.q_2, 15.0F);
    EXPECT_EQ(data.current_rw_speed.u, 27.0F);
}

TEST_F(Operation_Test, mode_parameters_that_are_not_right_are_refused_before_anything_is_sent)
{
    const auto start = [](const Const_Velocity& p) {
        return [p](Api& a) { a.Start_Target_Pointing_Earth_Const_Velocity_Mode(p); };
    };
    const auto start_fixed = [](float latitude, float longitude) {
        return [=](Api& a) { a.Start_Target_Pointing_Earth_Fix_Mode(fixed(latitude, longitude)); };
    };
    const VELM_ZAVRA_API_SUN_POINTING_MODE_PARAMETERS sun{{}, 0x8000000000000000, 1};
    const std::string moving = "Failed to start operation mode target pointing earth constant velocity ";
    const std::string standing = "Failed to start operation mode target pointing earth fix ";
    const struct
    {
        std::function<void(Api&)> call;
        std::string message;
    } cases[] = {
        {[](Api& a) {
             a.Start_Operation_Mode_Detumbling({8, 7});
         },
         "Failed to start operation mode detumbling (START_EPOCH larger than STOP_EPOCH)"},
        {[&](Api& a) { a.Start_Operation_Mode_Sun_Pointing(sun); },
         "Failed to start operation mode sun pointing (START_EPOCH larger than STOP_EPOCH)"},
        {start(const_velocity(9, 9, 9, 9, 11)), moving + "(START_EPOCH larger than STOP_EPOCH)"},
        {start(const_velocity(right_angle, 0, 0, 0)), moving + "(invalid LATITUDE)"},
        {start(const_velocity(0, -right_angle, 9, 9)), moving + "(invalid LATITUDE)"},
        {start(const_velocity(0, 0, half_turn, 0)), moving + "(invalid LONGITUDE)"},
        {start(const_velocity(0, 0, 0, -half_turn)), moving + "(invalid LONGITUDE)"},
        {start_fixed(right_angle, 9), standing + "(invalid LATITUDE)"},
        {start_fixed(-right_angle, 0), standing + "(invalid LATITUDE)"},
        {start_fixed(0, half_turn), standing + "(invalid LONGITUDE)"},
        {start_fixed(0, -std::numeric_limits<float>::infinity()), standing + "(invalid LONGITUDE)"},
    };
    platform = {};
    for (const auto& [call, message] : cases)
        EXPECT_EQ(message_of<VELM_ZAVRA_API_Exception>([&, &c = call] { c(api); }), message);
    EXPECT_TRUE(platform.events.empty());
    EXPECT_TRUE(platform.debug.empty());
}

TEST_F(Operation_Test, the_largest_angles_below_the_limits_are_accepted_and_so_is_nan)
{
    const float nan = std::nanf("");
    const struct
    {
        float latitude;
        float longitude;
    } cases[] = {{below_right_angle, below_half_turn}, {-below_right_angle, -below_half_turn}, {nan, nan}};
    for (const auto& [latitude, longitude] : cases) {
        platform = {};
        EXPECT_NO_THROW(api.Start_Target_Pointing_Earth_Fix_Mode(fixed(latitude, longitude)));
        EXPECT_NO_THROW(api.Start_Target_Pointing_Earth_Const_Velocity_Mode(
            const_velocity(latitude, -latitude, longitude, -longitude)));
        EXPECT_EQ(platform.frames().size(), 2U);
    }
}

}
