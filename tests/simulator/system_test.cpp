#include "tests/support/simulated_bus.h"

#include <VELM_I2C_DEV.h>
#include <VELM_ZAVRA_API.h>
#include <VELM_ZAVRA_REGISTER_MAP.h>

namespace zavra::test
{

TEST_F(Bus_Test, every_system_telemetry_and_register_operation_reaches_the_unit)
{
    const Bus_Server server{directory, "i2c-0", {{10, &unit}}};
    testing::internal::CaptureStdout();
    VELM_ZAVRA_API api;
    testing::internal::GetCapturedStdout();

    const unsigned long long epoch_msec = 1'600'000'000'000;
    api.Set_Epoch_Time(epoch_msec);
    EXPECT_LT(api.Get_Epoch_Time() - epoch_msec, 60'000U);
    EXPECT_LT(api.Get_System_Time(), 60'000U);
    api.Set_Temperature_Update_Interval(0x123456789ULL);
    EXPECT_EQ(api.Get_Temperature_Update_Interval(), 0x123456789ULL);
    api.Set_Power_Update_Interval(5);
    EXPECT_EQ(api.Get_Power_Update_Interval(), 5U);
    api.Set_HIL_Configuration(0x80000001);
    EXPECT_EQ(api.Get_HIL_Configuration(), 0x80000001U);
    api.Set_System_Scheduler_Register(0x300);
    EXPECT_EQ(api.Get_System_Scheduler_Register(), 0x300U);
    api.Set_DCDC_Configuration(0xDCDC);
    api.Set_Active_Gyroscope(VELM_ZAVRA_API_GYRO_1);
    api.Set_Active_Magnetometer(VELM_ZAVRA_API_MAGNETOMETER_0);
    {
        const auto guard = unit.lock();
        EXPECT_EQ(unit.parts.system.settings.dcdc_configuration, 0xDCDCU);
    }

    EXPECT_STREQ(api.Get_Info_Frame().device_name, "ZAVRA-SIM");
    EXPECT_EQ(api.Get_Sensor_Telemetry().index_of_active_gyro, 1);
    EXPECT_EQ(api.Get_Sensor_Telemetry().measured_angular_velocity_gyro_radps[2].y, world.angular_velocity.y);
    EXPECT_GE(api.Get_Actuator_Telemetry().epoch_time_msec, epoch_msec);
    EXPECT_EQ(api.Get_Attitude_Telemetry().measured_sun_vector_bf.z, world.sun.z);
    EXPECT_GT(api.Get_Power_Telemetry().zavra_supply_voltage_v, 0.0F);

    EXPECT_TRUE(api.Get_Livelyhood_Register().flags[0].state);
    EXPECT_TRUE(api.Get_Scheduler_Register().flags[9].state);
    EXPECT_EQ(api.Get_System_Status_Register().name, "system_status");
    EXPECT_EQ(api.Get_Sensors_Error_Register().name, "sensors_error");
    EXPECT_EQ(api.Get_Actuators_Error_Register().name, "actuators_error");
    EXPECT_EQ(api.Get_Satellite_Registers().error.name, "sat_error");
    const unsigned int before = api.Get_Standard_Telemetry().number_of_received_commands;
    EXPECT_EQ(api.Get_All_Registers().registers[VELM_ZAVRA_API_SYSTEM_SCHEDULER_REGISTER].value, 0x300U);
    const auto after = api.Get_Standard_Telemetry();
    EXPECT_EQ(after.number_of_received_commands, before + 2) << "one for all registers, one to count it";
    EXPECT_EQ(after.number_of_failed_commands, 0U);

    const VELM_ZAVRA_REGISTER_MAP map(ZAVRA_TEST_DATA_DIR "/../../examples/zavra_sim_registers.ini");
    EXPECT_EQ(map.Decode(api.Get_Livelyhood_Register()).flags[0].name, "alive");
    const struct
    {
        Octets request;
        unsigned int bit;
        const char* name;
    } cases[] = {
        {octets("0221 0000 ff"), 0, "bad_request_crc"},
        {with_crc(octets("7fff 0000")), 1, "unknown_command_or_wrong_length"},
    };
    for (auto [request, bit, name] : cases) {
        VELM_I2C_DEV bus;
        bus.Connect(10, "i2c-0");
        bus.I2CWriteByteArray(request.data(), static_cast<int>(request.size()));
        EXPECT_EQ(api.Check_Command_Errors(), 1U << bit);
        const auto reading = map.Decode(api.Get_System_Error_Register());
        EXPECT_EQ(reading.value, 1U << bit);
        EXPECT_EQ(reading.flags[bit].name, name);
        api.Clear_System_Error_Register();
        EXPECT_EQ(api.Get_System_Error_Register().value, 0U);
    }
    EXPECT_EQ(map.Decode(VELM_ZAVRA_API_SYSTEM_ERROR_REGISTER, System::refused_command).flags[2].name,
              "refused_command");
}

}
