#include "tests/support/simulated_bus.h"

#include "api/like_sensors.h"

#include <VELM_ZAVRA_API.h>
#include <ZAVRA_100.h>

#include <fstream>
#include <gmock/gmock.h>
#include <memory>
#include <numeric>
#include <sstream>

namespace zavra::test
{

namespace
{

constexpr const char* example_file = ZAVRA_TEST_DATA_DIR "/../../examples/velm_zavra_dev_init.ini";

/// A record whose bytes on the wire count up from 1, and the bytes of a record.
template <class Parameters>
Parameters counting()
{
    Bytes<wire_size<Parameters>> bytes;
    std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(1));
    return unpack<Parameters>(bytes.data());
}

template <class Parameters>
auto bytes_of(const Parameters& parameters)
{
    Bytes<wire_size<Parameters>> bytes;
    pack(bytes.data(), parameters);
    return bytes;
}

/// Three components as text.
template <class Vector>
std::string xyz(const Vector& v)
{
    std::ostringstream text;
    text << v.x << ' ' << v.y << ' ' << v.z;
    return text.str();
}

constexpr auto gyro_0 = VELM_ZAVRA_API_GYRO_0;
constexpr auto gyro_1 = VELM_ZAVRA_API_GYRO_1;
constexpr auto mtm_0 = VELM_ZAVRA_API_MAGNETOMETER_0;

}

class Sensors_Test : public Bus_Test
{
protected:
    Sensors_Test()
    {
        testing::internal::CaptureStdout();
        api = std::make_unique<VELM_ZAVRA_API>();
        testing::internal::GetCapturedStdout();
    }

    Bus_Server server{directory, "i2c-0", {{10, &unit}}};
    ZAVRA_100 device{10, "i2c-0"};
    std::unique_ptr<VELM_ZAVRA_API> api;
};

TEST_F(Sensors_Test, parameters_come_back_equal_in_every_field)
{
    const auto gyro = counting<VELM_ZAVRA_API_GYROSCOPE_PARAMETERS>();
    const auto magnetometer = counting<VELM_ZAVRA_API_MAGNETOMETER_PARAMETERS>();
    testing::internal::CaptureStdout();
    api->Set_Gyro_Parameters(gyro_1, gyro);
    api->Set_Magnetometer_Parameters(mtm_0, magnetometer);
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(bytes_of(api->Get_Gyro_Parameters(gyro_1)), bytes_of(gyro));
    EXPECT_EQ(bytes_of(api->Get_Magnetometer_Parameters(mtm_0)), bytes_of(magnetometer));
    EXPECT_NE(bytes_of(api->Get_Gyro_Parameters(gyro_0)), bytes_of(gyro));
}

TEST_F(Sensors_Test, settings_and_switches_show_in_the_parameters)
{
    api->Set_Gyro_Update_Interval(gyro_1, 77);
    api->Set_Magnetometer_Update_Interval(mtm_0, 78);
    api->Set_Gyro_Bias_Value(gyro_1, {1, 2, 3});
    api->Enable_Gyro_Correction(gyro_1);
    api->Enable_Magnetometer_Moving_Averaging_Filter(mtm_0);
    EXPECT_EQ(api->Get_Gyro_Update_Interval(gyro_1), 77U);
    EXPECT_EQ(api->Get_Magnetometer_Update_Interval(mtm_0), 78U);
    EXPECT_EQ(xyz(api->Get_Gyro_Bias_Value(gyro_1)), "1 2 3");
    const auto gyro = api->Get_Gyro_Parameters(gyro_1);
    EXPECT_EQ(gyro.update_interval_msec, 77U);
    EXPECT_EQ(gyro.sensor_correction_enable, 1);
    EXPECT_EQ(gyro.avg_filter_enable, 0);
    EXPECT_EQ(api->Get_Magnetometer_Parameters(mtm_0).moving_avg_filter_enable, 1);
    api->Disable_Gyro_Correction(gyro_1);
    EXPECT_EQ(api->Get_Gyro_Parameters(gyro_1).sensor_correction_enable, 0);

    auto unknown = with_crc(octets("a107010003"));
    device.I2CWriteByteArray(unknown.data(), static_cast<int>(unknown.size()));
    EXPECT_EQ(unit.parts.system.error_register, System::refused_command);

    unit.reset();
    EXPECT_EQ(api->Get_Gyro_Update_Interval(gyro_1), 100U);
}

TEST_F(Sensors_Test, measurements_show_the_world_until_a_value_is_injected)
{
    world.angular_velocity = {1, 2, 3};
    api->Start_Gyro_Bias_Calculation(gyro_0);
    world.angular_velocity = {4, 4, 4};
    EXPECT_EQ(xyz(api->Get_Gyro_Values(gyro_0)), "4 4 4");
    api->Enable_Gyro_Bias_Removement(gyro_0);
    EXPECT_EQ(xyz(api->Get_Gyro_Values(gyro_0)), "3 2 1");

    device.Set_Epoch_Time(1'000'000);
    api->Set_Gyro_Values(gyro_0, {7, 8, 9});
    api->Set_Magnetometer_Values(mtm_0, {5, 6, 7});
    api->Set_Sun_Vector({0, 1, 0}, 12345);
    device.Set_Epoch_Time(9'000'000);
    const auto injected = api->Get_Gyro_Values(gyro_0);
    EXPECT_EQ(xyz(injected), "7 8 9");
    EXPECT_GE(injected.timestamp, 1'000'000U);
    EXPECT_LT(injected.timestamp, 9'000'000U);
    EXPECT_GE(api->Get_Gyro_Values(gyro_1).timestamp, 9'000'000U);
    EXPECT_EQ(xyz(api->Get_Magnetometer_Values(mtm_0)), "5 6 7");
    ZAVRA_100_Sensor_Telemetry sensor;
    device.Get_Sensor_Telemetry(&sensor);
    EXPECT_EQ(sensor.measured_angular_velocity_gyro_1_z_radps, 9.0F);
    EXPECT_EQ(sensor.measured_angular_velocity_gyro_2_z_radps, 4.0F);
    EXPECT_EQ(sensor.measured_magnetic_field_magnetometer_1_x_t, 5.0F);
    EXPECT_EQ(sensor.measured_sun_vector_sunsensor_1_y, 1.0F);
    ZAVRA_100_Attitude_Telemetry attitude;
    device.Get_Attitude_Telemetry(&attitude);
    EXPECT_EQ(attitude.epoch_time_last_sun_vector_measurement_msec, 12345U);
}

TEST_F(Sensors_Test, the_example_file_configures_all_sensors_but_the_one_with_a_byte_that_is_none)
{
    std::ifstream file(example_file);
    const std::string good{std::istreambuf_iterator<char>(file), {}};
    const std::string key = "output_type                 = 1 ";
    ASSERT_THAT(good, testing::HasSubstr(key));
    for (const std::string value : {"256", "-1", "1.5", "abc", "", "255"}) {
        SCOPED_TRACE(value);
        unit.reset();
        std::string text = good;
        text.replace(text.find(key), key.size(), "output_type = " + value + " ");
        std::ofstream(directory / "some.ini") << text;
        testing::internal::CaptureStdout();
        api->Initialize_Device(directory / "some.ini");
        const std::string printed = testing::internal::GetCapturedStdout();

        const bool fine = value == "255";
        EXPECT_THAT(printed, testing::HasSubstr(fine ? "Gyro 0: Initialize with parameters ... DONE\n"
                                                     : "Gyro 0: Reading the section parameters ... FAILED\n"));
        EXPECT_THAT(printed, testing::HasSubstr("Gyro 2: Initialize with parameters ... DONE\n"));
        EXPECT_THAT(printed, testing::ContainsRegex("Magnetometer 0: Initialize with parameters ... [0-9a-f]+DONE\n"));
        EXPECT_EQ(xyz(api->Get_Gyro_Parameters(gyro_0).correction_offset), fine ? "0.00031 -0.00012 8e-05" : "0 0 0");
        EXPECT_EQ(api->Get_Gyro_Update_Interval(gyro_1), 1000U);
        EXPECT_EQ(xyz(api->Get_Magnetometer_Parameters(mtm_0).correction_offset), "1.2e-06 -7e-07 2.1e-06");
    }
}

}
