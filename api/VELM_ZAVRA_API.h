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
