#pragma once

#include <span>

namespace zavra
{

/// Something that answers I2C transactions at one address. Both calls return 0 or the errno that the Linux i2c-dev
/// driver would give, ENXIO for a transaction that is not acknowledged.
class Bus_Device
{
public:
    virtual ~Bus_Device() = default;
    virtual int write(std::span<const unsigned char> bytes) = 0;
    virtual int read(std::span<unsigned char> bytes) = 0;
};

}
