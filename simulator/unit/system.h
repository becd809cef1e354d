#pragma once

#include "command_table.h"
#include "unit_time.h"

namespace zavra::simulator
{

/// The simulated unit's clock commands, registers and counters.
class System
{
public:
    /// Meaning of the system error register's bits on the simulated unit.
    enum Error_Bit : unsigned int {
        bad_request_crc = 1U << 0U,
        unknown_command_or_wrong_length = 1U << 1U,
        refused_command = 1U << 2U,
    };

    struct Settings
    {
        unsigned int dcdc_configuration = 0;
        unsigned int scheduler_register = 0;
        unsigned int hil_configuration = 0;
        unsigned char active_gyroscope = 0;
        unsigned char active_magnetometer = 0;
        unsigned long long temperature_update_interval_msec = 1000;
        unsigned long long power_update_interval_msec = 1000;
    };

    struct Counters
    {
        unsigned int received_commands = 0;
        unsigned int failed_commands = 0;
    };

    System(Command_Table& commands, Unit_Time& time);

    /// Notes a request that failed.
    void report(Error_Bit error);
    void reset();

    Settings settings;
    Counters counters;
    unsigned int error_register = 0;
};

}
