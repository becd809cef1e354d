#include "tests/support/command_cases.h"
#include "tests/support/dump_lines.h"

namespace zavra::test
{

namespace
{

/// A title and the lines of fields that count up from 1.
Lines titled(const std::string& title, const Lines& labels)
{
    return Lines{title} + counted("", labels);
}

Lines members(const std::string& name, const Lines& labels)
{
    Lines lines;
    for (const std::string& label : labels)
        lines.push_back(name + "." + label);
    return lines;
}

const Lines xyz{"X", "Y", "Z"};
const Lines quaternion{"Q_1", "Q_2", "Q_3", "Q_4"};
const Lines epochs{"START_EPOCH_TIME", "STOP_EPOCH_TIME"};
const Lines updates{"OFFSET_TIME", "UPDATE_INTERVAL"};
const Lines line_of_sight = members("LOS_VECTOR_BF", {"x", "y", "z"});
const Lines pointing = Lines{"DETERMINATION_MODE"} + line_of_sight + members("FLIGHT_VECTOR_BF", {"x", "y", "z"});
const Lines tolerances = members(
    "TOLERANCE_PARAMETERS", {"PREALIGNMENT_ANGLE_TOLERANCE_RAD", "PREALIGNMENT_ANGLE_TOLERANCE_PERCENT",
                             "PREALIGNMENT_ANGULAR_VELOCITY_TOLERANCE_RADPS", "PREALIGNMENT_TARGET_THRESHOLD_RAD"});

}

// The commands without a record are tested with the API's, whose failures hold theirs.

TEST_F(Command_Test, modes_with_parameters)
{
    const ZAVRA_100_SunPointing_Mode_Parameters sun{{1, 2, 3}, 4, 5};
    const ZAVRA_100_Earth_TargetPointing_Const_Velocity_Parameters moving{
        1, {2, 3, 4}, {5, 6, 7}, 8, 9, 10, 11, 12, 13, 14, 15, {16, 17, 18, 19}};
    const ZAVRA_100_Earth_TargetPointing_Fixed_Parameters fixed{1, {2, 3, 4}, {5, 6, 7}, 8,
                                                                9, 10,        11,        {12, 13, 14, 15}};
    const ZAVRA_100_NadirPointing_Parameters nadir{1, {2, 3, 4}, {5, 6, 7}, 8, 9, {10, 11, 12, 13}};
    check({
        {"Start_OperationMode_Detumbling",
         [](auto& d) {
             d.Start_OperationMode_Detumbling({1, 2});
         },
         "c111 1000 0000000000000001 0000000000000002", "", "Start Operation Mode Detumbling",
         titled("ZAVRA_100_Detumbling_Mode_Parameters", epochs)},
        {"Start_OperationMode_Sun_Pointing", [&](auto& d) { d.Start_OperationMode_Sun_Pointing(sun); },
         "c121 1c00 3f800000 40000000 40400000 0000000000000004 0000000000000005", "",
         "Start Operation Mode Sun Pointing", titled("ZAVRA_100_SunPointing_Mode_Parameters", line_of_sight + epochs)},
        {"Const_Velocity_Mode", [&](auto& d) { d.Start_TargetPointing_Earth_Const_Velocity_Mode(moving); },
         "c154 5c00" +
             Payload().u32(1).f32_range(2, 11).u64(12).u64(13).u64(14).u64(15).f32_range(16, 19).hexadecimal(),
         "", "Start Target Pointing Earth Const Velocity Mode",
         titled("ZAVRA_100_Earth_TargetPointing_Const_Velocity_Parameters",
                pointing + Lines{"START_LATITUDE", "STOP_LATITUDE", "START_LONGITUDE", "STOP_LONGITUDE"} + epochs +
                    updates + tolerances)},
        {"Earth_Fix_Mode", [&](auto& d) { d.Start_TargetPointing_Earth_Fix_Mode(fixed); },
         "c153 4400" + Payload().u32(1).f32_range(2, 9).u64(10).u64(11).f32_range(12, 15).hexadecimal(), "",
         "Start Target Pointing Earth Fix Mode",
         titled("ZAVRA_100_Earth_TargetPointing_Fixed_Parameters",
                pointing + Lines{"TARGET_LATITUDE", "TARGET_LONGITUDE"} + updates + tolerances)},
        {"Nadir_Mode", [&](auto& d) { d.Start_TargetPointing_Nadir_Mode(nadir); },
         "c152 3c00" + Payload().u32(1).f32_range(2, 7).u64(8).u64(9).f32_range(10, 13).hexadecimal(), "",
         "Start Target Pointing Nadir Mode",
         titled("ZAVRA_100_NadirPointing_Parameters", pointing + updates + tolerances)},
    });
    EXPECT_THAT(platform.dumped(), testing::SizeIs(14)) << "a record is dumped before it is sent, to a dead bus too";
}

TEST_F(Command_Test, inertial_mode_sends_the_base_quaternion_by_degree)
{
    const std::string head = Payload().u32(1).f32_range(2, 7).hexadecimal();
    const std::string times = Payload().u64(13).u64(14).u64(15).u64(16).hexadecimal();
    const std::string none(8 * 6, '0');
    const std::string full = "00000006 41100000" + none + "41200000" + none + "41300000" + none + "41400000" + none;
    const std::string alone = "00000000 41100000 41200000 41300000 41400000" + std::string(8 * 24, '0');
    const struct
    {
        unsigned int degree;
        std::string coefficients;
    } cases[] = {{6, full}, {8, alone}, {5, alone}, {0, alone}, {7, alone}, {0xFFFFFFFF, alone}};
    for (const auto& [degree, coefficients] : cases) {
        Lines lines = titled("ZAVRA_100_TargetPointing_Inertial_Parameters",
                             pointing + Lines{"DEGREE"} + members("BASE_QUATERNION", quaternion) + epochs + updates);
        lines[8] = "DEGREE: dec = " + std::to_string(degree);
        const ZAVRA_100_TargetPointing_Inertial_Parameters parameters{1,  {2, 3, 4}, {5, 6, 7}, degree, {9, 10, 11, 12},
                                                                      13, 14,        15,        16};
        check({{lines[8], [&](auto& d) { d.Start_TargetPointing_Inertial_Mode(parameters); },
                "c151 b000" + head + coefficients + times, "", "Start Target Pointing Inertial Mode", lines}});
    }
}

TEST_F(Command_Test, kalman_filter_and_operation_parameters)
{
    const std::string kalman = Payload().f64(1).f64(2).f64(3).f64(4).u8(5).hexadecimal();
    const Lines kalman_lines = titled("ZAVRA_100_KalmanFilter_Parameters",
                                      {"BIAS_PROCESS_VARIANCE", "ATTITUDE_PROCESS_VARIANCE",
                                       "SUN_MAG_MEASUREMENT_VARIANCE", "STS_MEASUREMENT_VARIANCE", "DISABLE_BIAS"});
    const ZAVRA_100_TargetPointing_Operation_Parameters operation{1, 2, 3, 4, {5, 6, 7}, 8};
    ZAVRA_100_KalmanFilter_Parameters parameters{};
    check({
        {"Set_KalmanFilter_Parameters",
         [](auto& d) {
             d.Set_KalmanFilter_Parameters({1, 2, 3, 4, 5});
         },
         "c312 2100" + kalman, "", "Set Kalman Filter parameters", kalman_lines},
        {"Get_KalmanFilter_Parameters", [&](auto& d) { d.Get_KalmanFilter_Parameters(&parameters); }, "c311 0000",
         kalman, "get Kalman Filter parameters", kalman_lines},
        {"Set_TargetPointing_Operation_Parameters",
         [&](auto& d) { d.Set_TargetPointing_Operation_Parameters(operation); },
         "c163 2d00" + Payload().u64(1).f32_range(2, 7).u64(8).hexadecimal() + "0000000000", "",
         "Set Target Pointing operation parameters",
         titled("ZAVRA_100_TargetPointing_Operation_Parameters",
                Lines{"UPDATE_INTERVAL", "ANGLE_TOLERANCE_RAD", "ANGLE_TOLERANCE_PERC", "SPEED_TOLERANCE_RADPS"} +
                    members("ANGLES", xyz) + Lines{"WAIT_TIME"})},
    });
    EXPECT_EQ(parameters.sts_measurement_variance, 4.0);
}

TEST_F(Command_Test, target_pointing_telemetry)
{
    Lines coefficients;
    for (int i = 0; i < 28; ++i)
        coefficients.push_back("POLYNOMIAL_COEFF[" + std::to_string(i) + "]");
    const Lines target =
        Lines{"CURRENT_EPOCH_TIME_MSEC", "START_EPOCH_TIME", "STOP_EPOCH_TIME", "OFFSET_TIME_MSEC", "CONTROL_MODE"} +
        members("ROTATION_MATRIX", {"m11", "m12", "m13", "m21", "m22", "m23", "m31", "m32", "m33"}) + coefficients +
        members("START_QUATERNION", quaternion) + members("END_QUATERNION", quaternion) +
        Lines{"START_LATITUDE", "START_LONGITUDE", "STOP_LATITUDE", "STOP_LONGITUDE"};
    const Lines operation = Lines{"GENERAL_MODE", "DETERMINATION_MODE"} + tolerances +
                            Lines{"START_EPOCH_TIME", "TARGET_LATITUDE", "TARGET_LONGITUDE", "UPDATE_INTERVAL"};
    const Lines wheels{"X", "Y", "Z", "U", "V", "W"};
    const Lines data = Lines{"CURRENT_EPOCH_TIME_MSEC",
                             "NEXT_ACTION_EPOCH_TIME_MSEC",
                             "MAIN_REGISTER",
                             "CURRENT_STATE",
                             "STATE_TARGET",
                             "PREALIGNMENT_IS_READY",
                             "PREALIGNMENT_CURRENT_ROTATION_AXIS"} +
                       members("PREALIGNMENT_ACTIVE_FLAG", xyz) + members("PREALIGNMENT_TARGET_ROTATION_ANGLE", xyz) +
                       members("PREALIGNMENT_ROTATION_ANGLE", xyz) + members("ANGULAR_VELOCITY_BF", xyz) +
                       members("TARGET_QUATERNION", quaternion) + members("ATTITUDE_QUATERNION", quaternion) +
                       members("TARGET_RW_SPEED", wheels) + members("CURRENT_RW_SPEED", wheels);

    ZAVRA_100_TargetPointing_Target_Parameters_Telemetry t{};
    ZAVRA_100_TargetPointing_Operation_Parameters_Telemetry o{};
    ZAVRA_100_TargetPointing_Operation_Data_Telemetry progress{};
    check({
        {"Get_TargetPointing_Target_Parameters_Telemetry",
         [&](auto& d) { d.Get_TargetPointing_Target_Parameters_Telemetry(&t); }, "c160 0000",
         Payload().u64(1).u64(2).u64(3).u64(4).u32(5).f32_range(6, 54).hexadecimal(),
         "get target pointing target parameter telemetry",
         Lines{"TARGET_POINTING.TARGET_PARAMETER_TELEMETRY:"} + counted("TARGET_PARAMETER_TELEMETRY", target)},
        {"Get_TargetPointing_Operation_Parameters_Telemetry",
         [&](auto& d) { d.Get_TargetPointing_Operation_Parameters_Telemetry(&o); }, "c161 0000",
         Payload().u32(1).u32(2).u32(77).f32_range(3, 6).u64(7).f32_range(8, 9).u64(10).hexadecimal(),
         "get target pointing operation parameter telemetry",
         Lines{"TARGET_POINTING.OPERATION_PARAMETER_TELEMETRY:"} + counted("OPERATION_PARAMETER_TELEMETRY", operation)},
        // Counted from 193, so that the flags are above 127.
        {"Get_TargetPointing_Operation_Data_Telemetry",
         [&](auto& d) { d.Get_TargetPointing_Operation_Data_Telemetry(&progress); }, "c162 0000",
         Payload().u64(193).u64(194).u32(195).hexadecimal() + "c4c5c6c7c8c9ca" +
             Payload().f32_range(203, 231).hexadecimal(),
         "get target pointing operation data telemetry",
         Lines{"TARGET_POINTING.OPERATION_DATA_TELEMETRY:"} + counted("OPERATION_DATA_TELEMETRY", data, 193)},
    });
    EXPECT_EQ(t.stop_longitude, 54.0F);
    EXPECT_EQ(o.unprinted_u32, 77U);
    EXPECT_EQ(progress.prealignment_active_flag.z, 202);
    EXPECT_EQ(progress.current_rw_speed.w, 231.0F);
}

}
