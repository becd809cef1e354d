#pragma once

#include "../protocol/records/actuators.h"
#include "../protocol/records/controllers.h"
#include "../protocol/records/modes.h"
#include "../protocol/records/sensors.h"
#include "../protocol/records/startracker_orbit.h"
#include "../protocol/records/telemetry.h"
#include "../protocol/records/vectors.h"
#include "ZAVRA_100_Exception.h"

#include <VELM_I2C_DEV.h>

#include <string>

/// @file
/// The device layer: the command protocol of the ZAVRA-100 attitude determination and control unit. The table in
/// docs/quirks.md lists what does not do, print or report what its name promises.

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
    void Get_Power_Update_Interval(unsigned long long* interval_msec);

    /// @param hil_configuration  hardware-in-the-loop configuration word; its bits are the unit's
    void Set_HIL_Configuration(unsigned int hil_configuration);
    void Get_HIL_Configuration(unsigned int* hil_configuration);

    /// Reads the standard telemetry frame.
    /// @return bits 0 and 1 of the system error register, which report command errors
    unsigned int Check_Command_Errors();

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
    /// Gyroscopes have the indices 0 to 2, the only magnetometer has the index 0. Any other index is refused before
    /// anything is sent, except by the two magnetometer parameter methods.
    /// @{

    /// Injects a measurement, as in hardware-in-the-loop tests.
    /// @param angular_velocity  body frame, rad/s
    void Set_Gyro_Values(unsigned char index, ZAVRA_100_Vector3_float angular_velocity);
    /// @param angular_velocity  body frame, rad/s
    /// @param timestamp         the unit's time of the measurement, passed on unchanged
    void Get_Gyro_Values(unsigned char index, ZAVRA_100_Vector3_float* angular_velocity, unsigned long long* timestamp);
    void Set_Gyro_Parameters(unsigned char index, ZAVRA_100_Gyroscope_Parameters parameters);
    void Get_Gyro_Parameters(unsigned char index, ZAVRA_100_Gyroscope_Parameters* parameters);
    void Set_Gyro_Update_Interval(unsigned char index, unsigned long long interval_msec);
    void Get_Gyro_Update_Interval(unsigned char index, unsigned long long* interval_msec);
    /// Correction applies the scale matrix and the offset of the gyroscope's parameters.
    void Enable_Gyro_Correction(unsigned char index);
    void Disable_Gyro_Correction(unsigned char index);
    /// Lets the unit work out the gyroscope's bias; the parameters' bias counter governs it.
    void Start_Gyro_Bias_Calculation(unsigned char index);
    /// @param bias  rad/s
    void Set_Gyro_Bias_Value(unsigned char index, ZAVRA_100_Vector3_float bias);
    void Get_Gyro_Bias_Value(unsigned char index, ZAVRA_100_Vector3_float* bias);
    /// Bias removal subtracts the bias value from each measurement.
    void Enable_Gyro_Bias_Removement(unsigned char index);
    void Disable_Gyro_Bias_Removement(unsigned char index);
    void Enable_Gyro_Averaging_Filter(unsigned char index);
    void Disable_Gyro_Averaging_Filter(unsigned char index);

    /// Injects a measurement, as in hardware-in-the-loop tests.
    /// @param magnetic_field  in the unit of the measurements that Get_Magnetometer_Values reads
    void Set_Magnetometer_Values(unsigned char index, ZAVRA_100_Vector3_float magnetic_field);
    /// @param timestamp  the unit's time of the measurement, passed on unchanged
    void Get_Magnetometer_Values(unsigned char index, ZAVRA_100_Vector3_float* magnetic_field,
                                 unsigned long long* timestamp);
    /// Sends any index as it is given. Prints the request's payload to standard output, in hexadecimal and without an
    /// end of line.
    void Set_Magnetometer_Parameters(unsigned char index, ZAVRA_100_Magnetometer_Parameters parameters);
    /// Reads magnetometer 0 whatever the index.
    void Get_Magnetometer_Parameters(unsigned char index, ZAVRA_100_Magnetometer_Parameters* parameters);
    void Set_Magnetometer_Update_Interval(unsigned char index, unsigned long long interval_msec);
    void Get_Magnetometer_Update_Interval(unsigned char index, unsigned long long* interval_msec);
    /// Correction applies the scale matrix and the offset of the magnetometer's parameters.
    void Enable_Magnetometer_Correction(unsigned char index);
    void Disable_Magnetometer_Correction(unsigned char index);
    void Enable_Magnetometer_Averaging_Filter(unsigned char index);
    void Disable_Magnetometer_Averaging_Filter(unsigned char index);
    void Enable_Magnetometer_Moving_Averaging_Filter(unsigned char index);
    void Disable_Magnetometer_Moving_Averaging_Filter(unsigned char index);

    /// Gives the unit a sun vector that was measured elsewhere.
    /// @param sun_vector       sensor frame
    /// @param epoch_time_msec  time of the measurement, milliseconds since 01.01.1970 0:00:00 UTC
    void Set_Sun_Vector(ZAVRA_100_Vector3_float sun_vector, unsigned long long epoch_time_msec);

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
    /// @param status  not 0 while a native reply waits to be read
    void Check_Startracker_Native_Reply(unsigned int* status);
    /// Reads one byte of the native reply.
    /// @param data    data[0] receives the byte
    /// @param length  not used
    void Read_Startracker_Native_Reply(unsigned char* data, unsigned int length);

    /// Loads a two-line element set into the orbit module.
    /// @param tle_data  sent as it stands; the unit checks it
    /// @param response  the unit's result code, which is not judged here; 0 from the simulated unit when the elements
    ///                  are accepted, otherwise a code of those at VELM_ZAVRA_API::Init_Orbit_Module()
    void Init_Orbit_Module(ZAVRA_100_Orbit_TLE_Data tle_data, unsigned char* response);
    void Get_Orbit_Data(ZAVRA_100_Orbit_Propagation_Data* orbit_data);

    /// @}
    /// @name Actuators
    /// Six reaction wheels, index 0 to 5, and three magnetorquers. An index is checked only where a range is given.
    /// @{

    /// @param index        0 to 5
    /// @param speed_radps  rad/s
    void Set_ReactionWheel_Speed(unsigned char index, float speed_radps);
    /// @param index        0 to 5
    /// @param speed_radps  rad/s
    void Get_ReactionWheel_Speed(unsigned char index, float* speed_radps);

    /// @param index  sent unchanged, whatever its value; as in the getter
    void Set_ReactionWheel_Parameters(unsigned char index, ZAVRA_100_Single_Reactionwheel_Parameters parameters);
    void Get_ReactionWheel_Parameters(unsigned char index, ZAVRA_100_Single_Reactionwheel_Parameters* parameters);

    /// @param interval_msec  update interval of the whole set of wheels
    void Set_ReactionWheel_All_Update_Interval(unsigned long long interval_msec);
    void Get_ReactionWheel_All_Update_Interval(unsigned long long* interval_msec);

    /// Stops driving one wheel.
    /// @param index  0 to 5
    void Enable_ReactionWheel_Idle_Mode(unsigned char index);

    /// @param speed_radps  rad/s, wheel by wheel
    void Set_ReactionWheel_All_Speeds(ZAVRA_100_Vector6_float speed_radps);
    void Get_ReactionWheel_All_Speeds(ZAVRA_100_Vector6_float* speed_radps);

    /// The whole array at once, with the matrix that distributes torque to the wheels.
    void Set_ReactionWheel_All_Parameters(ZAVRA_100_Reactionwheel_Array_Parameters parameters);
    void Get_ReactionWheel_All_Parameters(ZAVRA_100_Reactionwheel_Array_Parameters* parameters);

    /// Stops driving all wheels.
    void Enable_ReactionWheel_All_Idle_Mode();

    /// @param torque_Nm  torque target in the body frame, N m
    void Set_ReactionWheel_Torque(ZAVRA_100_Vector3_float torque_Nm);
    void Get_ReactionWheel_Torque(ZAVRA_100_Vector3_float* torque_Nm);

    /// @param moment_Am  dipole moments in A m^2
    void Set_Magnettorquer_All_Dipole_Moments(ZAVRA_100_Vector3_float moment_Am);
    void Get_Magnettorquer_All_Dipole_Moments(ZAVRA_100_Vector3_float* moment_Am);

    /// Switches all magnetorquers off until they are resumed.
    void Suspend_All_Magnettorquers();
    void Resume_All_Magnettorquers();

    void Set_Magnettorquer_Parameters(ZAVRA_100_Magnetorquer_Parameters parameters);
    void Get_Magnettorquer_Parameters(ZAVRA_100_Magnetorquer_Parameters* parameters);

    /// @param target_current_A  coil currents in A
    void Set_Magnettorquer_All_Currents(ZAVRA_100_Vector3_float target_current_A);
    void Get_Magnettorquer_All_Currents(ZAVRA_100_Vector3_float* target_current_A);

    /// @}
    /// @name Controllers
    /// The axis of a single-axis controller is sent unchanged, whatever its value; axis codes and the units of targets
    /// are the unit's own.
    /// @{

    /// PID controller that holds an angular velocity about one axis.
    void Set_SingleAxis_AngularVelocity_Controller_Parameters(unsigned char axis,
                                                              ZAVRA_100_PID_Controller_Parameters parameters);
    void Get_SingleAxis_AngularVelocity_Controller_Parameters(unsigned char axis,
                                                              ZAVRA_100_PID_Controller_Parameters* parameters);
    /// @param target  angular velocity set-point
    void Start_SingleAxis_AngularVelocity_Controller(unsigned char axis, float target);
    /// Stops the controller of one axis, as its counterpart for the angle step does.
    void Stop_SingleAxis_AngularVelocity_Controller(unsigned char axis);

    /// Cascaded PID controller that turns about one axis by an angle.
    /// @param parameters  k_d_out is not sent: the unit receives zero
    void Set_SingleAxis_AngleStep_Controller_Parameters(unsigned char axis,
                                                        ZAVRA_100_Cascaded_PID_Controller_Parameters parameters);
    /// @param parameters  only k_p_in and k_p_out come from the unit; everything else is zero
    void Get_SingleAxis_AngleStep_Controller_Parameters(unsigned char axis,
                                                        ZAVRA_100_Cascaded_PID_Controller_Parameters* parameters);
    /// @param target  angle step
    void Start_SingleAxis_AngleStep_Controller(unsigned char axis, float target);
    void Stop_SingleAxis_AngleStep_Controller(unsigned char axis);

    /// B-dot controller, max variant.
    void Set_ThreeAxis_BDot_Controller_Max_Parameters(ZAVRA_100_BDot_Controller_Parameters parameters);
    void Get_ThreeAxis_BDot_Controller_Max_Parameters(ZAVRA_100_BDot_Controller_Parameters* parameters);
    /// B-dot controller, proportional variant.
    void Set_ThreeAxis_BDot_Controller_Proportional_Parameters(ZAVRA_100_BDot_Controller_Parameters parameters);
    void Get_ThreeAxis_BDot_Controller_Proportional_Parameters(ZAVRA_100_BDot_Controller_Parameters* parameters);
    void Set_ThreeAxis_SunPointing_Controller_Parameters(ZAVRA_100_SunPointing_Controller_Parameters parameters);
    void Get_ThreeAxis_SunPointing_Controller_Parameters(ZAVRA_100_SunPointing_Controller_Parameters* parameters);
    void Set_ThreeAxis_Sliding_Controller_Parameters(ZAVRA_100_Sliding_Controller_Parameters parameters);
    void Get_ThreeAxis_Sliding_Controller_Parameters(ZAVRA_100_Sliding_Controller_Parameters* parameters);

    /// @}
    /// @name Operation modes, target pointing and Kalman filter
    /// No method checks its arguments. The unit has one stop for every mode, so that any stop method ends whichever
    /// mode is running.
    /// @{

    void Set_OperationMode_Safe();
    void Set_OperationMode_Idle();
    void Set_OperationMode_Measurement();

    void Start_OperationMode_Detumbling(ZAVRA_100_Detumbling_Mode_Parameters parameters);
    void Stop_OperationMode_Detumbling();
    void Start_OperationMode_Sun_Pointing(ZAVRA_100_SunPointing_Mode_Parameters parameters);
    void Stop_OperationMode_Sun_Pointing();

    void
    Start_TargetPointing_Earth_Const_Velocity_Mode(ZAVRA_100_Earth_TargetPointing_Const_Velocity_Parameters parameters);
    void Stop_TargetPointing_Earth_Const_Velocity_Mode();
    void Start_TargetPointing_Earth_Fix_Mode(ZAVRA_100_Earth_TargetPointing_Fixed_Parameters parameters);
    void Stop_TargetPointing_Earth_Fix_Mode();
    void Start_TargetPointing_Nadir_Mode(ZAVRA_100_NadirPointing_Parameters parameters);
    void Stop_TargetPointing_Nadir_Mode();
    /// With degree 6 the base quaternion is sent as the constant terms of polynomials of that degree; any other degree
    /// is sent as 0, with the base quaternion alone.
    void Start_TargetPointing_Inertial_Mode(ZAVRA_100_TargetPointing_Inertial_Parameters parameters);
    void Stop_TargetPointing_Inertial_Mode();

    void
    Get_TargetPointing_Target_Parameters_Telemetry(ZAVRA_100_TargetPointing_Target_Parameters_Telemetry* telemetry);
    void Get_TargetPointing_Operation_Parameters_Telemetry(
        ZAVRA_100_TargetPointing_Operation_Parameters_Telemetry* telemetry);
    void Get_TargetPointing_Operation_Data_Telemetry(ZAVRA_100_TargetPointing_Operation_Data_Telemetry* telemetry);
    void Set_TargetPointing_Operation_Parameters(ZAVRA_100_TargetPointing_Operation_Parameters parameters);

    void Set_KalmanFilter_Parameters(ZAVRA_100_KalmanFilter_Parameters parameters);
    void Get_KalmanFilter_Parameters(ZAVRA_100_KalmanFilter_Parameters* parameters);

    /// @}

private:
    unsigned char crc8_table_[256];
};
