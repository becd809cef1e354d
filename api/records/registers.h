#pragma once

#include <string>

/// @file
/// The unit's registers as named flags. What a bit means is the unit's own, but for bits 0 and 1 of the system error
/// register, which report command errors; VELM_ZAVRA_REGISTER_MAP gives the others the names that a unit documents.

/// The registers of the standard telemetry, and behind them the configuration words that have commands of their own.
enum VELM_ZAVRA_API_REGISTERS : unsigned int {
    VELM_ZAVRA_API_LIVELYHOOD_REGISTER = 0,
    VELM_ZAVRA_API_SYSTEM_STATUS_REGISTER = 1,
    VELM_ZAVRA_API_SYSTEM_SCHEDULER_REGISTER = 2,
    VELM_ZAVRA_API_SYSTEM_ERROR_REGISTER = 3,
    VELM_ZAVRA_API_SENSORS_ERROR_REGISTER = 4,
    VELM_ZAVRA_API_ACTUATORS_ERROR_REGISTER = 5,
    VELM_ZAVRA_API_SAT_MAIN_REGISTER = 6,
    VELM_ZAVRA_API_SAT_ERROR_REGISTER = 7,
    VELM_ZAVRA_API_SAT_SCHEDULER_REGISTER = 8,
    VELM_ZAVRA_API_DCDC_CONFIGURATION = 9,
    VELM_ZAVRA_API_HIL_CONFIGURATION = 10
};

/// One bit of a register.
struct VELM_ZAVRA_API_REGISTER_FLAG
{
    std::string name; ///< from the register map; "bit_NN" where that has none
    bool state;
};

/// One reading of one register.
struct VELM_ZAVRA_API_REGISTER
{
    VELM_ZAVRA_API_REGISTERS which;
    std::string name; ///< the register's section in a register map, for example "system_error"
    unsigned int value;
    VELM_ZAVRA_API_REGISTER_FLAG flags[32]; ///< flags[i] is bit i, counted from the least significant
};

/// The registers of the satellite as the unit keeps them, from one reading.
struct VELM_ZAVRA_API_SATELLITE_REGISTERS
{
    VELM_ZAVRA_API_REGISTER main;
    VELM_ZAVRA_API_REGISTER error;
    VELM_ZAVRA_API_REGISTER scheduler;
};

/// All registers of the standard telemetry from one reading.
struct VELM_ZAVRA_API_ALL_REGISTERS
{
    VELM_ZAVRA_API_REGISTER registers[9]; ///< indexed by VELM_ZAVRA_API_REGISTERS up to the ninth
};
