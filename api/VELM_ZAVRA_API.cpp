#include "VELM_ZAVRA_API.h"

#include "../device/ZAVRA_100.h"
#include "../device/debug.h"
#include "call.h"
#include "identification.h"

#include <iostream>
#include <memory>
#include <string>
#include <typeinfo>
#include <utility>

using namespace zavra;

namespace
{

constexpr unsigned int i2c_address = 10;
constexpr const char* i2c_device_name = "i2c-0";
constexpr const char* configuration_directory = "/etc/velm_api_config/";
constexpr const char* configuration_file = "velm_zavra_dev_init.ini";

void print_name_and_version()
{
    std::cout << library_name << std::endl << library_version << std::endl;
}

}

VELM_ZAVRA_API_Exception::VELM_ZAVRA_API_Exception(std::string message) : message_(std::move(message)) {}

VELM_ZAVRA_API_Exception::~VELM_ZAVRA_API_Exception() noexcept = default;

const char* VELM_ZAVRA_API_Exception::what() const noexcept
{
    return message_.c_str();
}

VELM_ZAVRA_API::VELM_ZAVRA_API()
    : VELM_ZAVRA_API(i2c_address, i2c_device_name, std::string(configuration_directory) + configuration_file)
{
}

VELM_ZAVRA_API::VELM_ZAVRA_API(unsigned int address, std::string bus_device_name, std::string ini_file,
                               bool print_banner)
    : device_(nullptr)
{
    debug_line(constructors, " --> ", typeid(this).name(), " constructor: ");
    if (print_banner) {
        print_name_and_version();
        std::cout << "VELM_ZAVRA_API: Instantiate ZAVRA module" << std::endl;
    }

    // Holds the device until construction is complete: no destructor runs for an object whose constructor fails.
    auto device =
        operation("instantiate ZAVRA API", [&] { return std::make_unique<ZAVRA_100>(address, bus_device_name); });
    device_ = device.get();
    if (!ini_file.empty())
        translate<VELM_ZAVRA_API_Exception, VELM_ZAVRA_API_Exception>("Initialize ZAVRA-100 Device from INI file",
                                                                      [&] { Initialize_Device(ini_file); });
    device_ = device.release();
}

VELM_ZAVRA_API::~VELM_ZAVRA_API()
{
    delete device_;
    debug_line(destructors, " <-- ", typeid(this).name(), " destructor: ");
}

void VELM_ZAVRA_API::Print_Info()
{
    const std::string rule(73, '-');
    std::cout << rule << std::endl;
    print_name_and_version();
    std::cout << library_credit << std::endl << rule << std::endl;
    device_->PrintDeviceInfo();
}

float VELM_ZAVRA_API::rpm_to_radps(float rpm)
{
    const float twice = rpm + rpm;
    return static_cast<float>(static_cast<double>(twice) * 3.141592653589793 / 60.0);
}

float VELM_ZAVRA_API::radps_to_rpm(float radps)
{
    const float radians_per_minute = radps * 60.0F;
    return static_cast<float>(static_cast<double>(radians_per_minute) / 6.283185307179586);
}
