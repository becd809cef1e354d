// Registers by name: damage a request on its way, see the unit report it, clear the report; put a word together.
// Usage: registers [MAP]    MAP is a register map; without one, flags have the names that the library knows itself.

#include <VELM_ZAVRA_API.h>
#include <VELM_ZAVRA_REGISTER_MAP.h>

#include <VELM_I2C_DEV.h>

#include <chrono>
#include <cstdio>
#include <exception>
#include <iostream>
#include <thread>

namespace
{

void show(const VELM_ZAVRA_API_REGISTER& reading)
{
    std::printf("  %-18s 0x%08x", reading.name.c_str(), reading.value);
    for (const VELM_ZAVRA_API_REGISTER_FLAG& flag : reading.flags)
        if (flag.state)
            std::printf("  %s", flag.name.c_str());
    std::printf("\n");
}

void send_a_request_with_a_wrong_crc()
{
    unsigned char get_standard_telemetry[] = {0x02, 0x21, 0x00, 0x00, 0xFF};
    VELM_I2C_DEV bus;
    bus.Connect(10, "i2c-0");
    bus.I2CWriteByteArray(get_standard_telemetry, sizeof get_standard_telemetry);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
}

}

int main(int argc, char** argv)
try {
    const VELM_ZAVRA_REGISTER_MAP map = argc > 1 ? VELM_ZAVRA_REGISTER_MAP(argv[1]) : VELM_ZAVRA_REGISTER_MAP();
    VELM_ZAVRA_API api;

    std::printf("\nAll registers, from one reading\n");
    for (const VELM_ZAVRA_API_REGISTER& reading : api.Get_All_Registers().registers)
        show(map.Decode(reading));

    std::printf("\nAfter a request with a wrong CRC\n");
    send_a_request_with_a_wrong_crc();
    show(map.Decode(api.Get_System_Error_Register()));
    const bool reported = api.Check_Command_Errors() != 0;

    std::printf("\nCleared\n");
    api.Clear_System_Error_Register();
    show(map.Decode(api.Get_System_Error_Register()));
    const bool cleared = api.Check_Command_Errors() == 0;

    if (!reported || !cleared) {
        std::cerr << "The unit did not report the error, or did not clear it" << std::endl;
        return 1;
    }

    // A unit whose documentation names these bits has the names in its map; bit_NN always does.
    std::printf("\nPut together, sent and read back\n");
    const VELM_ZAVRA_API_REGISTERS hil = VELM_ZAVRA_API_HIL_CONFIGURATION;
    api.Set_HIL_Configuration(map.Encode(hil, {"bit_00", "bit_04"}));
    const VELM_ZAVRA_API_REGISTER read = map.Decode(hil, api.Get_HIL_Configuration());
    show(read);
    if (!map.Is_Set(read, "bit_04") || map.Is_Set(read, "bit_01")) {
        std::cerr << "The unit has another word than was sent" << std::endl;
        return 1;
    }
    api.Set_HIL_Configuration(read.value & ~map.Encode(hil, {"bit_04"}));
    show(map.Decode(hil, api.Get_HIL_Configuration()));
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
}
