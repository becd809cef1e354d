#pragma once

#include <memory>
#include <span>
#include <string>

/// How a device on a bus is reached.
namespace zavra::platform
{

class Bus
{
public:
    virtual ~Bus() = default;

    /// Both throw VELM_I2C_DEV_Exception, whose message is the bare reason, unless every byte was transferred.
    virtual void write(std::span<const unsigned char> data) = 0;
    virtual void read(std::span<unsigned char> data) = 0;
};

std::unique_ptr<Bus> open_i2c_dev_bus(const std::string& path, unsigned int address);
std::unique_ptr<Bus> open_simulated_bus(const std::string& path, unsigned int address);

/// Throws the reason that an errno value stands for; the value is nested inside.
[[noreturn]] void fail(int error);
[[noreturn]] void fail(int error, const std::string& reason);

}
