#pragma once

#include <chrono>

/// @file
/// What the protocol, the unit or the library fixes.

namespace velm_zavra
{

// Where VELM_ZAVRA_API() finds its unit and its configuration.
constexpr unsigned int default_address = 10;
constexpr const char* default_bus = "i2c-0";
constexpr const char* default_ini_file = "/etc/velm_api_config/velm_zavra_dev_init.ini";

constexpr unsigned int number_of_gyroscopes = 3;
constexpr unsigned int number_of_magnetometers = 1;
constexpr unsigned int number_of_reactionwheels = 6;
constexpr unsigned int gyroscope_ini_keys = 29;
constexpr unsigned int magnetometer_ini_keys = 30;

constexpr unsigned int bits_per_register = 32;
constexpr unsigned int command_error_flags = 0x00000003; ///< of the system error register: Check_Command_Errors()

constexpr unsigned int max_startracker_events = 23;
constexpr unsigned int whole_startracker_events = 5; ///< events that Get_Startracker_Event_List() passes on whole
constexpr unsigned int tle_line_length = 69;
constexpr unsigned int inertial_mode_degree = 6; ///< the only degree that the inertial mode knows

constexpr unsigned int max_payload_bytes = 512;
constexpr unsigned int max_native_reply_bytes = 256;
constexpr unsigned int max_attempts = 10;                ///< at a reading, when replies arrive damaged
constexpr std::chrono::milliseconds execution_wait(100); ///< after each request
constexpr std::chrono::milliseconds retry_wait(300);     ///< after each damaged reply

}
