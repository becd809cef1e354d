#include "tests/support/cases.h"

using namespace zavra::test;

TEST_F(Operation_Test, info_frame)
{
    Payload info = Payload().text("IF", 2, 1).u8(1).u8(2).u8(3).u8(4).u8(5).u32(6).text("ZAVRA-100", 9, 1).u32(7);
    info.text("2020-11-19", 32, 1).u32(8).wire(Octets(8, 0xFF)).u32(9).wire(Octets(4, 0xFF)).u8(10);
    info.text("gcc", 20, 1).text("8.3.0", 10, 1).text("low", 10, 1).text("2019", 32, 1);
    check({get(call(BOTH(Get_Info_Frame)), "get info frame", "get info telemetry", "0220 0000", info,
               dump("INFO_FRAME:", "INFO_FRAME.",
                    "FRAME_IDENTIFIER:IF FRAME_VERSION SW_VERSION_MAJOR SW_VERSION_MINOR SW_VERSION_PATCH "
                    "STARTRACKER_TYPE STARTRACKER_SERIAL_NUMBER DEVICE_NAME:ZAVRA-100 DEVICE_SERIAL_NUMBER=7 "
                    "BUILD_TIMESTAMP:2020-11-19 SW_COMMIT_ID_PROJECT=8 SW_COMMIT_ID_LIBRARY=9 DEBUG_LEVEL=10 "
                    "COMPILER_NAME:gcc COMPILER_VERSION:8.3.0 LOW_LEVEL_SW_VERSION:low LOW_LEVEL_BUILD_TIMESTAMP:2019",
                    0))});
}

TEST_F(Operation_Test, telemetry)
{
    Payload standard = Payload().u64(0xAB00000000).u64(0xAB000002);
    for (unsigned int i = 3; i <= 22; ++i)
        standard.u32(0xAB000000 + i);
    Payload sensors = Payload().u64(1).u8(2).quaternion(3).u8(7).f32_range(8, 19).u8(20).f32_range(21, 44);
    sensors.u8_as<float>(200);
    const Payload actuators = Payload().u64(1).f32_range(2, 16).u32(17);
    const Payload attitude =
        Payload().u64(1).quaternion(2).f32_range(6, 8).u64(9).f32_range(10, 12).u64(13).f32_range(14, 16).u64(17);
    const Payload power = Payload().u64(1).f32_range(2, 13);
    check({
        get(call(BOTH(Get_Standard_Telemetry)), "get standard telemetry", "get standard telemetry", "0221 0000",
            standard,
            dump("STANDARD_TELEMETRY:", "STANDARD_TELEMETRY.",
                 "SYSTEM_TIME_MSEC=734439407616 EPOCH_TIME_MSEC LIVELYHOOD_REGISTER# SYSTEM_STATUS_REGISTER# "
                 "SYSTEM_SCHEDULER_REGISTER# SYSTEM_ERROR_REGISTER# SENSORS_ERROR_REGISTER# ACTUATORS_ERROR_REGISTER# "
                 "CONTROL_MAIN_STATUS# CONTROL_MAIN_ERROR# CONTROL_SINGLE_AXIS_STATUS_{XYZ}# CONTROL_ALL_AXIS_STATUS# "
                 "SAT_MAIN_REGISTER# SAT_ERROR_REGISTER# SAT_SCHEDULER_REGISTER# INTERNAL_USE_1# INTERNAL_USE_2# "
                 "NUMBER_OF_RECEIVED_COMMANDS# NUMBER_OF_FAILED_COMMANDS# INTERNAL_USE_3#",
                 0xAB000001)),
        get(call(BOTH(Get_Sensor_Telemetry)), "get sensor telemetry", "get Sensor Telemetry", "0222 0000", sensors,
            dump("SENSOR_TELEMETRY:", "SENSOR_TELEMETRY.",
                 "EPOCH_TIME_MSEC INDEX_OF_ACTIVE_STARTRACKER QUATERNION_ATTITUDE_{1234}_BF INDEX_OF_ACTIVE_GYRO "
                 "MEASURED_ANGULAR_VELOCITY_GYRO_{1234}_{XYZ}_RADPS INDEX_OF_ACTIVE_MAGNETOMETER "
                 "MEASURED_MAGNETIC_FIELD_MAGNETOMETER_{12}_{XYZ}_T MEASURED_SUN_VECTOR_SUNSENSOR_1_{XYZ} "
                 "MEASURED_SUN_VECTOR_SUNSENSOR_2_{XXZ} MEASURED_SUN_VECTOR_SUNSENSOR_{3456}_{XYZ} "
                 "TEMPERATURE_DEGC=200")),
        get(call(BOTH(Get_Actuator_Telemetry)), "get actuator telemetry", "get actuator telemetry", "0223 0000",
            actuators,
            dump("ACTUATOR_TELEMETRY:", "ACTUATOR_TELEMETRY.",
                 "EPOCH_TIME_MSEC REACTIONWHEEL_TARGET_{XYZUVW}_RADPS REACTIONWHEEL_CURRENT_SPEED_{XYZUVW}_RADPS "
                 "MAGNETORQUERS_TARGET_DIPOLE_MOMENT_{XYZ}_AM2 MAGNETORQUERS_CURRENT_STATE")),
        get(call(BOTH(Get_Attitude_Telemetry)), "get attitude telemetry", "get attitude telemetry", "0224 0000",
            attitude,
            dump("ATTITUDE_TELEMETRY:", "ATTITUDE_TELEMETRY.",
                 "EPOCH_TIME_MSEC QUATERNION_ATTITUDE_{1234}_BF ANGULAR_VELOCITY_{XYZ}_RADPS "
                 "EPOCH_TIME_LAST_ATTITUDE_DETERMINATION_MSEC MEASURED_MAGNETIC_FIELD_{XYZ}_BF_T "
                 "EPOCH_TIME_LAST_MAGNETIC_FIELD_MEASUREMENT_MSEC MEASURED_SUN_VECTOR_{XYZ}_BF "
                 "EPOCH_TIME_LAST_SUN_VECTOR_MEASUREMENT_MSEC")),
        get(call(BOTH(Get_Power_Telemetry)), "get power telemetry", "get power telemetry", "0225 0000", power,
            dump("POWER_STATUS_TELEMETRY:", "POWER_STATUS_TELEMETRY.",
                 "EPOCH_TIME_MSEC MAGNETTORQUER_POWER_CONSUMPTION_W MAGNETTORQUER_SUPPLY_VOLTAGE_V "
                 "MAGNETTORQUER_CURRENT_CONSUMPTION_A STARTRACKER_POWER_CONSUMPTION_W STARTRACKER_SUPPLY_VOLTAGE_V "
                 "STARTRACKER_CURRENT_CONSUMPTION_A ZAVRA_POWER_CONSUMPTION_W ZAVRA_SUPPLY_VOLTAGE_V "
                 "ZAVRA_CURRENT_CONSUMPTION_A REACTIONWHEEL_POWER_CONSUMPTION_W REACTIONWHEEL_SUPPLY_VOLTAGE_V "
                 "REACTIONWHEEL_CURRENT_CONSUMPTION_A")),
    });
}
