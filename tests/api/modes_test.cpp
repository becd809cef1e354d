#include "tests/support/cases.h"

using namespace zavra::test;

using Device = ZAVRA_100;
using Const_Velocity = VELM_ZAVRA_API_TARGET_POINTING_CONST_VELOCITY_MODE_PARAMETERS;
using Fixed = VELM_ZAVRA_API_TARGET_POINTING_FIXED_MODE_PARAMETERS;

/// Start and stop latitude, start and stop longitude, start and stop time.
static Const_Velocity const_velocity(float lat_1, float lat_2, float lon_1, float lon_2, unsigned long long start = 0)
{
    return {1, {2, 3, 4}, {5, 6, 7}, lat_1, lat_2, lon_1, lon_2, start, 10, 14, 15, {16, 17, 18, 19}};
}

static Fixed fixed(float latitude, float longitude)
{
    return {1, {2, 3, 4}, {5, 6, 7}, latitude, longitude, 10, 11, {12, 13, 14, 15}};
}

// The floats nearest to pi/2 and pi, which are larger, and the next below.
constexpr float right_angle = 1.57079637F, half_turn = 3.14159274F;
constexpr float below_right_angle = 1.5707963F, below_half_turn = 3.1415925F;

const std::string epochs = "START_EPOCH_TIME STOP_EPOCH_TIME ", updates = "OFFSET_TIME UPDATE_INTERVAL ";
const std::string line_of_sight = "LOS_VECTOR_BF.{xyz} ";
const std::string pointing = "DETERMINATION_MODE " + line_of_sight + "FLIGHT_VECTOR_BF.{xyz} ";
const std::string tolerances =
    "TOLERANCE_PARAMETERS.PREALIGNMENT_ANGLE_TOLERANCE_RAD TOLERANCE_PARAMETERS.PREALIGNMENT_ANGLE_TOLERANCE_PERCENT "
    "TOLERANCE_PARAMETERS.PREALIGNMENT_ANGULAR_VELOCITY_TOLERANCE_RADPS "
    "TOLERANCE_PARAMETERS.PREALIGNMENT_TARGET_THRESHOLD_RAD ";

TEST_F(Operation_Test, modes_without_parameters)
{
    check({
        set(call(&Api::Set_Operation_Mode_Idle), "goto idle mode", "Set Operation Mode to Idle", "c102 0000"),
        set(call(&Api::Set_Operation_Mode_Safe), "goto safe mode", "Set Operation Mode to Safe", "c103 0000"),
        set(call(&Api::Set_Operation_Mode_Measurement), "goto measurement mode", "Set Operation Mode to Measurement",
            "c104 0000"),
        set(call(&Api::Stop_Operation_Mode_Detumbling), "stop operation mode detumbling", "c101 0000"),
        set(call(&Api::Stop_Operation_Mode_Sun_Pointing), "stop operation mode sun pointing", "c101 0000"),
        set(call(&Api::Stop_Target_Pointing_Earth_Const_Velocity_Mode),
            "stop operation mode target pointing earth constant velocity",
            "Stop Target Pointing Earth Const Velocity Mode", "c101 0000"),
        set(call(&Api::Stop_Target_Pointing_Earth_Fix_Mode), "stop operation mode target pointing earth fix",
            "Stop Target Pointing Earth Fix Mode", "c101 0000"),
        set(call(&Api::Stop_Target_Pointing_Nadir_Mode), "stop operation mode target pointing nadir",
            "Stop Target Pointing Nadir Mode", "c101 0000"),
        set(call(&Api::Stop_Target_Pointing_Inertial_Mode), "stop operation mode target pointing inertial",
            "Stop Target Pointing Inertial Mode", "c101 0000"),
    });
}

TEST_F(Operation_Test, modes_with_parameters)
{
    const Payload times = Payload().u64(1).u64(2);
    const Payload sun = Payload().f32_range(1, 3).u64(4).u64(5);
    const Payload head = Payload().u32(1).f32_range(2, 7);
    const Payload moving =
        Payload(head).f32(0.5F).f32(-0.5F).f32(1.5F).f32(-1.5F).u64(12).u64(13).u64(14).u64(15).f32_range(16, 19);
    const Payload standing = Payload(head).f32(0.5F).f32(-1.5F).u64(10).u64(11).f32_range(12, 15);
    const Payload nadir = Payload(head).u64(8).u64(9).f32_range(10, 13);
    check({
        set(call(&Api::Start_Operation_Mode_Detumbling, &Device::Start_OperationMode_Detumbling, times),
            "start operation mode detumbling", "c111 1000 0000000000000001 0000000000000002",
            dump("ZAVRA_100_Detumbling_Mode_Parameters", "", epochs)),
        set(call(&Api::Start_Operation_Mode_Sun_Pointing, &Device::Start_OperationMode_Sun_Pointing, sun),
            "start operation mode sun pointing",
            "c121 1c00 3f800000 40000000 40400000 0000000000000004 0000000000000005",
            dump("ZAVRA_100_SunPointing_Mode_Parameters", "", line_of_sight + epochs)),
        set(call(&Api::Start_Target_Pointing_Earth_Const_Velocity_Mode,
                 &Device::Start_TargetPointing_Earth_Const_Velocity_Mode, moving),
            "start operation mode target pointing earth constant velocity",
            "Start Target Pointing Earth Const Velocity Mode", "c154 5c00" + moving,
            dump("ZAVRA_100_Earth_TargetPointing_Const_Velocity_Parameters", "",
                 pointing + "START_LATITUDE=0.5 STOP_LATITUDE=-0.5 START_LONGITUDE=1.5 STOP_LONGITUDE=-1.5 " + epochs +
                     updates + tolerances)),
        set(call(&Api::Start_Target_Pointing_Earth_Fix_Mode, &Device::Start_TargetPointing_Earth_Fix_Mode, standing),
            "start operation mode target pointing earth fix", "Start Target Pointing Earth Fix Mode",
            "c153 4400" + standing,
            dump("ZAVRA_100_Earth_TargetPointing_Fixed_Parameters", "",
                 pointing + "TARGET_LATITUDE=0.5 TARGET_LONGITUDE=-1.5 " + updates + tolerances)),
        set(call(&Api::Start_Target_Pointing_Nadir_Mode, &Device::Start_TargetPointing_Nadir_Mode, nadir),
            "start operation mode target pointing nadir", "Start Target Pointing Nadir Mode", "c152 3c00" + nadir,
            dump("ZAVRA_100_NadirPointing_Parameters", "", pointing + updates + tolerances)),
    });
}

TEST_F(Operation_Test, inertial_mode_sends_the_base_quaternion_by_degree)
{
    const std::string none(8 * 6, '0');
    const std::string full = "00000006 41100000" + none + "41200000" + none + "41300000" + none + "41400000" + none;
    const std::string alone = "00000000 41100000 41200000 41300000 41400000" + std::string(8 * 24, '0');
    for (const unsigned int degree : {6U, 8U, 5U, 0U, 7U, 0xFFFFFFFFU}) {
        const Payload head = Payload().u32(1).f32_range(2, 7);
        const Payload times = Payload().u64(16).u64(15).u64(14).u64(13); // not even their order is checked
        const Payload parameters = Payload(head).u32(degree).quaternion(9).u64(16).u64(15).u64(14).u64(13);
        check({set(
            call(&Api::Start_Target_Pointing_Inertial_Mode, &Device::Start_TargetPointing_Inertial_Mode, parameters),
            "start operation mode target pointing inertial", "Start Target Pointing Inertial Mode",
            "c151 b000" + head + (degree == 6 ? full : alone) + times,
            dump("ZAVRA_100_TargetPointing_Inertial_Parameters", "",
                 pointing + "DEGREE=" + std::to_string(degree) +
                     " BASE_QUATERNION.Q_{1234} START_EPOCH_TIME=16 STOP_EPOCH_TIME=15 OFFSET_TIME=14 "
                     "UPDATE_INTERVAL=13"))});
    }
}

TEST_F(Operation_Test, filter_and_target_pointing_operations)
{
    const Payload kalman = Payload().f64(0.5).f64(2).f64(3).f64(4).u8(5);
    const Lines kalman_lines = dump("ZAVRA_100_KalmanFilter_Parameters", "",
                                    "BIAS_PROCESS_VARIANCE=0.5 ATTITUDE_PROCESS_VARIANCE SUN_MAG_MEASUREMENT_VARIANCE "
                                    "STS_MEASUREMENT_VARIANCE DISABLE_BIAS");
    const Payload parameters = Payload().u64(1).f32_range(2, 7).u64(8);
    const Payload target =
        Payload().u64(1).u64(2).u64(3).u64(4).u32(5).f32_range(6, 42).quaternion(43).quaternion(47).f32_range(51, 54);
    std::string target_labels =
        "CURRENT_EPOCH_TIME_MSEC START_EPOCH_TIME STOP_EPOCH_TIME OFFSET_TIME_MSEC CONTROL_MODE "
        "ROTATION_MATRIX.m{123}{123} ";
    for (int i = 0; i < 28; ++i)
        target_labels += "POLYNOMIAL_COEFF[" + std::to_string(i) + "] ";
    target_labels += "START_QUATERNION.Q_{1234} END_QUATERNION.Q_{1234} "
                     "START_LATITUDE START_LONGITUDE STOP_LATITUDE STOP_LONGITUDE";
    const Payload operation = Payload().u32(1).u32(2).u32(77).f32_range(3, 6).u64(7).f32_range(8, 9).u64(10);
    // Counted from 193, so that the flags are above 127.
    Payload progress = Payload().u64(193).u64(194).u32(195).u8(196).u8(197).u8(198).u8(199);
    progress.u8_as<unsigned short>(200).u8_as<unsigned short>(201).u8_as<unsigned short>(202);
    progress.f32_range(203, 211).quaternion(212).quaternion(216).f32_range(220, 231);
    check({
        set(call(&Api::Set_Kalman_Filter_Parameters, &Device::Set_KalmanFilter_Parameters, kalman),
            "set Kalman filter parameters", "Set Kalman Filter parameters", "c312 2100" + kalman, kalman_lines),
        get(call(&Api::Get_Kalman_Filter_Parameters, &Device::Get_KalmanFilter_Parameters),
            "get Kalman filter parameters", "get Kalman Filter parameters", "c311 0000", kalman, kalman_lines),
        set(call(&Api::Set_Target_Pointing_Operation_Parameters, &Device::Set_TargetPointing_Operation_Parameters,
                 parameters),
            "set Target Pointing operation parameters", "Set Target Pointing operation parameters",
            "c163 2d00" + parameters + "0000000000",
            dump("ZAVRA_100_TargetPointing_Operation_Parameters", "",
                 "UPDATE_INTERVAL ANGLE_TOLERANCE_RAD ANGLE_TOLERANCE_PERC SPEED_TOLERANCE_RADPS ANGLES.{XYZ} "
                 "WAIT_TIME")),
        get(call(&Api::Get_Target_Pointing_Target_Parameters_Telemetry,
                 &Device::Get_TargetPointing_Target_Parameters_Telemetry),
            "get target pointing target telemetry", "get target pointing target parameter telemetry", "c160 0000",
            target, dump("TARGET_POINTING.TARGET_PARAMETER_TELEMETRY:", "TARGET_PARAMETER_TELEMETRY.", target_labels)),
        get(call(&Api::Get_Target_Pointing_Operation_Parameters_Telemetry,
                 &Device::Get_TargetPointing_Operation_Parameters_Telemetry),
            "get target pointing operation telemetry", "get target pointing operation parameter telemetry", "c161 0000",
            operation,
            dump("TARGET_POINTING.OPERATION_PARAMETER_TELEMETRY:", "OPERATION_PARAMETER_TELEMETRY.",
                 "GENERAL_MODE DETERMINATION_MODE " + tolerances +
                     "START_EPOCH_TIME TARGET_LATITUDE TARGET_LONGITUDE UPDATE_INTERVAL")),
        get(call(&Api::Get_Target_Pointing_Operation_Data_Telemetry,
                 &Device::Get_TargetPointing_Operation_Data_Telemetry),
            "get target pointing data telemetry", "get target pointing operation data telemetry", "c162 0000", progress,
            dump("TARGET_POINTING.OPERATION_DATA_TELEMETRY:", "OPERATION_DATA_TELEMETRY.",
                 "CURRENT_EPOCH_TIME_MSEC NEXT_ACTION_EPOCH_TIME_MSEC MAIN_REGISTER CURRENT_STATE STATE_TARGET "
                 "PREALIGNMENT_IS_READY PREALIGNMENT_CURRENT_ROTATION_AXIS PREALIGNMENT_ACTIVE_FLAG.{XYZ} "
                 "PREALIGNMENT_TARGET_ROTATION_ANGLE.{XYZ} PREALIGNMENT_ROTATION_ANGLE.{XYZ} ANGULAR_VELOCITY_BF.{XYZ} "
                 "TARGET_QUATERNION.Q_{1234} ATTITUDE_QUATERNION.Q_{1234} TARGET_RW_SPEED.{XYZUVW} "
                 "CURRENT_RW_SPEED.{XYZUVW}",
                 193)),
    });
}

TEST_F(Operation_Test, mode_parameters_that_are_not_right_are_refused_before_anything_is_sent)
{
    const auto start = [](float lat_1, float lat_2, float lon_1, float lon_2, unsigned long long time = 0) {
        return call(&Api::Start_Target_Pointing_Earth_Const_Velocity_Mode,
                    const_velocity(lat_1, lat_2, lon_1, lon_2, time));
    };
    const auto start_fixed = [](float latitude, float longitude) {
        return call(&Api::Start_Target_Pointing_Earth_Fix_Mode, fixed(latitude, longitude));
    };
    const std::string mode = "Failed to start operation mode ", late = "(START_EPOCH larger than STOP_EPOCH)",
                      moving = mode + "target pointing earth constant velocity ",
                      standing = mode + "target pointing earth fix ";
    const Payload sun_times = Payload().f32_range(1, 3).u64(0x8000000000000000).u64(1);
    const std::pair<Calls, std::string> cases[] = {
        {call(&Api::Start_Operation_Mode_Detumbling, Payload().u64(8).u64(7)), mode + "detumbling " + late},
        {call(&Api::Start_Operation_Mode_Sun_Pointing, sun_times), mode + "sun pointing " + late},
        {start(9, 9, 9, 9, 11), moving + late},
        {start(right_angle, 0, 0, 0), moving + "(invalid LATITUDE)"},
        {start(0, -right_angle, 9, 9), moving + "(invalid LATITUDE)"},
        {start(0, 0, half_turn, 0), moving + "(invalid LONGITUDE)"},
        {start(0, 0, 0, -half_turn), moving + "(invalid LONGITUDE)"},
        {start_fixed(right_angle, 9), standing + "(invalid LATITUDE)"},
        {start_fixed(-right_angle, 0), standing + "(invalid LATITUDE)"},
        {start_fixed(0, half_turn), standing + "(invalid LONGITUDE)"},
        {start_fixed(0, -std::numeric_limits<float>::infinity()), standing + "(invalid LONGITUDE)"},
    };
    platform = {};
    for (const auto& [call, message] : cases)
        EXPECT_EQ(message_of<Api_Failure>([&, &start_mode = call.api] { start_mode(api, {}); }), message);
    EXPECT_TRUE(platform.events.empty() && platform.debug.empty());
}

TEST_F(Operation_Test, the_largest_angles_below_the_limits_are_accepted_and_so_are_nan_and_no_time_at_all)
{
    const float nan = std::nanf("");
    platform = {};
    for (const auto& [latitude, longitude] : {std::pair{below_right_angle, below_half_turn},
                                              std::pair{-below_right_angle, -below_half_turn}, std::pair{nan, nan}}) {
        EXPECT_NO_THROW(api.Start_Target_Pointing_Earth_Fix_Mode(fixed(latitude, longitude)));
        EXPECT_NO_THROW(api.Start_Target_Pointing_Earth_Const_Velocity_Mode(
            const_velocity(latitude, -latitude, longitude, -longitude, 10)));
    }
    EXPECT_NO_THROW(api.Start_Operation_Mode_Detumbling({7, 7}));
    EXPECT_NO_THROW(api.Start_Operation_Mode_Sun_Pointing({{}, 7, 7}));
    EXPECT_EQ(platform.frames().size(), 8U);
}
