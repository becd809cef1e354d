#pragma once

#include "VELM_ZAVRA_API_Exception.h"
#include "records/actuators.h"
#include "records/controllers.h"
#include "records/modes.h"
#include "records/registers.h"
#include "records/sensors.h"
#include "records/startracker_orbit.h"
#include "records/telemetry.h"
#include "records/vectors.h"

#include <string>

/// @file
/// The application's interface to the ZAVRA-100 attitude determination and control unit.

class ZAVRA_100;

/// One unit, at I2C address 10 on the bus "i2c-0".
///
/// An operation blocks its thread while the unit works, for at least 100 ms. A failure of the unit or of the bus is
/// thrown as VELM_ZAVRA_API_Exception; the object stays usable, and nothing is rolled back on the unit. An object
/// belongs to one thread at a time, and there should be one object per unit.
class VELM_ZAVRA_API
{
public:
    /// @name Object
    /// @{

    /// Prints the library's name and version, connects to the unit and configures it from the file
    /// /etc/velm_api_config/velm_zavra_dev_init.ini. A file that is missing or cannot be parsed is reported and leaves
    /// the unit as it is.
    /// @throws VELM_ZAVRA_API_Exception when the bus cannot be opened
    VELM_ZAVRA_API();
    virtual ~VELM_ZAVRA_API();

    VELM_ZAVRA_API(const VELM_ZAVRA_API&) = delete;
    VELM_ZAVRA_API& operator=(const VELM_ZAVRA_API&) = delete;

    /// Prints the library's name, version and authors and the bus connection to standard output.
    void Print_Info();

    /// Configures the unit's gyroscopes and magnetometer from an INI file, as the constructor does.
    void Initialize_Device(std::string ini_file);

    /// @param rpm  speed in revolutions per minute
    /// @return speed in rad/s
    float rpm_to_radps(float rpm);

    /// @param radps  speed in rad/s
    /// @return speed in revolutions per minute
    float radps_to_rpm(float radps);

    /// @}
    /// @name System
    /// @{

    /// @param epoch_time_msec  milliseconds since 01.01.1970 0:00:00 UTC
    void Set_Epoch_Time(unsigned long long epoch_time_msec);
    /// @return milliseconds since 01.01.1970 0:00:00 UTC
    unsigned long long Get_Epoch_Time();
    /// @return milliseconds since the unit's last reset
    unsigned long long Get_System_Time();

    /// Sets how often the unit measures its temperature.
    void Set_Temperature_Update_Interval(unsigned long long interval_msec);
    /// @return milliseconds
    unsigned long long Get_Temperature_Update_Interval();
    /// Sets how often the unit measures power, voltages and currents.
    void Set_Power_Update_Interval(unsigned long long interval_msec);
    /// @return milliseconds
    unsigned long long Get_Power_Update_Interval();

    /// Chooses the gyroscope that the unit uses.
    void Set_Active_Gyroscope(VELM_ZAVRA_API_GYROSCOPES gyro);
    /// Chooses the magnetometer that the unit uses.
    void Set_Active_Magnetometer(VELM_ZAVRA_API_MAGNETOMETERS magnetometer);

    /// @param dcdc_configuration  register of the low-level power converters; its bits are the unit's
    void Set_DCDC_Configuration(unsigned int dcdc_configuration);
    /// @param hil_configuration  hardware-in-the-loop configuration word; its bits are the unit's
    void Set_HIL_Configuration(unsigned int hil_configuration);
    unsigned int Get_HIL_Configuration();

    /// @param scheduler_register  what the unit's scheduler runs; its bits are the unit's
    void Set_System_Scheduler_Register(unsigned int scheduler_register);
    /// Reads the register with a command of its own; Get_Scheduler_Register() takes it from the standard telemetry.
    unsigned int Get_System_Scheduler_Register();

    void Clear_System_Error_Register();

    /// Reads the standard telemetry.
    /// @return bits 0 and 1 of the system error register, which report command errors; 0 when there was none
    unsigned int Check_Command_Errors();

    /// @}
    /// @name Telemetry frames
    /// @{

    VELM_ZAVRA_API_INFO_TELEMETRY Get_Info_Frame();
    VELM_ZAVRA_API_STANDARD_TELEMETRY Get_Standard_Telemetry();
    VELM_ZAVRA_API_SENSOR_TELEMETRY Get_Sensor_Telemetry();
    VELM_ZAVRA_API_ACTUATOR_TELEMETRY Get_Actuator_Telemetry();
    VELM_ZAVRA_API_ATTITUDE_TELEMETRY Get_Attitude_Telemetry();
    VELM_ZAVRA_API_POWER_TELEMETRY Get_Power_Telemetry();

    /// @}
    /// @name Registers
    /// Each call reads the standard telemetry once. The flags are named as far as the library knows them;
    /// VELM_ZAVRA_REGISTER_MAP::Decode() gives them the names of a unit's own documentation.
    /// @{

    VELM_ZAVRA_API_REGISTER Get_System_Status_Register();
    VELM_ZAVRA_API_REGISTER Get_System_Error_Register();
    VELM_ZAVRA_API_REGISTER Get_Sensors_Error_Register();
    VELM_ZAVRA_API_REGISTER Get_Actuators_Error_Register();
    VELM_ZAVRA_API_REGISTER Get_Livelyhood_Register();
    /// Gives the system scheduler register.
    VELM_ZAVRA_API_REGISTER Get_Scheduler_Register();
    VELM_ZAVRA_API_SATELLITE_REGISTERS Get_Satellite_Registers();
    /// Gives every register, all from the same reading.
    VELM_ZAVRA_API_ALL_REGISTERS Get_All_Registers();

    /// @}
    /// @name Sensors
    /// @{

    /// @}
    /// @name Star tracker and orbit module
    /// @{

    /// @}
    /// @name Actuators
    /// @{

    /// @}
    /// @name Controllers
    /// @{

    /// @}
    /// @name Operation modes, target pointing and Kalman filter
    /// @{

    /// @}

private:
    ZAVRA_100* device_;
};
