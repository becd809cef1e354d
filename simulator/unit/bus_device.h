#pragma once

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

}
