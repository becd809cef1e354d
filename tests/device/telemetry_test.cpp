#include "tests/support/command_cases.h"
#include "tests/support/dump_lines.h"

namespace zavra::test
{

namespace
{

/// Labels with an axis (or number) put in for the star.
std::vector<std::string> each(const std::vector<std::string>& patterns, const std::string& axes)
{
    std::vector<std::string> labels;
    for (const std::string& pattern : patterns)
        for (const char axis : axes)
            labels.push_back(std::string(pattern).replace(pattern.find('*'), 1, 1, axis));
    return labels;
}

std::vector<std::string> line(const std::string& text)
{
    return {text};
}

}

TEST_F(Command_Test, info_frame)
{
    ZAVRA_100_Info_Telemetry info{};
    const std::string response = Payload()
                                     .text("IF", 2)
                                     .u8(1)
                                     .u8(2)
                                     .u8(3)
                                     .u8(4)
                                     .u8(5)
                                     .u32(6)
                                     .text("ZAVRA-100", 9)
                                     .u32(7)
                                     .text("2020-11-19", 32)
                                     .u32(8)
                                     .u64(0xFFFFFFFFFFFFFFFF)
                                     .u32(9)
                                     .u32(0xFFFFFFFF)
                                     .u8(10)
                                     .text("gcc", 20)
                                     .text("8.3.0", 10)
                                     .text("low", 10)
                                     .text("2019", 32)
                                     .hexadecimal();
    const auto check_record = [&](ZAVRA_100& d) {
        d.Get_Info_Frame(&info);
        EXPECT_STREQ(info.device_name, "ZAVRA-100") << "a field that fills its place is terminated";
        EXPECT_EQ(info.sw_commit_id_library, 9U) << "the bytes before it are skipped";
        EXPECT_STREQ(info.low_level_build_timestamp, "2019");
    };
    const std::string f = "INFO_FRAME.";
    check(
        {{"Get_Info_Frame",
          check_record,
          "0220 0000",
          response,
          "get info telemetry",
          {"INFO_FRAME:", f + "FRAME_IDENTIFIER: IF", f + "FRAME_VERSION: dec = 1", f + "SW_VERSION_MAJOR: dec = 2",
           f + "SW_VERSION_MINOR: dec = 3", f + "SW_VERSION_PATCH: dec = 4", f + "STARTRACKER_TYPE: dec = 5",
           f + "STARTRACKER_SERIAL_NUMBER: dec = 6", f + "DEVICE_NAME: ZAVRA-100", f + "DEVICE_SERIAL_NUMBER: dec = 7",
           f + "BUILD_TIMESTAMP: 2020-11-19", f + "SW_COMMIT_ID_PROJECT: dec = 8", f + "SW_COMMIT_ID_LIBRARY: dec = 9",
           f + "DEBUG_LEVEL: dec = 10", f + "COMPILER_NAME: gcc", f + "COMPILER_VERSION: 8.3.0",
           f + "LOW_LEVEL_SW_VERSION: low", f + "LOW_LEVEL_BUILD_TIMESTAMP: 2019"}}});
}

TEST_F(Command_Test, standard_telemetry)
{
    const std::vector<std::string> registers = {"LIVELYHOOD_REGISTER",
                                                "SYSTEM_STATUS_REGISTER",
                                                "SYSTEM_SCHEDULER_REGISTER",
                                                "SYSTEM_ERROR_REGISTER",
                                                "SENSORS_ERROR_REGISTER",
                                                "ACTUATORS_ERROR_REGISTER",
                                                "CONTROL_MAIN_STATUS",
                                                "CONTROL_MAIN_ERROR",
                                                "CONTROL_SINGLE_AXIS_STATUS_X",
                                                "CONTROL_SINGLE_AXIS_STATUS_Y",
                                                "CONTROL_SINGLE_AXIS_STATUS_Z",
                                                "CONTROL_ALL_AXIS_STATUS",
                                                "SAT_MAIN_REGISTER",
                                                "SAT_ERROR_REGISTER",
                                                "SAT_SCHEDULER_REGISTER",
                                                "INTERNAL_USE_1",
                                                "INTERNAL_USE_2",
                                                "NUMBER_OF_RECEIVED_COMMANDS",
                                                "NUMBER_OF_FAILED_COMMANDS",
                                                "INTERNAL_USE_3"};
    std::vector<std::string> lines = {"STANDARD_TELEMETRY:", "STANDARD_TELEMETRY.SYSTEM_TIME_MSEC: dec = 4294967296",
                                      "STANDARD_TELEMETRY.EPOCH_TIME_MSEC: dec = 2"};
    Payload payload;
    payload.u64(0x100000000).u64(2);
    for (unsigned int i = 0; i < registers.size(); ++i) {
        payload.u32(i == 0 ? 0 : 0xAB000000 + i);
        lines.push_back("STANDARD_TELEMETRY." + registers[i] + ": hex = 0x" +
                        (i == 0 ? "00000000" : "ab0000" + hexadecimal({static_cast<unsigned char>(i)})));
    }
    ZAVRA_100_Standard_Telemetry telemetry{};
    check({{"Get_Standard_Telemetry", [&](auto& d) { d.Get_Standard_Telemetry(&telemetry); }, "0221 0000",
            payload.hexadecimal(), "get standard telemetry", lines}});
    EXPECT_EQ(telemetry.number_of_failed_commands, 0xAB000012U);
    EXPECT_EQ(telemetry.internal_use_3, 0xAB000013U);

    platform = {};
    platform.reply(payload.hexadecimal());
    EXPECT_EQ(device.Check_Command_Errors(), 0xAB000003U & 3U);
    platform.write_failure = "no bus";
    EXPECT_THAT(message_of<ZAVRA_100_Exception>([&] { device.Check_Command_Errors(); }),
                testing::StartsWith("Failed to Check Command Errors (Failed to get standard telemetry ("));
}

TEST_F(Command_Test, sensor_telemetry)
{
    const std::string f = "SENSOR_TELEMETRY";
    const auto lines =
        line(f + ":") + line(f + ".EPOCH_TIME_MSEC: dec = 5") + line(f + ".INDEX_OF_ACTIVE_STARTRACKER: dec = 48") +
        counted(f, each({"QUATERNION_ATTITUDE_*_BF"}, "1234")) + line(f + ".INDEX_OF_ACTIVE_GYRO: dec = 2") +
        counted(f,
                each({"MEASURED_ANGULAR_VELOCITY_GYRO_1_*_RADPS", "MEASURED_ANGULAR_VELOCITY_GYRO_2_*_RADPS",
                      "MEASURED_ANGULAR_VELOCITY_GYRO_3_*_RADPS", "MEASURED_ANGULAR_VELOCITY_GYRO_4_*_RADPS"},
                     "XYZ"),
                5) +
        line(f + ".INDEX_OF_ACTIVE_MAGNETOMETER: dec = 1") +
        counted(
            f,
            each({"MEASURED_MAGNETIC_FIELD_MAGNETOMETER_1_*_T", "MEASURED_MAGNETIC_FIELD_MAGNETOMETER_2_*_T"}, "XYZ"),
            17) +
        counted(f, each({"MEASURED_SUN_VECTOR_SUNSENSOR_1_*"}, "XYZ"), 23) +
        counted(f, each({"MEASURED_SUN_VECTOR_SUNSENSOR_2_*"}, "XXZ"), 26) +
        counted(f,
                each({"MEASURED_SUN_VECTOR_SUNSENSOR_3_*", "MEASURED_SUN_VECTOR_SUNSENSOR_4_*",
                      "MEASURED_SUN_VECTOR_SUNSENSOR_5_*", "MEASURED_SUN_VECTOR_SUNSENSOR_6_*"},
                     "XYZ"),
                29) +
        line(f + ".TEMPERATURE_DEGC: dec = 200");
    const std::string response = Payload()
                                     .u64(5)
                                     .u8(48)
                                     .f32_range(1, 4)
                                     .u8(2)
                                     .f32_range(5, 16)
                                     .u8(1)
                                     .f32_range(17, 22)
                                     .f32_range(23, 40)
                                     .u8(200)
                                     .hexadecimal();
    ZAVRA_100_Sensor_Telemetry telemetry{};
    check({{"Get_Sensor_Telemetry", [&](auto& d) { d.Get_Sensor_Telemetry(&telemetry); }, "0222 0000", response,
            "get Sensor Telemetry", lines}});
    EXPECT_EQ(telemetry.measured_sun_vector_sunsensor_2_x, 26.0F);
    EXPECT_EQ(telemetry.measured_sun_vector_sunsensor_2_y, 27.0F);
    EXPECT_EQ(telemetry.temperature_degc, 200.0F);
}

TEST_F(Command_Test, actuator_attitude_and_power_telemetry)
{
    ZAVRA_100_Actuator_Telemetry actuator{};
    ZAVRA_100_Attitude_Telemetry attitude{};
    ZAVRA_100_Power_Telemetry power{};
    check({
        {"Get_Actuator_Telemetry", [&](auto& d) { d.Get_Actuator_Telemetry(&actuator); }, "0223 0000",
         Payload().u64(0).f32_range(1, 15).u32(16).hexadecimal(), "get actuator telemetry",
         line("ACTUATOR_TELEMETRY:") +
             counted("ACTUATOR_TELEMETRY",
                     line("EPOCH_TIME_MSEC") +
                         each({"REACTIONWHEEL_TARGET_*_RADPS", "REACTIONWHEEL_CURRENT_SPEED_*_RADPS"}, "XYZUVW") +
                         each({"MAGNETORQUERS_TARGET_DIPOLE_MOMENT_*_AM2"}, "XYZ") +
                         line("MAGNETORQUERS_CURRENT_STATE"),
                     0)},
        {"Get_Attitude_Telemetry", [&](auto& d) { d.Get_Attitude_Telemetry(&attitude); }, "0224 0000",
         Payload().u64(0).f32_range(1, 7).u64(8).f32_range(9, 11).u64(12).f32_range(13, 15).u64(16).hexadecimal(),
         "get attitude telemetry",
         line("ATTITUDE_TELEMETRY:") + counted("ATTITUDE_TELEMETRY",
                                               line("EPOCH_TIME_MSEC") + each({"QUATERNION_ATTITUDE_*_BF"}, "1234") +
                                                   each({"ANGULAR_VELOCITY_*_RADPS"}, "XYZ") +
                                                   line("EPOCH_TIME_LAST_ATTITUDE_DETERMINATION_MSEC") +
                                                   each({"MEASURED_MAGNETIC_FIELD_*_BF_T"}, "XYZ") +
                                                   line("EPOCH_TIME_LAST_MAGNETIC_FIELD_MEASUREMENT_MSEC") +
                                                   each({"MEASURED_SUN_VECTOR_*_BF"}, "XYZ") +
                                                   line("EPOCH_TIME_LAST_SUN_VECTOR_MEASUREMENT_MSEC"),
                                               0)},
        {"Get_Power_Telemetry", [&](auto& d) { d.Get_Power_Telemetry(&power); }, "0225 0000",
         Payload().u64(0).f32_range(1, 12).hexadecimal(), "get power telemetry",
         line("POWER_STATUS_TELEMETRY:") +
             counted("POWER_STATUS_TELEMETRY",
                     {"EPOCH_TIME_MSEC", "MAGNETTORQUER_POWER_CONSUMPTION_W", "MAGNETTORQUER_SUPPLY_VOLTAGE_V",
                      "MAGNETTORQUER_CURRENT_CONSUMPTION_A", "STARTRACKER_POWER_CONSUMPTION_W",
                      "STARTRACKER_SUPPLY_VOLTAGE_V", "STARTRACKER_CURRENT_CONSUMPTION_A", "ZAVRA_POWER_CONSUMPTION_W",
                      "ZAVRA_SUPPLY_VOLTAGE_V", "ZAVRA_CURRENT_CONSUMPTION_A", "REACTIONWHEEL_POWER_CONSUMPTION_W",
                      "REACTIONWHEEL_SUPPLY_VOLTAGE_V", "REACTIONWHEEL_CURRENT_CONSUMPTION_A"},
                     0)},
    });
    EXPECT_EQ(actuator.magnetorquers_current_state, 16U);
    EXPECT_EQ(attitude.epoch_time_last_sun_vector_measurement_msec, 16U);
    EXPECT_EQ(power.reactionwheel_current_consumption_a, 12.0F);
}

TEST_F(Command_Test, a_frame_that_fails_leaves_the_callers_record)
{
    ZAVRA_100_Power_Telemetry power{};
    power.epoch_time_msec = 99;
    EXPECT_THROW(device.Get_Power_Telemetry(&power), ZAVRA_100_Exception);
    EXPECT_EQ(power.epoch_time_msec, 99U);
}

}
