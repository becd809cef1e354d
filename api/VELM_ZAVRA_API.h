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
/// The application's interface to the ZAVRA-100 attitude determination and control unit. The table in docs/quirks.md
/// lists what does not do, print or report what its name promises.

class ZAVRA_100;

/// One unit: at I2C address 10 on the bus "i2c-0", or where the constructor is told. The cause of an exception is told
/// by VELM_ZAVRA_CAUSE.h.
///
/// An operation blocks its thread while the unit works, for at least 100 ms. A failure of the unit or of the bus is
/// thrown as VELM_ZAVRA_API_Exception; the object stays usable, and nothing is rolled back on the unit. An object
/// belongs to one thread at a time, and there should be one object per unit.
///
/// Enumerators reach the unit as one byte: of any other value only the low 8 bits count, so that 256 is 0.
class VELM_ZAVRA_API
{
public:
    /// @name Object
    /// @{

    /// Prints the library's name and version, connects to the unit and configures it from the file
    /// /etc/velm_api_config/velm_zavra_dev_init.ini. A file that is missing or cannot be parsed is reported and leaves
    /// the unit as it is.
    /// @throws VELM_ZAVRA_API_Exception when the bus cannot be opened
    /// @throws VELM_INIPARSER_Exception as Initialize_Device() does
    VELM_ZAVRA_API();

    /// A unit elsewhere, with another configuration, or with none.
    /// @param address          7-bit slave address
    /// @param bus_device_name  for example "i2c-0"
    /// @param ini_file         what Initialize_Device() is to read; empty: the unit stays as it is
    /// @param print_banner     whether the library's name and version are printed
    /// @throws VELM_ZAVRA_API_Exception, VELM_INIPARSER_Exception as the constructor above does
    VELM_ZAVRA_API(unsigned int address, std::string bus_device_name, std::string ini_file = std::string(),
                   bool print_banner = true);

    virtual ~VELM_ZAVRA_API();

    VELM_ZAVRA_API(const VELM_ZAVRA_API&) = delete;
    VELM_ZAVRA_API& operator=(const VELM_ZAVRA_API&) = delete;

    /// Prints the library's name, version and authors and the bus connection to standard output.
    void Print_Info();

    /// Configures the unit's gyroscopes and magnetometer from an INI file, as the constructor does: gyroscopes from the
    /// sections zavra_dev_init_gyro0 to 2, the magnetometer from zavra_dev_init_mtm0. Progress goes to standard output.
    /// A file that cannot be parsed, a section that is missing, incomplete or unreadable, and a sensor that the unit
    /// does not configure are reported there and skipped.
    /// @throws VELM_INIPARSER_Exception when the platform's parser fails on a section or key of a file it has loaded
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
    /// Where the low 8 bits of a value are no sensor's, the operation refuses it before anything is sent, except for
    /// the two magnetometer parameter operations.
    /// @{

    /// Injects a measurement, as in hardware-in-the-loop tests.
    /// @param angular_velocity  body frame, rad/s
    void Set_Gyro_Values(VELM_ZAVRA_API_GYROSCOPES gyro, VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT angular_velocity);
    /// @return angular velocity, body frame, rad/s
    VELM_ZAVRA_API_SENSOR_VALUES Get_Gyro_Values(VELM_ZAVRA_API_GYROSCOPES gyro);
    void Set_Gyro_Parameters(VELM_ZAVRA_API_GYROSCOPES gyro, VELM_ZAVRA_API_GYROSCOPE_PARAMETERS parameters);
    VELM_ZAVRA_API_GYROSCOPE_PARAMETERS Get_Gyro_Parameters(VELM_ZAVRA_API_GYROSCOPES gyro);
    void Set_Gyro_Update_Interval(VELM_ZAVRA_API_GYROSCOPES gyro, unsigned long long interval_msec);
    unsigned long long Get_Gyro_Update_Interval(VELM_ZAVRA_API_GYROSCOPES gyro);
    /// Correction applies the scale matrix and the offset of the gyroscope's parameters.
    void Enable_Gyro_Correction(VELM_ZAVRA_API_GYROSCOPES gyro);
    void Disable_Gyro_Correction(VELM_ZAVRA_API_GYROSCOPES gyro);
    /// Lets the unit work out the gyroscope's bias; the parameters' bias counter governs it.
    void Start_Gyro_Bias_Calculation(VELM_ZAVRA_API_GYROSCOPES gyro);
    /// @param bias  rad/s
    void Set_Gyro_Bias_Value(VELM_ZAVRA_API_GYROSCOPES gyro, VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT bias);
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT Get_Gyro_Bias_Value(VELM_ZAVRA_API_GYROSCOPES gyro);
    /// Bias removal subtracts the bias value from each measurement.
    void Enable_Gyro_Bias_Removement(VELM_ZAVRA_API_GYROSCOPES gyro);
    void Disable_Gyro_Bias_Removement(VELM_ZAVRA_API_GYROSCOPES gyro);
    void Enable_Gyro_Averaging_Filter(VELM_ZAVRA_API_GYROSCOPES gyro);
    void Disable_Gyro_Averaging_Filter(VELM_ZAVRA_API_GYROSCOPES gyro);

    /// Injects a measurement, as in hardware-in-the-loop tests.
    /// @param magnetic_field  in the unit of the measurements that Get_Magnetometer_Values reads
    void Set_Magnetometer_Values(VELM_ZAVRA_API_MAGNETOMETERS magnetometer,
                                 VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT magnetic_field);
    VELM_ZAVRA_API_SENSOR_VALUES Get_Magnetometer_Values(VELM_ZAVRA_API_MAGNETOMETERS magnetometer);
    /// Prints the request's payload to standard output, in hexadecimal and without an end of line.
    void Set_Magnetometer_Parameters(VELM_ZAVRA_API_MAGNETOMETERS magnetometer,
                                     VELM_ZAVRA_API_MAGNETOMETER_PARAMETERS parameters);
    /// Reads magnetometer 0 whatever the argument.
    VELM_ZAVRA_API_MAGNETOMETER_PARAMETERS Get_Magnetometer_Parameters(VELM_ZAVRA_API_MAGNETOMETERS magnetometer);
    void Set_Magnetometer_Update_Interval(VELM_ZAVRA_API_MAGNETOMETERS magnetometer, unsigned long long interval_msec);
    unsigned long long Get_Magnetometer_Update_Interval(VELM_ZAVRA_API_MAGNETOMETERS magnetometer);
    /// Correction applies the scale matrix and the offset of the magnetometer's parameters.
    void Enable_Magnetometer_Correction(VELM_ZAVRA_API_MAGNETOMETERS magnetometer);
    void Disable_Magnetometer_Correction(VELM_ZAVRA_API_MAGNETOMETERS magnetometer);
    void Enable_Magnetometer_Averaging_Filter(VELM_ZAVRA_API_MAGNETOMETERS magnetometer);
    void Disable_Magnetometer_Averaging_Filter(VELM_ZAVRA_API_MAGNETOMETERS magnetometer);
    void Enable_Magnetometer_Moving_Averaging_Filter(VELM_ZAVRA_API_MAGNETOMETERS magnetometer);
    void Disable_Magnetometer_Moving_Averaging_Filter(VELM_ZAVRA_API_MAGNETOMETERS magnetometer);

    /// Gives the unit a sun vector that was measured elsewhere.
    /// @param sun_vector       sensor frame
    /// @param epoch_time_msec  time of the measurement, milliseconds since 01.01.1970 0:00:00 UTC
    void Set_Sun_Vector(VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT sun_vector, unsigned long long epoch_time_msec);

    /// @}
    /// @name Star tracker and orbit module
    /// @{

    /// @param quaternion  attitude that the star tracker is to report; its epoch time is not sent
    void Set_Startracker_Quaternion(VELM_ZAVRA_API_STARTRACKER_QUATERNION quaternion);
    VELM_ZAVRA_API_STARTRACKER_QUATERNION Get_Startracker_Quaternion();

    /// Mind that only 23 bytes of the x values and 23 bytes of the y values are passed on: events 0 to 4 whole, of
    /// event 5 the three low-order bytes of each value (the high byte is 0), and zeros for events 6 to 22.
    VELM_ZAVRA_API_STARTRACKER_EVENT_LIST Get_Startracker_Event_List();

    void Set_Startracker_Operation_Mode(VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE mode);
    VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE Get_Startracker_Operation_Mode();

    /// Passes a command in the star tracker's own protocol through the unit.
    /// @param data    the command's bytes; may be null when length is 0
    /// @param length  0 to 512
    void Send_Startracker_Native_Command(unsigned char* data, unsigned int length);
    /// @return not 0 while a native reply waits to be read
    unsigned int Check_For_Startracker_Native_Reply();
    /// Reads one byte of the native reply.
    /// @param data    data[0] receives the byte
    /// @param length  not used
    void Read_Startracker_Native_Reply(unsigned char* data, unsigned int length);

    /// Loads a two-line element set into the orbit module; parse_TLE_file() reads one from a file.
    /// @param tle_data  sent as it stands; the unit checks it
    /// @return the unit's result code, which is not judged here. The simulated unit gives 0 when the elements are
    ///         accepted; 1 to 4 when line 1 has a wrong length, number, checksum or field, 5 to 8 when line 2 has; 9
    ///         when the lines belong to different satellites; 10 for a period of 225 minutes or more; and 11 to 13 when
    ///         the elements describe no orbit: decayed, eccentricity out of range, no ellipse
    unsigned char Init_Orbit_Module(VELM_ZAVRA_API_ORBIT_TLE_DATA tle_data);
    VELM_ZAVRA_API_ORBIT_PROPAGATION_DATA Get_Orbit_Data();

    /// Reads the first 69 characters of the lines of a file that start with "1" and "2", up to the first line of the
    /// latter kind; other lines are skipped. The unit is not involved, and the characters are not checked.
    /// @return what was found; data.status says whether it is complete
    /// @throws VELM_ZAVRA_API_Exception when the file cannot be opened
    VELM_ZAVRA_API_TLE_FILE_DATA parse_TLE_file(char* file_name);

    /// @}
    /// @name Actuators
    /// Nothing is converted: speeds are in rad/s, not rpm. Where the low 8 bits of a value are no wheel's, the speed
    /// and idle mode operations refuse it; the others send them.
    /// @{

    /// @param speed_radps  rad/s
    void Set_ReactionWheel_Speed(VELM_ZAVRA_API_REACTIONWHEELS wheel, float speed_radps);
    /// @return speed in rad/s
    float Get_ReactionWheel_Speed(VELM_ZAVRA_API_REACTIONWHEELS wheel);

    /// Configuration of one wheel.
    void Set_ReactionWheel_Parameters(VELM_ZAVRA_API_REACTIONWHEELS wheel,
                                      VELM_ZAVRA_API_SINGLE_REACTIONWHEEL_PARAMETERS parameters);
    VELM_ZAVRA_API_SINGLE_REACTIONWHEEL_PARAMETERS Get_ReactionWheel_Parameters(VELM_ZAVRA_API_REACTIONWHEELS wheel);

    /// @param interval_msec  update interval of the whole set of wheels
    void Set_ReactionWheel_All_Update_Interval(unsigned long long interval_msec);
    /// @return milliseconds
    unsigned long long Get_ReactionWheel_All_Update_Interval();

    /// Stops driving one wheel.
    void Enable_ReactionWheel_Idle_Mode(VELM_ZAVRA_API_REACTIONWHEELS wheel);

    /// All wheels at once, rad/s.
    void Set_ReactionWheel_All_Speeds(VELM_ZAVRA_API_REACTIONWHEEL_SPEEDS speeds);
    VELM_ZAVRA_API_REACTIONWHEEL_SPEEDS Get_ReactionWheel_All_Speeds();

    /// Configuration of the whole array, with the matrix that distributes torque to the wheels.
    void Set_ReactionWheel_All_Parameters(VELM_ZAVRA_API_REACTIONWHEEL_ARRAY_PARAMETERS parameters);
    VELM_ZAVRA_API_REACTIONWHEEL_ARRAY_PARAMETERS Get_ReactionWheel_All_Parameters();

    /// Stops driving all wheels.
    void Enable_ReactionWheel_All_Idle_Mode();

    /// Torque target in the body frame, N m.
    void Set_ReactionWheel_Torque_Target(VELM_ZAVRA_API_REACTIONWHEEL_TORQUE torque);
    VELM_ZAVRA_API_REACTIONWHEEL_TORQUE Get_ReactionWheel_Torque_Target();

    /// @param moment_Am  dipole moments in A m^2
    void Set_Magnettorquer_All_Dipole_Moments(VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT moment_Am);
    /// @return dipole moments in A m^2
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT Get_Magnettorquer_All_Dipole_Moments();

    /// Switches all magnetorquers off until they are resumed.
    void Suspend_All_Magnettorquers();
    void Resume_All_Magnettorquers();

    void Set_Magnettorquer_Parameters(VELM_ZAVRA_API_MAGNETORQUER_PARAMETERS parameters);
    VELM_ZAVRA_API_MAGNETORQUER_PARAMETERS Get_Magnettorquer_Parameters();

    /// @param target_current_A  coil currents in A
    void Set_Magnettorquer_All_Currents(VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT target_current_A);
    /// Mind the name: this asks for the dipole moments, as Get_Magnettorquer_All_Dipole_Moments does.
    /// @return dipole moments in A m^2
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT Get_Magnettorquer_All_Currents();

    /// @}
    /// @name Controllers
    /// The units of gains, intervals and targets are the unit's own. The axis is not checked.
    /// @{

    /// PID controller that holds an angular velocity about one axis.
    void Set_SingleAxis_AngularVelocity_Controller_Parameters(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis,
                                                              VELM_ZAVRA_API_PID_CONTROLLER_PARAMETERS parameters);
    VELM_ZAVRA_API_PID_CONTROLLER_PARAMETERS
    Get_SingleAxis_AngularVelocity_Controller_Parameters(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis);
    /// @param target  angular velocity set-point
    void Start_SingleAxis_AngularVelocity_Controller(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis, float target);
    /// Stops the controller of one axis, as its counterpart for the angle step does.
    void Stop_SingleAxis_AngularVelocity_Controller(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis);

    /// Cascaded PID controller that turns about one axis by an angle.
    /// @param parameters  k_d_out is not sent: the unit receives zero
    void Set_SingleAxis_AngleStep_Controller_Parameters(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis,
                                                        VELM_ZAVRA_API_CASCADED_PID_CONTROLLER_PARAMETERS parameters);
    /// @return only k_p_in and k_p_out come from the unit; everything else is zero
    VELM_ZAVRA_API_CASCADED_PID_CONTROLLER_PARAMETERS
    Get_SingleAxis_AngleStep_Controller_Parameters(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis);
    /// @param target  angle step
    void Start_SingleAxis_AngleStep_Controller(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis, float target);
    void Stop_SingleAxis_AngleStep_Controller(VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS axis);

    /// B-dot controller, max variant.
    void Set_ThreeAxis_BDot_Controller_Max_Parameters(VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS parameters);
    VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS Get_ThreeAxis_BDot_Controller_Max_Parameters();
    /// B-dot controller, proportional variant.
    void Set_ThreeAxis_BDot_Controller_Proportional_Parameters(VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS parameters);
    VELM_ZAVRA_API_BDOT_CONTROLLER_PARAMETERS Get_ThreeAxis_BDot_Controller_Proportional_Parameters();
    void Set_ThreeAxis_SunPointing_Controller_Parameters(VELM_ZAVRA_API_SUN_POINTING_CONTROLLER_PARAMETERS parameters);
    VELM_ZAVRA_API_SUN_POINTING_CONTROLLER_PARAMETERS Get_ThreeAxis_SunPointing_Controller_Parameters();
    void Set_ThreeAxis_Sliding_Controller_Parameters(VELM_ZAVRA_API_SLIDING_CONTROLLER_PARAMETERS parameters);
    VELM_ZAVRA_API_SLIDING_CONTROLLER_PARAMETERS Get_ThreeAxis_Sliding_Controller_Parameters();

    /// @}
    /// @name Operation modes, target pointing and Kalman filter
    /// A mode that is started ends the one before it. The unit has one stop for every mode: any stop operation ends
    /// whichever mode is running.
    /// @{

    void Set_Operation_Mode_Idle();
    void Set_Operation_Mode_Safe();
    void Set_Operation_Mode_Measurement();

    /// @throws VELM_ZAVRA_API_Exception when the start time is later than the stop time; nothing is sent then
    void Start_Operation_Mode_Detumbling(VELM_ZAVRA_API_DETUMBLING_MODE_PARAMETERS parameters);
    void Stop_Operation_Mode_Detumbling();

    /// @throws VELM_ZAVRA_API_Exception when the start time is later than the stop time; nothing is sent then
    void Start_Operation_Mode_Sun_Pointing(VELM_ZAVRA_API_SUN_POINTING_MODE_PARAMETERS parameters);
    void Stop_Operation_Mode_Sun_Pointing();

    /// Points at a spot that moves over the Earth.
    /// @throws VELM_ZAVRA_API_Exception when the start time is later than the stop time, or a latitude is not within
    ///         +-pi/2, or a longitude not within +-pi; nothing is sent then. Angles are compared in double precision,
    ///         so that the floats nearest to pi/2 and pi, which are larger, are out. NaN is not detected.
    void Start_Target_Pointing_Earth_Const_Velocity_Mode(
        VELM_ZAVRA_API_TARGET_POINTING_CONST_VELOCITY_MODE_PARAMETERS parameters);
    void Stop_Target_Pointing_Earth_Const_Velocity_Mode();

    /// Points at a spot that stays where it is on the Earth.
    /// @throws VELM_ZAVRA_API_Exception when the latitude is not within +-pi/2, or the longitude not within +-pi, as
    ///         for the moving spot; nothing is sent then
    void Start_Target_Pointing_Earth_Fix_Mode(VELM_ZAVRA_API_TARGET_POINTING_FIXED_MODE_PARAMETERS parameters);
    void Stop_Target_Pointing_Earth_Fix_Mode();

    /// Points straight down. The parameters are not checked.
    void Start_Target_Pointing_Nadir_Mode(VELM_ZAVRA_API_TARGET_POINTING_NADIR_MODE_PARAMETERS parameters);
    void Stop_Target_Pointing_Nadir_Mode();

    /// Points in a fixed inertial direction. The parameters are not checked, the times neither.
    void Start_Target_Pointing_Inertial_Mode(VELM_ZAVRA_API_TARGET_POINTING_INERTIAL_MODE_PARAMETERS parameters);
    void Stop_Target_Pointing_Inertial_Mode();

    /// @return the target that was started last
    VELM_ZAVRA_API_TARGET_POINTING_TARGET_PARAMETERS_TELEMETRY Get_Target_Pointing_Target_Parameters_Telemetry();
    /// @return the parameters that target pointing works with
    VELM_ZAVRA_API_TARGET_POINTING_OPERATION_PARAMETERS_TELEMETRY Get_Target_Pointing_Operation_Parameters_Telemetry();
    /// @return how far target pointing has come
    VELM_ZAVRA_API_TARGET_POINTING_OPERATION_DATA_TELEMETRY Get_Target_Pointing_Operation_Data_Telemetry();
    void Set_Target_Pointing_Operation_Parameters(VELM_ZAVRA_API_TARGET_POINTING_OPERATION_PARAMETERS parameters);

    void Set_Kalman_Filter_Parameters(VELM_ZAVRA_API_KALMAN_FILTER_PARAMETERS parameters);
    VELM_ZAVRA_API_KALMAN_FILTER_PARAMETERS Get_Kalman_Filter_Parameters();

    /// @}

private:
    ZAVRA_100* device_;
};
