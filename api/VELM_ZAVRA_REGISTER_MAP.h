#pragma once

#include "VELM_ZAVRA_API_Exception.h"
#include "records/registers.h"

#include <string>
#include <vector>

/// @file
/// Names for the flags of the unit's registers.

/// The names that one unit's documentation gives to the bits of its registers, read from an INI file:
///
///     ; what our unit reports
///     [system_error]
///     0 = command_error_0
///     1 = command_error_1
///
/// There is one section per register of the standard telemetry: `livelyhood`, `system_status`, `system_scheduler`,
/// `system_error`, `sensors_error`, `actuators_error`, `sat_main`, `sat_error`, `sat_scheduler`; and one for each of
/// the configuration words `dcdc_configuration` and `hil_configuration`. A key is a bit number from 0 (least
/// significant) to 31, a name has letters, digits and underscores and is unique in its register. A bit that the file
/// does not list is named "bit_NN", for example "bit_07". Comments begin with ';' or '#'.
class VELM_ZAVRA_REGISTER_MAP
{
public:
    /// What is known without a file: bits 0 and 1 of the system error register are "command_error_0" and
    /// "command_error_1", every other bit is "bit_NN".
    VELM_ZAVRA_REGISTER_MAP();

    /// Reads a file, which alone decides all names.
    /// @throws VELM_ZAVRA_API_Exception when the file cannot be read or is not such a map; the message has the file
    ///         and, where there is one, the line, the section and the key
    explicit VELM_ZAVRA_REGISTER_MAP(std::string map_file);

    /// @param value  the register's word
    /// @throws VELM_ZAVRA_API_Exception when there is no such register
    VELM_ZAVRA_API_REGISTER Decode(VELM_ZAVRA_API_REGISTERS which, unsigned int value) const;

    /// Gives the flags of a reading this map's names.
    VELM_ZAVRA_API_REGISTER Decode(const VELM_ZAVRA_API_REGISTER& reading) const;

    /// Puts a register together, as in Set_HIL_Configuration(map.Encode(VELM_ZAVRA_API_HIL_CONFIGURATION, {"gyros"})).
    /// @param flags  names of the flags that are set, in any order; "bit_NN" names a bit that has another name, too
    /// @return the register's word
    /// @throws VELM_ZAVRA_API_Exception when there is no such register, or a flag is not one of it
    unsigned int Encode(VELM_ZAVRA_API_REGISTERS which, const std::vector<std::string>& flags) const;

    /// @param flag  a name as for Encode()
    /// @return whether the flag is set in a reading, whatever names that has
    /// @throws VELM_ZAVRA_API_Exception as Encode() does
    bool Is_Set(const VELM_ZAVRA_API_REGISTER& reading, const std::string& flag) const;

private:
    // Applications have objects of this size: a tenth register's names stand behind those of the first, and so on.
    std::string names_[9][32];
};
