#include "tests/support/doubles.h"

#include <VELM_ZAVRA_API.h>

#include <functional>
#include <optional>

namespace zavra::test
{

/// The operations over the system and telemetry commands.
class System_Api_Test : public Platform_Test
{
protected:
    System_Api_Test()
    {
        testing::internal::CaptureStdout();
        api.emplace();
        testing::internal::GetCapturedStdout();
        platform = {};
    }

    std::optional<VELM_ZAVRA_API> api;
};

TEST_F(System_Api_Test, failures_nest_three_deep_in_the_operations_own_words)
{
    using Api = VELM_ZAVRA_API;
    const std::string set = "(Failed to use Generic-SET for ZAVRA (no bus)))";
    const std::string get = "(Failed to use Generic-GET for ZAVRA: Generic-SET command failed "
                            "(Failed to use Generic-SET for ZAVRA (no bus))))";
    const std::string standard = " (Failed to get standard telemetry " + get;
    const struct
    {
        std::function<void(Api&)> call;
        std::string message; ///< behind "Failed to "
    } cases[] = {
        {[](Api& a) { a.Set_Epoch_Time(1); }, "set epoch time (Failed to Set Epoch Time " + set},
        {&Api::Get_Epoch_Time, "get epoch time (Failed to Get Epoch Time " + get},
        {&Api::Get_System_Time, "get system time (Failed to Get System Time " + get},
        {[](Api& a) { a.Set_Temperature_Update_Interval(1); },
         "set temperature update interval (Failed to Set Temperature Update Interval " + set},
        {&Api::Get_Temperature_Update_Interval,
         "get temperature update interval (Failed to Get Temperatuer Update Interval " + get},
        {[](Api& a) { a.Set_Power_Update_Interval(1); },
         "set power update interval (Failed to Set Power Update Interval " + set},
        {&Api::Get_Power_Update_Interval, "get power update interval (Failed to Get System Time " + get},
        {[](Api& a) { a.Set_Active_Gyroscope(VELM_ZAVRA_API_GYRO_2); },
         "set active gyroscope (Failed to Set Gyro Index " + set},
        {[](Api& a) { a.Set_Active_Gyroscope(static_cast<VELM_ZAVRA_API_GYROSCOPES>(3)); },
         "set active gyroscope (Failed to Set Gyro Index (index exceeds limits))"},
        {[](Api& a) { a.Set_Active_Magnetometer(VELM_ZAVRA_API_MAGNETOMETER_0); },
         "set active magnetometer (Failed to Set Magnetometer Index " + set},
        {[](Api& a) { a.Set_DCDC_Configuration(1); },
         "set dcdc configuration (Failed to Set DCDC Configuration " + set},
        {[](Api& a) { a.Set_HIL_Configuration(1); }, "set hil configuration (Failed to Set HIL Configuration " + set},
        {&Api::Get_HIL_Configuration, "get hil configuration (Failed to Get HIL Configuration " + get},
        {[](Api& a) { a.Set_System_Scheduler_Register(1); },
         "set system scheduler register (Failed to Set Scheduler Register " + set},
        {&Api::Get_System_Scheduler_Register, "get system scheduler register (Failed to Get Scheduler Register " + get},
        {&Api::Clear_System_Error_Register, "clear system error register (Failed to clear error register " + set},
        {&Api::Check_Command_Errors, "check command errors (Failed to Check Command Errors" + standard + ")"},
        {&Api::Get_Info_Frame, "get info frame (Failed to get info telemetry " + get},
        {&Api::Get_Standard_Telemetry, "get standard telemetry" + standard},
        {&Api::Get_Sensor_Telemetry, "get sensor telemetry (Failed to get Sensor Telemetry " + get},
        {&Api::Get_Actuator_Telemetry, "get actuator telemetry (Failed to get actuator telemetry " + get},
        {&Api::Get_Attitude_Telemetry, "get attitude telemetry (Failed to get attitude telemetry " + get},
        {&Api::Get_Power_Telemetry, "get power telemetry (Failed to get power telemetry " + get},
        {&Api::Get_System_Status_Register, "get system status register" + standard},
        {&Api::Get_System_Error_Register, "get system error register" + standard},
        {&Api::Get_Sensors_Error_Register, "get sensors error register" + standard},
        {&Api::Get_Actuators_Error_Register, "get actuators error register" + standard},
        {&Api::Get_Livelyhood_Register, "get livelyhood register" + standard},
        {&Api::Get_Scheduler_Register, "get scheduler register" + standard},
        {&Api::Get_Satellite_Registers, "get satellite registers" + standard},
        {&Api::Get_All_Registers, "get all registers" + standard},
    };
    platform.write_failure = "no bus";
    for (const auto& [call, message] : cases)
        EXPECT_EQ(message_of<VELM_ZAVRA_API_Exception>([&, &operation = call] { operation(*api); }),
                  "Failed to " + message);
}

TEST_F(System_Api_Test, times_and_intervals_are_shown_as_values)
{
    const struct
    {
        unsigned long long (VELM_ZAVRA_API::*get)();
        std::string label;
    } cases[] = {
        {&VELM_ZAVRA_API::Get_Epoch_Time, "Milliseconds since epoch 01.01.1970 0:00:00 UTC: "},
        {&VELM_ZAVRA_API::Get_System_Time, "Milliseconds since last reset: "},
        {&VELM_ZAVRA_API::Get_Temperature_Update_Interval, "Milliseconds between temperature updates: "},
        {&VELM_ZAVRA_API::Get_Power_Update_Interval, "Milliseconds between power updates: "},
    };
    platform.debug_levels = "3";
    for (const auto& [get, label] : cases) {
        platform.reply("00000160000001e0");
        EXPECT_EQ(((*api).*get)(), 1511828488672U);
        EXPECT_THAT(platform.debug, testing::EndsWith("\n\033[32m" + label + "1511828488672\033[0m\n"));
    }
}

TEST_F(System_Api_Test, telemetry_is_grouped)
{
    platform.reply(
        Payload().u64(0).u8(0).f32_range(1, 4).u8(2).f32_range(5, 16).u8(1).f32_range(17, 40).u8(200).hexadecimal());
    const auto sensors = api->Get_Sensor_Telemetry();
    EXPECT_EQ(sensors.quaternion_attitude_bf.q_2, 2.0F);
    EXPECT_EQ(sensors.quaternion_attitude_bf.q_3, 3.0F);
    EXPECT_EQ(sensors.index_of_active_gyro, 2);
    EXPECT_EQ(sensors.measured_angular_velocity_gyro_radps[0].x, 5.0F);
    EXPECT_EQ(sensors.measured_angular_velocity_gyro_radps[3].z, 16.0F);
    EXPECT_EQ(sensors.index_of_active_magnetometer, 1);
    EXPECT_EQ(sensors.measured_magnetic_field_magnetometer_t[1].y, 21.0F);
    EXPECT_EQ(sensors.measured_sun_vector_sunsensor[1].y, 27.0F);
    EXPECT_EQ(sensors.measured_sun_vector_sunsensor[5].z, 40.0F);
    EXPECT_EQ(sensors.temperature_degc, 200.0F);

    platform.reply(Payload().u64(0).f32_range(1, 15).u32(0xFFFFFFFE).hexadecimal());
    const auto actuators = api->Get_Actuator_Telemetry();
    EXPECT_THAT(actuators.reactionwheel_target_radps, testing::ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_THAT(actuators.reactionwheel_current_speed_radps, testing::ElementsAre(7, 8, 9, 10, 11, 12));
    EXPECT_EQ(actuators.magnetorquers_target_dipole_moment_am2.z, 15.0F);
    EXPECT_EQ(actuators.magnetorquers_current_state, 0xFFFFFFFEU);

    platform.reply(
        Payload().u64(0).f32_range(1, 7).u64(8).f32_range(9, 11).u64(12).f32_range(13, 15).u64(16).hexadecimal());
    const auto attitude = api->Get_Attitude_Telemetry();
    EXPECT_EQ(attitude.angular_velocity_radps.z, 7.0F);
    EXPECT_EQ(attitude.epoch_time_last_attitude_determination_msec, 8U);
    EXPECT_EQ(attitude.measured_magnetic_field_bf_t.x, 9.0F);
    EXPECT_EQ(attitude.measured_sun_vector_bf.y, 14.0F);
    EXPECT_EQ(attitude.epoch_time_last_sun_vector_measurement_msec, 16U);
}

TEST_F(System_Api_Test, registers_are_their_words_of_the_standard_telemetry_read_once)
{
    const char* const expected =
        "livelyhood 0.system_status 1 bit_00.system_scheduler 2 bit_01.system_error 3 command_error_0 command_error_1."
        "sensors_error 4 bit_02.actuators_error 5 bit_00 bit_02.sat_main 12 bit_02 bit_03."
        "sat_error 13 bit_00 bit_02 bit_03.sat_scheduler 14 bit_01 bit_02 bit_03.";
    const auto shown = [](const auto& readings) {
        std::string text;
        for (const VELM_ZAVRA_API_REGISTER& reading : readings) {
            text += reading.name + " " + std::to_string(reading.value);
            for (const auto& flag : reading.flags)
                text += flag.state ? " " + flag.name : "";
            text += '.';
        }
        return text;
    };
    Payload telemetry;
    telemetry.u64(1).u64(2);
    for (unsigned int place = 0; place < 20; ++place)
        telemetry.u32(place);
    for (int readings = 0; readings < 9; ++readings)
        platform.reply(telemetry.hexadecimal());

    EXPECT_EQ(shown(api->Get_All_Registers().registers), expected);
    EXPECT_EQ(platform.frames(), std::vector<std::string>{hexadecimal(with_crc(octets("0221 0000")))});
    std::vector one_by_one{api->Get_Livelyhood_Register(),    api->Get_System_Status_Register(),
                           api->Get_Scheduler_Register(),     api->Get_System_Error_Register(),
                           api->Get_Sensors_Error_Register(), api->Get_Actuators_Error_Register()};
    const auto satellite = api->Get_Satellite_Registers();
    one_by_one.insert(one_by_one.end(), {satellite.main, satellite.error, satellite.scheduler});
    EXPECT_EQ(shown(one_by_one), expected);
    EXPECT_EQ(platform.frames().size(), 8U);
    EXPECT_EQ(api->Check_Command_Errors(), 3U);
}

}
