#include "tests/support/cases.h"

using namespace zavra::test;

TEST_F(Operation_Test, system)
{
    const Payload number = Payload().u64(0x0102030405060708);
    const std::string bytes = "0102030405060708", shown = "72623859790382856";
    const Payload word = Payload().u32(300), negative = Payload().u32(0xFFFFFFFE);
    check({
        set_then_print(call(&Api::Set_DCDC_Configuration, 0xC0000001), "set dcdc configuration",
                       "Set DCDC Configuration", "0101 0400 c0000001", {"DCDC Register Value: dec = 3221225473"}),
        set(call(&Api::Set_Epoch_Time, 0x0102030405060708), "set epoch time", "0210 0800" + bytes),
        // The device layer shows where a number went, the API what it is.
        get(call(&Api::Get_Epoch_Time), "get epoch time", "0211 0000", number,
            {"Time since epoch 01.01.1970 0:00:00 UTC in msec: 0x*",
             "Milliseconds since epoch 01.01.1970 0:00:00 UTC: " + shown}),
        get(call(&Api::Get_System_Time), "get system time", "0212 0000", number,
            {"System time since last reset in msec: 0x*", "Milliseconds since last reset: " + shown}),
        get(call(&Api::Get_System_Scheduler_Register), "get system scheduler register", "Get Scheduler Register",
            "0228 0000", word, {"SCHEDULER REGISTER: hex = 0x0000012c"}),
        set(call(&Api::Set_System_Scheduler_Register, 0x12345678), "set system scheduler register",
            "Set Scheduler Register", "0229 0400 12345678"),
        set(call(&Api::Clear_System_Error_Register), "clear system error register", "clear error register",
            "0230 0000"),
        set(call(&Api::Set_Active_Gyroscope, 2), "set active gyroscope", "Set Gyro Index", "0231 0100 02"),
        set(call(&Api::Set_Active_Magnetometer, 0), "set active magnetometer", "Set Magnetometer Index",
            "0232 0100 00"),
        set(call(&Api::Set_Temperature_Update_Interval, 1000), "set temperature update interval",
            "0234 0800 00000000000003e8"),
        get(call(&Api::Get_Temperature_Update_Interval), "get temperature update interval",
            "Get Temperatuer Update Interval", "0235 0000", number,
            {"Temperature Update Interval in msec: 0x*", "Milliseconds between temperature updates: " + shown}),
        set(call(&Api::Set_Power_Update_Interval, 1000), "set power update interval", "0236 0800 00000000000003e8"),
        get(call(&Api::Get_Power_Update_Interval), "get power update interval", "Get System Time", "0237 0000", number,
            {"System power update interval in msec: 0x*", "Milliseconds between power updates: " + shown}),
        set(call(&Api::Set_HIL_Configuration, 7), "set hil configuration", "Set HIL Configuration",
            "ad01 0400 00000007"),
        get(call(&Api::Get_HIL_Configuration), "get hil configuration", "Get HIL Configuration", "ad02 0000", negative,
            {"HIL Configuration = -2"}),
    });
}

TEST_F(Operation_Test, a_sensor_that_does_not_exist_cannot_be_chosen)
{
    const auto gyro = [](int value) {
        return set(call(&Api::Set_Active_Gyroscope, value), "set active gyroscope", "Set Gyro Index", "");
    };
    const auto magnetometer = [](int value) {
        return set(call(&Api::Set_Active_Magnetometer, value), "set active magnetometer", "Set Magnetometer Index", "");
    };
    check_refused({gyro(3), gyro(255), magnetometer(1), magnetometer(255)}, "index exceeds limits");
}

TEST_F(Operation_Test, registers_are_their_words_of_the_standard_telemetry_read_once)
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
    Payload telemetry = Payload().u64(1).u64(2);
    for (unsigned int place = 0; place < 20; ++place)
        telemetry.u32(place);
    platform.replies.assign(9, with_crc(octets(telemetry.hexadecimal())));

    EXPECT_EQ(shown(api.Get_All_Registers().registers), expected);
    std::vector one_by_one{api.Get_Livelyhood_Register(),    api.Get_System_Status_Register(),
                           api.Get_Scheduler_Register(),     api.Get_System_Error_Register(),
                           api.Get_Sensors_Error_Register(), api.Get_Actuators_Error_Register()};
    const auto satellite = api.Get_Satellite_Registers();
    one_by_one.insert(one_by_one.end(), {satellite.main, satellite.error, satellite.scheduler});
    EXPECT_EQ(shown(one_by_one), expected);
    EXPECT_EQ(api.Check_Command_Errors(), 3U);
    EXPECT_EQ(platform.frames(), Lines(9, hexadecimal(with_crc(octets("0221 0000")))));

    platform.write_failure = "no bus";
    const std::pair<const char*, std::function<void()>> failing[] = {
        {"get system status register", [this] { api.Get_System_Status_Register(); }},
        {"get system error register", [this] { api.Get_System_Error_Register(); }},
        {"get sensors error register", [this] { api.Get_Sensors_Error_Register(); }},
        {"get actuators error register", [this] { api.Get_Actuators_Error_Register(); }},
        {"get livelyhood register", [this] { api.Get_Livelyhood_Register(); }},
        {"get scheduler register", [this] { api.Get_Scheduler_Register(); }},
        {"get satellite registers", [this] { api.Get_Satellite_Registers(); }},
        {"get all registers", [this] { api.Get_All_Registers(); }},
        {"check command errors (Failed to Check Command Errors", [this] { api.Check_Command_Errors(); }},
    };
    for (const auto& [words, call] : failing)
        EXPECT_THAT(message_of<Api_Failure>(call),
                    StartsWith("Failed to " + std::string(words) +
                               " (Failed to get standard telemetry (Failed to use Generic-GET"));
}
