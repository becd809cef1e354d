// An application that knows the installed library only, in C++11.

#include <VELM_ZAVRA_API.h>
#include <ZAVRA_100.h>

#include <cstdlib>
#include <iostream>
#include <string>

namespace
{

int failures = 0;

void expect(bool condition, const char* what)
{
    if (!condition) {
        ++failures;
        std::cerr << "not so: " << what << std::endl;
    }
}

bool starts_with(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

void talk_to_the_unit()
{
    VELM_ZAVRA_API api;
    expect(api.rpm_to_radps(60) > 6.28F, "60 revolutions per minute are one turn a second");

    ZAVRA_100 device(10, "i2c-0");
    device.Set_System_Scheduler_Register(0xCAFE);
    unsigned int scheduler_register = 0;
    device.Get_System_Scheduler_Register(&scheduler_register);
    expect(scheduler_register == 0xCAFE, "what was set is read");
}

void meet_no_unit()
{
    ::setenv("VELM_I2C_BUS_DIR", "/nowhere", 1);
    try {
        VELM_ZAVRA_API api;
        expect(false, "a missing bus is an error");
    } catch (const VELM_ZAVRA_API_Exception& error) {
        expect(starts_with(error.what(), "Failed to instantiate ZAVRA API (Failed to instantiate ZAVRA I2C Device ("),
               error.what());
    }
    try {
        ZAVRA_100(10, "i2c-0");
        expect(false, "a missing bus is an error of the device layer");
    } catch (const ZAVRA_100_Exception& error) {
        expect(starts_with(error.what(), "Failed to instantiate ZAVRA I2C Device ("), error.what());
    }
    try {
        VELM_I2C_DEV().Connect(10, "i2c-0");
        expect(false, "a missing bus is an error of the platform");
    } catch (const VELM_I2C_DEV_Exception& error) {
        expect(starts_with(error.what(), "Cannot connect to address 10"), error.what());
    }
}

}

int main()
{
    talk_to_the_unit();
    meet_no_unit();
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
