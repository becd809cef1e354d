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

    /// @}
    /// @name Telemetry frames
    /// @{

    /// @}
    /// @name Registers
    /// @{

    /// @}
    /// @name Sensors
    /// @{

    /// @}
    /// @name Star tracker and orbit module
    /// @{

    /// @}
    /// @name Actuators
    /// Nothing is converted: speeds are in rad/s, not rpm. A value outside the enumeration is refused in the speed and
    /// idle mode operations and reaches the unit unchanged in the others.
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
    /// The units of gains, intervals and targets are the unit's own. The axis reaches the unit unchanged, whatever its
    /// value.
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
    /// @{

    /// @}

private:
    ZAVRA_100* device_;
};
