#include "tests/support/simulated_bus.h"

#include <VELM_ZAVRA_API.h>

using namespace zavra::test;

TEST_F(Connected_Test, switches_and_intervals_show_in_the_parameters_until_a_reset)
{
    const auto shown = [&] {
        ZAVRA_100_Gyroscope_Parameters gyro;
        ZAVRA_100_Magnetometer_Parameters magnetometer;
        device.Get_Gyro_Parameters(1, &gyro);
        device.Get_Magnetometer_Parameters(0, &magnetometer);
        return std::tuple(gyro.update_interval_msec, +gyro.sensor_correction_enable, +gyro.avg_filter_enable,
                          +magnetometer.sensor_correction_enable, +magnetometer.avg_filter_enable,
                          +magnetometer.moving_avg_filter_enable);
    };
    device.Set_Gyro_Update_Interval(1, 77);
    device.Enable_Gyro_Correction(1);
    device.Enable_Magnetometer_Moving_Averaging_Filter(0);
    EXPECT_EQ(shown(), std::tuple(77U, 1, 0, 0, 0, 1));
    device.Disable_Gyro_Correction(1);
    device.Enable_Gyro_Averaging_Filter(1);
    device.Enable_Magnetometer_Averaging_Filter(0);
    device.Disable_Magnetometer_Moving_Averaging_Filter(0);
    EXPECT_EQ(shown(), std::tuple(77U, 0, 1, 0, 1, 0));
    unit.reset();
    EXPECT_EQ(shown(), std::tuple(100U, 0, 0, 0, 0, 0));
}

TEST_F(Connected_Test, measurements_show_the_world_until_a_value_is_injected)
{
    world.angular_velocity = {1, 2, 3};
    device.Start_Gyro_Bias_Calculation(1);
    device.Enable_Gyro_Bias_Removement(1);
    world.angular_velocity = {4, 4, 4};
    device.Set_Epoch_Time(1000);
    device.Set_Gyro_Values(0, {7, 8, 9});
    device.Set_Magnetometer_Values(0, {5, 6, 7});
    device.Set_Sun_Vector({0, 1, 0}, 12345);
    device.Set_Epoch_Time(9000);
    const auto gyro = [&](unsigned char index) {
        ZAVRA_100_Vector3_float measured;
        unsigned long long measured_at = 0;
        device.Get_Gyro_Values(index, &measured, &measured_at);
        return std::tuple(measured.x, measured.y, measured.z, measured_at);
    };
    EXPECT_EQ(gyro(0), std::tuple(7, 8, 9, 1000U));
    EXPECT_EQ(gyro(1), std::tuple(3, 2, 1, 9000U));
    EXPECT_EQ(gyro(2), std::tuple(4, 4, 4, 9000U));
    const auto sensor = read(&ZAVRA_100::Get_Sensor_Telemetry);
    EXPECT_EQ(std::tuple(sensor.measured_angular_velocity_gyro_1_z_radps,
                         sensor.measured_angular_velocity_gyro_3_z_radps,
                         sensor.measured_magnetic_field_magnetometer_1_x_t, sensor.measured_sun_vector_sunsensor_1_y),
              std::tuple(9, 4, 5, 1));
    EXPECT_EQ(read(&ZAVRA_100::Get_Attitude_Telemetry).epoch_time_last_sun_vector_measurement_msec, 12345U);
}

TEST_F(Connected_Test, the_example_file_configures_all_sensors)
{
    VELM_ZAVRA_API api;
    testing::internal::CaptureStdout();
    api.Initialize_Device(ZAVRA_TEST_DATA_DIR "/../../examples/velm_zavra_dev_init.ini");
    EXPECT_THAT(testing::internal::GetCapturedStdout(), Not(HasSubstr("FAILED")));
    EXPECT_EQ(api.Get_Gyro_Parameters(VELM_ZAVRA_API_GYRO_0).correction_offset.x, 0.00031F);
    EXPECT_EQ(api.Get_Gyro_Update_Interval(VELM_ZAVRA_API_GYRO_2), 1000U);
    EXPECT_EQ(api.Get_Magnetometer_Parameters(VELM_ZAVRA_API_MAGNETOMETER_0).correction_offset.z, 2.1e-6F);
}
