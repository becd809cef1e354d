#include "bus.h"
#include "file_descriptor.h"

#include <VELM_I2C_DEV.h>

#include <string>

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <sys/ioctl.h>

namespace zavra::platform
{

namespace
{

void check(ssize_t transferred, std::size_t length)
{
    if (transferred < 0) {
        fail(errno);
    }
    if (static_cast<std::size_t>(transferred) != length) {
        throw VELM_I2C_DEV_Exception("only " + std::to_string(transferred) + " bytes were transferred");
    }
}

/// A bus of the kernel's i2c-dev driver: each write() or read() is one transaction.
class I2c_Dev_Bus final : public Bus
{
public:
    I2c_Dev_Bus(const std::string& path, unsigned int address)
        : device_(uninterrupted([&] { return ::open(path.c_str(), O_RDWR | O_CLOEXEC); }))
    {
        if (!device_ || ::ioctl(device_.get(), I2C_SLAVE, static_cast<unsigned long>(address)) < 0) {
            fail(errno);
        }
    }

    void write(std::span<const unsigned char> data) override
    {
        check(uninterrupted([&] { return ::write(device_.get(), data.data(), data.size()); }), data.size());
    }

    void read(std::span<unsigned char> data) override
    {
        check(uninterrupted([&] { return ::read(device_.get(), data.data(), data.size()); }), data.size());
    }

private:
    File_Descriptor device_;
};

}

std::unique_ptr<Bus> open_i2c_dev_bus(const std::string& path, unsigned int address)
{
    return std::make_unique<I2c_Dev_Bus>(path, address);
}

}
