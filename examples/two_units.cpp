// Two units in one program, each with a bus, an address and a configuration of its own, and what their clocks differ
// by. Usage: two_units [ADDRESS_1 ADDRESS_2 [BUS [INI_FILE]]]    without them, 10 and 11 on i2c-0, left as they are

#include <VELM_ZAVRA_API.h>
#include <VELM_ZAVRA_VALUES.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

int main(int argc, char** argv)
try {
    const auto address = [&](int argument, unsigned int otherwise) {
        return argc > argument ? static_cast<unsigned int>(std::strtoul(argv[argument], nullptr, 0)) : otherwise;
    };
    const std::string bus = argc > 3 ? argv[3] : velm_zavra::default_bus;
    const std::string ini_file = argc > 4 ? argv[4] : "";
    VELM_ZAVRA_API one(address(1, 10), bus, ini_file, false);
    VELM_ZAVRA_API other(address(2, 11), bus, ini_file, false);

    one.Set_Epoch_Time(velm_zavra::to_msec(velm_zavra::now()));
    other.Set_Epoch_Time(velm_zavra::to_msec(velm_zavra::now() + std::chrono::hours(1)));
    const VELM_ZAVRA_API_INFO_TELEMETRY info = one.Get_Info_Frame();
    std::cout << "\nTwo units\n  " << info << std::endl;
    std::cout << "  the other says " << (other.Get_Info_Frame() == info ? "the same" : "something else") << std::endl;
    const velm_zavra::Epoch by_one = velm_zavra::epoch(one.Get_Epoch_Time());
    const auto ahead = velm_zavra::epoch(other.Get_Epoch_Time()) - by_one;
    std::cout << "  its clock is ahead by " << std::chrono::duration_cast<std::chrono::minutes>(ahead).count() << " min"
              << std::endl;
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
}
