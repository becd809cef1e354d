#include "tests/support/command_cases.h"

#include <sstream>

namespace zavra::test
{

namespace
{

std::string pointer_line(const std::string& label, const void* pointer)
{
    std::ostringstream text;
    text << label << pointer;
    return text.str();
}

}

TEST_F(Command_Test, system_commands)
{
    unsigned long long msec = 0;
    unsigned int word = 0;
    const std::string u64 = "0102030405060708";
    const unsigned long long u64_value = 0x0102030405060708;
    check({
        {"Set_DCDC_Configuration", [](auto& d) { d.Set_DCDC_Configuration(0xC0000001); }, "0101 0400 c0000001", "",
         "Set DCDC Configuration"},
        {"Set_Epoch_Time", [&](auto& d) { d.Set_Epoch_Time(u64_value); }, "0210 0800" + u64, "", "Set Epoch Time"},
        {"Get_Epoch_Time",
         [&](auto& d) {
             d.Get_Epoch_Time(&msec);
             EXPECT_EQ(msec, u64_value);
         },
         "0211 0000",
         u64,
         "Get Epoch Time",
         {pointer_line("Time since epoch 01.01.1970 0:00:00 UTC in msec: ", &msec)}},
        {"Get_System_Time",
         [&](auto& d) {
             msec = 0;
             d.Get_System_Time(&msec);
             EXPECT_EQ(msec, u64_value);
         },
         "0212 0000",
         u64,
         "Get System Time",
         {pointer_line("System time since last reset in msec: ", &msec)}},
        {"Get_System_Scheduler_Register",
         [&](auto& d) {
             d.Get_System_Scheduler_Register(&word);
             EXPECT_EQ(word, 300U);
         },
         "0228 0000",
         "0000012c",
         "Get Scheduler Register",
         {"SCHEDULER REGISTER: hex = 0x0000012c"}},
        {"Set_System_Scheduler_Register", [](auto& d) { d.Set_System_Scheduler_Register(0x12345678); },
         "0229 0400 12345678", "", "Set Scheduler Register"},
        {"Clear_System_Error_Register", [](auto& d) { d.Clear_System_Error_Register(); }, "0230 0000", "",
         "clear error register"},
        {"Set_Active_Gyroscope", [](auto& d) { d.Set_Active_Gyroscope(2); }, "0231 0100 02", "", "Set Gyro Index"},
        {"Set_Active_Magnetometer", [](auto& d) { d.Set_Active_Magnetometer(0); }, "0232 0100 00", "",
         "Set Magnetometer Index"},
        {"Set_Temperature_Update_Interval", [](auto& d) { d.Set_Temperature_Update_Interval(1000); },
         "0234 0800 00000000000003e8", "", "Set Temperature Update Interval"},
        {"Get_Temperature_Update_Interval",
         [&](auto& d) {
             d.Get_Temperature_Update_Interval(&msec);
             EXPECT_EQ(msec, u64_value);
         },
         "0235 0000",
         u64,
         "Get Temperatuer Update Interval",
         {pointer_line("Temperature Update Interval in msec: ", &msec)}},
        {"Set_Power_Update_Interval", [](auto& d) { d.Set_Power_Update_Interval(1000); }, "0236 0800 00000000000003e8",
         "", "Set Power Update Interval"},
        {"Get_Power_Update_Interval",
         [&](auto& d) {
             msec = 0;
             d.Get_Power_Update_Interval(&msec);
             EXPECT_EQ(msec, u64_value);
         },
         "0237 0000",
         u64,
         "Get System Time",
         {pointer_line("System power update interval in msec: ", &msec)}},
        {"Set_HIL_Configuration", [](auto& d) { d.Set_HIL_Configuration(7); }, "ad01 0400 00000007", "",
         "Set HIL Configuration"},
        {"Get_HIL_Configuration",
         [&](auto& d) {
             d.Get_HIL_Configuration(&word);
             EXPECT_EQ(word, 0xFFFFFFFEU);
         },
         "ad02 0000",
         "fffffffe",
         "Get HIL Configuration",
         {"HIL Configuration = -2"}},
    });
}

TEST_F(Command_Test, a_dcdc_setting_that_was_not_sent_prints_nothing)
{
    platform = {};
    platform.write_failure = "no bus";
    EXPECT_THROW(device.Set_DCDC_Configuration(1), ZAVRA_100_Exception);
    EXPECT_TRUE(platform.dumped().empty());
}

TEST_F(Command_Test, sensor_choice_beyond_the_limits_is_refused_before_anything_is_sent)
{
    platform = {};
    for (const unsigned char index : octets("03ff"))
        EXPECT_EQ(message_of<ZAVRA_100_Exception>([&] { device.Set_Active_Gyroscope(index); }),
                  "Failed to Set Gyro Index (index exceeds limits)");
    for (const unsigned char index : octets("01ff"))
        EXPECT_EQ(message_of<ZAVRA_100_Exception>([&] { device.Set_Active_Magnetometer(index); }),
                  "Failed to Set Magnetometer Index (index exceeds limits)");
    EXPECT_TRUE(platform.events.empty());
}

TEST_F(Command_Test, a_getter_that_fails_leaves_the_callers_variable)
{
    unsigned long long msec = 77;
    EXPECT_EQ(message_of<ZAVRA_100_Exception>([&] { device.Get_Power_Update_Interval(&msec); }),
              "Failed to Get System Time (Failed to use Generic-GET for ZAVRA (Bad response CRC, Retry failed))");
    EXPECT_EQ(msec, 77U);
}

}
