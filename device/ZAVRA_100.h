#pragma once

#include "ZAVRA_100_Exception.h"
#include "records/actuators.h"
#include "records/controllers.h"
#include "records/modes.h"
#include "records/sensors.h"
#include "records/startracker_orbit.h"
#include "records/telemetry.h"
#include "records/vectors.h"

#include <VELM_I2C_DEV.h>

#include <string>

/// @file
/// The device layer: the command protocol of the ZAVRA-100 attitude determination and control unit.

/// One unit on one I2C bus. Every command method checks its arguments, sends one request frame and, where the command
/// has a response, reads it, checks its CRC (repeating the request up to nine times) and decodes it.
///
/// A call blocks its thread for at least 100 ms, and up to about 4 s when every response arrives damaged. Failures are
/// thrown as ZAVRA_100_Exception; nothing is written through a pointer argument then, but a request that reached the
/// unit stays executed. An object must not be used by two threads at once; objects for separate units are independent.
class ZAVRA_100 : public VELM_I2C_DEV
{
public:
    /// @name Session
    /// @{

    /// Creates an object that is not connected yet.
    ZAVRA_100();

    /// Connects at once.
    /// @param i2c_address      7-bit slave address
    /// @param i2c_device_name  bus device name, for example "i2c-0"
    /// @throws ZAVRA_100_Exception when the bus cannot be opened
    ZAVRA_100(unsigned int i2c_address, std::string i2c_device_name);

    /// Leaves the connection to the base class; sends nothing.
    ~ZAVRA_100() override;

    ZAVRA_100(const ZAVRA_100&) = delete;
    ZAVRA_100& operator=(const ZAVRA_100&) = delete;

    void Connect(unsigned int i2c_address, std::string i2c_device_name);
    void Disconnect();

    /// Prints the platform's description of the bus connection to standard output.
    void PrintDeviceInfo();

    /// @}
    /// @name Transport
    /// @{

    /// Sends one request frame and waits 100 ms for the unit to execute it.
    /// @param command         command identifier
    /// @param data            payload; may be null when num_data_bytes is 0
    /// @param num_data_bytes  0 to 512
    void ZAVRA_Generic_Set(unsigned short command, unsigned char* data, unsigned int num_data_bytes);

    /// Sends one request frame and reads the response to it, up to ten times until its CRC is right.
    /// @param num_response_bytes  exact size of the response's payload, 0 to 512
    void ZAVRA_Generic_Get(unsigned short command, unsigned char* data, unsigned int num_data_bytes,
                           unsigned char* response, unsigned int num_response_bytes);

    /// Reads a native reply of the star tracker, up to ten times until its CRC is right; sends nothing.
    /// @param num_response_bytes  exact size of the reply's payload, 0 to 256
    void ZAVRA_Startracker_Native_Get(unsigned char* response, unsigned int num_response_bytes);

    /// Reads the standard telemetry frame.
    /// @return bits 0 and 1 of the system error register, which report command errors
    unsigned int Check_Command_Errors();

    /// @}
    /// @name Wire encoding
    /// Values are big-endian on the wire, whatever the host; floating-point bit patterns pass unchanged.
    /// @{

    /// CRC-8: polynomial 0x07, start value 0x00, no reflection, no final XOR.
    unsigned char crc8_ccitt(const unsigned char* data, unsigned int length);
    unsigned char crc8_ccitt_generic(const unsigned char* data, unsigned int length, unsigned char start_value);
    void init_crc8ccitt_table();

    /// @return whether byte `length` of the message is the CRC of the bytes before it
    bool check_message_crc8(unsigned char* message, unsigned int length);

    unsigned long long ToUInt64(unsigned char* source);
    void FromUInt64(unsigned char* destination, unsigned long long value);
    unsigned int ToUInt32(unsigned char* source);
    void FromUInt32(unsigned char* destination, unsigned int value);
    /// The star tracker's event words are the one little-endian value of the protocol.
    int ToInt32_ST(unsigned char* source);
    unsigned short ToUInt16(unsigned char* source);
    /// Writes the low 16 bits of the value.
    void FromUInt16(unsigned char* destination, unsigned int value);
    float ToFloat32(unsigned char* source);
    void FromFloat32(unsigned char* destination, float value);
    double ToFloat64(unsigned char* source);
    void FromFloat64(unsigned char* destination, double value);
    /// @return whether the host stores integers least significant byte first
    bool isLittleEndian();

    /// @}
    /// @name System configuration and time
    /// @{

    /// @param dcdc_configuration  register of the low-level power converters; its bits are the unit's
    void Set_DCDC_Configuration(unsigned int dcdc_configuration);

    /// @param epoch_time_msec  milliseconds since 01.01.1970 0:00:00 UTC
    void Set_Epoch_Time(unsigned long long epoch_time_msec);
    void Get_Epoch_Time(unsigned long long* epoch_time_msec);
    /// @param system_time_msec  milliseconds since the unit's last reset
    void Get_System_Time(unsigned long long* system_time_msec);

    void Get_System_Scheduler_Register(unsigned int* scheduler_register);
    void Set_System_Scheduler_Register(unsigned int scheduler_register);
    void Clear_System_Error_Register();

    /// @param gyro_index  0 to 2
    void Set_Active_Gyroscope(unsigned char gyro_index);
    /// @param magnetometer_index  0; the unit's second magnetometer cannot be chosen
    void Set_Active_Magnetometer(unsigned char magnetometer_index);

    void Set_Temperature_Update_Interval(unsigned long long interval_msec);
    void Get_Temperature_Update_Interval(unsigned long long* interval_msec);
    void Set_Power_Update_Interval(unsigned long long interval_msec);
    /// Reports its failures with the words of Get_System_Time.
    void Get_Power_Update_Interval(unsigned long long* interval_msec);

    /// @param hil_configuration  hardware-in-the-loop configuration word; its bits are the unit's
    void Set_HIL_Configuration(unsigned int hil_configuration);
    void Get_HIL_Configuration(unsigned int* hil_configuration);

    /// @}
    /// @name Telemetry frames
    /// @{

    void Get_Info_Frame(ZAVRA_100_Info_Telemetry* telemetry);
    void Get_Standard_Telemetry(ZAVRA_100_Standard_Telemetry* telemetry);
    void Get_Sensor_Telemetry(ZAVRA_100_Sensor_Telemetry* telemetry);
    void Get_Actuator_Telemetry(ZAVRA_100_Actuator_Telemetry* telemetry);
    void Get_Attitude_Telemetry(ZAVRA_100_Attitude_Telemetry* telemetry);
    void Get_Power_Telemetry(ZAVRA_100_Power_Telemetry* telemetry);

    /// @}
    /// @name Sensors
    /// @{

    /// @}
    /// @name Star tracker and orbit module
    /// @{

    /// @param quaternion  attitude that the star tracker is to report; its epoch time is not sent
    void Set_Startracker_Quaternion(ZAVRA_100_Startracker_Quaternion quaternion);
    void Get_Startracker_Quaternion(ZAVRA_100_Startracker_Quaternion* quaternion);

    /// @param event_list  receives up to 23 events; events that the unit does not give keep their values. A unit that
    ///                    announces more than 23 is answered with a warning on the debug stream, and num_event is 23.
    void Get_Startracker_Event_List(ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST* event_list);

    /// @param mode  operation mode; the meaning of its values is the star tracker's own
    void Set_Startracker_Operation_Mode(unsigned char mode);
    void Get_Startracker_Operation_Mode(unsigned char* mode);

    /// Passes a command in the star tracker's own protocol through the unit.
    /// @param data    the command's bytes; may be null when length is 0
    /// @param length  0 to 512
    void Send_Startracker_Native_Command(unsigned char* data, unsigned int length);
    /// Reports its failures with the words of Get_Startracker_Operation_Mode.
    /// @param status  not 0 while a native reply waits to be read
    void Check_Startracker_Native_Reply(unsigned int* status);
    /// Reads one byte of the native reply.
    /// @param data    data[0] receives the byte
    /// @param length  not used
    void Read_Startracker_Native_Reply(unsigned char* data, unsigned int length);

    /// Loads a two-line element set into the orbit module.
    /// @param tle_data  sent as it stands; the unit checks it
    /// @param response  the unit's result code, which is not judged here; from the simulated unit 0 when the elements
    ///                  are accepted, otherwise one of the codes in simulator/orbit/tle.h
    void Init_Orbit_Module(ZAVRA_100_Orbit_TLE_Data tle_data, unsigned char* response);
    void Get_Orbit_Data(ZAVRA_100_Orbit_Propagation_Data* orbit_data);

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
    unsigned char crc8_table_[256];
};
