// An application's first contact with the unit: construct the API object, read what the unit says of itself, set its
// clock.

#include <VELM_ZAVRA_API.h>
#include <VELM_ZAVRA_VALUES.h>

#include <cstdio>
#include <exception>
#include <iostream>

namespace
{

void show(const VELM_ZAVRA_API_INFO_TELEMETRY& info)
{
    std::printf("\nInfo frame\n");
    std::printf("  device               %s, serial number %u\n", info.device_name, info.device_serial_number);
    std::printf("  software             %u.%u.%u, built %s\n", unsigned{info.sw_version_major},
                unsigned{info.sw_version_minor}, unsigned{info.sw_version_patch}, info.build_timestamp);
    std::printf("  compiler             %s %s\n", info.compiler_name, info.compiler_version);
    std::printf("  low-level software   %s\n", info.low_level_sw_version);
}

void show(const VELM_ZAVRA_API_STANDARD_TELEMETRY& telemetry)
{
    std::printf("\nStandard telemetry\n");
    std::printf("  system time          %llu ms since reset\n", telemetry.system_time_msec);
    std::printf("  epoch time           %llu ms since 01.01.1970 0:00:00 UTC\n", telemetry.epoch_time_msec);
    std::printf("  system error         0x%08x\n", telemetry.system_error_register);
    std::printf("  commands received    %u, failed %u\n", telemetry.number_of_received_commands,
                telemetry.number_of_failed_commands);
}

}

int main()
try {
    VELM_ZAVRA_API api;
    show(api.Get_Info_Frame());
    show(api.Get_Standard_Telemetry());

    const unsigned long long set = velm_zavra::to_msec(velm_zavra::now());
    api.Set_Epoch_Time(set);
    const unsigned long long read = api.Get_Epoch_Time();
    std::printf("\nEpoch time set to %llu ms, read back %llu ms\n", set, read);
    if (read < set || read - set > 1000) {
        std::cerr << "The unit's clock was not set" << std::endl;
        return 1;
    }
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
}
