#pragma once

#include "../api/records/registers.h"
#include "records/telemetry.h"

#include <iterator>
#include <type_traits>

namespace zavra
{

inline constexpr unsigned int bits_per_register = 32;

/// A register: its section in a register map, and its word in the standard telemetry.
struct Register_Source
{
    const char* section;
    unsigned int ZAVRA_100_Standard_Telemetry::*word;
};

/// Indexed by VELM_ZAVRA_API_REGISTERS.
inline constexpr Register_Source register_sources[] = {
    {"livelyhood", &ZAVRA_100_Standard_Telemetry::livelyhood_register},
    {"system_status", &ZAVRA_100_Standard_Telemetry::system_status_register},
    {"system_scheduler", &ZAVRA_100_Standard_Telemetry::system_scheduler_register},
    {"system_error", &ZAVRA_100_Standard_Telemetry::system_error_register},
    {"sensors_error", &ZAVRA_100_Standard_Telemetry::sensors_error_register},
    {"actuators_error", &ZAVRA_100_Standard_Telemetry::actuators_error_register},
    {"sat_main", &ZAVRA_100_Standard_Telemetry::sat_main_register},
    {"sat_error", &ZAVRA_100_Standard_Telemetry::sat_error_register},
    {"sat_scheduler", &ZAVRA_100_Standard_Telemetry::sat_scheduler_register},
};

/// The words that are set with commands of their own, numbered on from there.
inline constexpr const char* configuration_sections[] = {"dcdc_configuration", "hil_configuration"};

inline constexpr unsigned int number_of_registers = std::size(register_sources) + std::size(configuration_sections);

/// The name of a register's section in a register map.
constexpr const char* register_section(unsigned int which)
{
    constexpr unsigned int in_telemetry = std::size(register_sources);
    return which < in_telemetry ? register_sources[which].section : configuration_sections[which - in_telemetry];
}

static_assert(std::size(register_sources) == std::extent_v<decltype(VELM_ZAVRA_API_ALL_REGISTERS::registers)>);

}
