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

template <class Exception>
void expect_failure(const std::string& start, void (*action)())
{
    try {
        action();
        expect(false, start.c_str());
    } catch (const Exception& error) {
        expect(std::string(error.what()).compare(0, start.size(), start) == 0, error.what());
    }
}

void meet_no_unit()
{
    ::setenv("VELM_I2C_BUS_DIR", "/nowhere", 1);
    const std::string no_device = "Failed to instantiate ZAVRA I2C Device (";
    expect_failure<VELM_ZAVRA_API_Exception>("Failed to instantiate ZAVRA API (" + no_device, [] { VELM_ZAVRA_API(); });
    expect_failure<ZAVRA_100_Exception>(no_device, [] { ZAVRA_100(10, "i2c-0"); });
    expect_failure<VELM_I2C_DEV_Exception>("Cannot connect to address 10", [] { VELM_I2C_DEV().Connect(10, "i2c-0"); });
}

}

int main()
{
    talk_to_the_unit();
    meet_no_unit();
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
