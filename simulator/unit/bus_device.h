#pragma once

#include <cerrno>
#include <map>
#include <span>
#include <vector>

namespace zavra::simulator
{

/// Something that answers I2C transactions at one address. Both calls return 0 or the errno that the Linux i2c-dev
/// driver would give, ENXIO for a transaction that is not acknowledged.
class Bus_Device
{
public:
    virtual ~Bus_Device() = default;
    virtual int write(std::span<const unsigned char> bytes) = 0;
    /// Fills `bytes`; a device that gives fewer than are wanted makes it shorter.
    virtual int read(std::vector<unsigned char>& bytes) = 0;
};

/// By their addresses.
using Bus_Devices = std::map<unsigned int, Bus_Device*>;

/// One transaction with the device at an address, as above; where there is none, nothing is acknowledged.
inline int transfer(const Bus_Devices& devices, unsigned int address, bool is_read, std::vector<unsigned char>& bytes)
{
    const auto device = devices.find(address);
    if (device == devices.end())
        return ENXIO;
    return is_read ? device->second->read(bytes) : device->second->write(bytes);
}

}
