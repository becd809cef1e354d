#include "tests/support/console.h"
#include "tests/support/sensor_payloads.h"

#include <VELM_ZAVRA_API.h>

#include <functional>

namespace zavra::test
{

class Sensor_Api_Test : public Platform_Test
{
protected:
    Console console;
    VELM_ZAVRA_API api;
};

TEST_F(Sensor_Api_Test, failures_nest_under_the_operations_own_words)
{
    constexpr auto gyro = VELM_ZAVRA_API_GYRO_1;
    constexpr auto mtm = VELM_ZAVRA_API_MAGNETOMETER_0;
    const std::pair<std::string, std::function<void()>> cases[] = {
        {"set gyro values (Failed to Set Gyro Values", [&] { api.Set_Gyro_Values(gyro, {}); }},
        {"get gyro values (Failed to Get Gyro Values", [&] { api.Get_Gyro_Values(gyro); }},
        {"set gyro parameters (Failed to Set Gyro Parameter", [&] { api.Set_Gyro_Parameters(gyro, {}); }},
        {"get gyro parameters (Failed to Get Gyro Parameter", [&] { api.Get_Gyro_Parameters(gyro); }},
        {"set gyro update interval (Failed to Set Gyro Update Interval",
         [&] { api.Set_Gyro_Update_Interval(gyro, 1); }},
        {"get gyro update interval (Failed to Get Gyro Update Interval", [&] { api.Get_Gyro_Update_Interval(gyro); }},
        {"enable gyro correction (Failed to Enable Gyro Correction", [&] { api.Enable_Gyro_Correction(gyro); }},
        {"disable gyro correction (Failed to Disable Gyro Correction", [&] { api.Disable_Gyro_Correction(gyro); }},
        {"start gyro bias calculation (Failed to Start Gyro Bias Calculation",
         [&] { api.Start_Gyro_Bias_Calculation(gyro); }},
        {"set gyro bias values (Failed to Set Gyro Bias Value", [&] { api.Set_Gyro_Bias_Value(gyro, {}); }},
        {"get gyro bias values (Failed to Get Gyro Bias Value", [&] { api.Get_Gyro_Bias_Value(gyro); }},
        {"enable gyro bias removement (Failed to Enable Gyro Bias Removement",
         [&] { api.Enable_Gyro_Bias_Removement(gyro); }},
        {"disable gyro bias removement (Failed to Disable Gyro Bias Removement",
         [&] { api.Disable_Gyro_Bias_Removement(gyro); }},
        {"enable gyro averaging filter (Failed to Enable Gyro Averaging Filter",
         [&] { api.Enable_Gyro_Averaging_Filter(gyro); }},
        {"disable gyro averaging filter (Failed to Disable Gyro Averaging Filter",
         [&] { api.Disable_Gyro_Averaging_Filter(gyro); }},
        {"set magnetometer values (Failed to Set Magnetometer Value", [&] { api.Set_Magnetometer_Values(mtm, {}); }},
        {"get magnetometer values (Failed to Get Magnetometer Value", [&] { api.Get_Magnetometer_Values(mtm); }},
        {"set magnetometer parameters (Failed to Set Sun Vector", [&] { api.Set_Magnetometer_Parameters(mtm, {}); }},
        {"get magnetometer parameters (Failed to Set Sun Vector", [&] { api.Get_Magnetometer_Parameters(mtm); }},
        {"set magnetometer update interval (Failed to Set Magnetometer Update Interval",
         [&] { api.Set_Magnetometer_Update_Interval(mtm, 1); }},
        {"get magnetometer update interval (Failed to Get Magnetometer Update Interval",
         [&] { api.Get_Magnetometer_Update_Interval(mtm); }},
        {"enable magnetometer correction (Failed to Enable Magnetometer Correction",
         [&] { api.Enable_Magnetometer_Correction(mtm); }},
        {"disable magnetometer correction (Failed to Disable Magnetometer Correction",
         [&] { api.Disable_Magnetometer_Correction(mtm); }},
        {"enable magnetometer averaging filter (Failed to Enable Magnetometer Averaging Filter",
         [&] { api.Enable_Magnetometer_Averaging_Filter(mtm); }},
        {"disable magnetometer averaging filter (Failed to Disable Magnetometer Averaging Filter",
         [&] { api.Disable_Magnetometer_Averaging_Filter(mtm); }},
        {"enable magnetometer moving averaging filter (Failed to Enable Moving Magnetometer Averaging Filter",
         [&] { api.Enable_Magnetometer_Moving_Averaging_Filter(mtm); }},
        {"disable magnetometer moving averaging filter (Failed to Disable Moving Magnetometer Averaging Filter",
         [&] { api.Disable_Magnetometer_Moving_Averaging_Filter(mtm); }},
        {"set sun vector (Failed to Set Sun Vector", [&] { api.Set_Sun_Vector({}, 1); }},
    };
    platform.write_failure = "no bus";
    testing::internal::CaptureStdout();
    for (const auto& [words, call] : cases)
        EXPECT_THAT(message_of<VELM_ZAVRA_API_Exception>(call),
                    testing::StartsWith("Failed to " + words + " (Failed to use Generic-"));
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(message_of<VELM_ZAVRA_API_Exception>([&] { api.Get_Gyro_Update_Interval(VELM_ZAVRA_API_GYROSCOPES{3}); }),
              "Failed to get gyro update interval (Failed to Get Gyro Update Interval (unknown gyro index))");
}

TEST_F(Sensor_Api_Test, values_keep_their_names_on_the_way_to_the_unit_and_back)
{
    platform.events.clear();
    platform.reply("3f800000 40000000 40400000 0102030405060708");
    // The index is the enumeration's value cut to 8 bits.
    const auto values = api.Get_Gyro_Values(VELM_ZAVRA_API_GYROSCOPES{258});
    EXPECT_EQ((std::vector{values.x, values.y, values.z}), (std::vector{1.0F, 2.0F, 3.0F}));
    EXPECT_EQ(values.timestamp, 0x0102030405060708U);

    VELM_ZAVRA_API_GYROSCOPE_PARAMETERS parameters{};
    parameters.quaternion = {1, 3, 2, 4}; // declared in the order q_1, q_3, q_2, q_4
    api.Set_Gyro_Parameters(VELM_ZAVRA_API_GYRO_0, parameters);
    EXPECT_EQ(platform.frames().at(0).substr(8, 2), "02");
    EXPECT_EQ(platform.frames().at(1).substr(2 * (4 + 26), 32), "3f800000400000004040000040800000");

    platform.reply(magnetometer_payload);
    const auto read = api.Get_Magnetometer_Parameters(VELM_ZAVRA_API_MAGNETOMETER_0);
    EXPECT_EQ(read.quaternion.q_2, 8.0F);
    EXPECT_EQ(read.quaternion.q_3, 9.0F);
    EXPECT_EQ(read.correction_scale.m13, 15.0F);
    EXPECT_EQ(read.moving_avg_filter_criterion, 30.0F);
}

}
