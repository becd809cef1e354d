#include <VELM_I2C_DEV.h>

#include "bus.h"
#include "environment.h"

#include <cerrno>
#include <iostream>
#include <locale>
#include <sstream>
#include <system_error>

#include <sys/stat.h>

using namespace zavra::platform;

void zavra::platform::fail(int error)
{
    const std::string text = std::generic_category().message(error);
    const bool nak = error == ENXIO || error == EREMOTEIO;
    throw VELM_I2C_DEV_Exception(nak ? "not acknowledged: " + text : text);
}

namespace
{

std::string describe(unsigned int address)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << address << " (0x" << std::hex << std::uppercase << address << ")";
    return text.str();
}

std::unique_ptr<Bus> open_bus(const std::string& path, unsigned int address)
{
    struct stat file;
    if (::stat(path.c_str(), &file) < 0) {
        fail(errno);
    }
    if (S_ISCHR(file.st_mode)) {
        return open_i2c_dev_bus(path, address);
    }
    if constexpr (VELM_SIMULATED_BUS) {
        if (S_ISSOCK(file.st_mode)) {
            return open_simulated_bus(path, address);
        }
    }
    throw VELM_I2C_DEV_Exception("not an I2C bus");
}

}

struct VELM_I2C_DEV::Private
{
    std::unique_ptr<Bus> bus;
    std::string path;
    unsigned int address = 0;
    std::string description;

    std::string device() const { return "address " + describe(address) + " on " + path; }

    /// Runs one transaction; the reason of a failure is completed with what was tried.
    template <class Transaction>
    void transfer(const char* verb, const char* preposition, const unsigned char* data, int length,
                  Transaction transaction) const
    {
        try {
            if (!bus) {
                throw VELM_I2C_DEV_Exception("not connected");
            }
            if (data == nullptr) {
                throw VELM_I2C_DEV_Exception("data is null");
            }
            if (length < 1 || length > 0xFFFF) {
                throw VELM_I2C_DEV_Exception("length exceeds limits");
            }
            transaction();
        } catch (const VELM_I2C_DEV_Exception& reason) {
            std::ostringstream text;
            text << "Cannot " << verb << ' ' << std::to_string(length) << " bytes ";
            if (bus) {
                text << preposition << ' ' << device() << ' ';
            }
            text << '(' << reason.what() << ')';
            throw VELM_I2C_DEV_Exception(text.str());
        }
    }
};

VELM_I2C_DEV::VELM_I2C_DEV() : private_(std::make_unique<Private>()) {}

VELM_I2C_DEV::~VELM_I2C_DEV() = default;

void VELM_I2C_DEV::Connect(unsigned int address, std::string bus_device_name)
{
    std::string path = setting("VELM_I2C_BUS_DIR", "/dev") + ("/" + bus_device_name);
    try {
        if (private_->bus) {
            throw VELM_I2C_DEV_Exception("already connected to " + private_->device());
        }
        if (address > 0x7F) {
            throw VELM_I2C_DEV_Exception("an address has 7 bits");
        }
        if (bus_device_name.empty() || bus_device_name.find('/') != std::string::npos) {
            throw VELM_I2C_DEV_Exception("a bus is named without its directory, for example \"i2c-0\"");
        }
        private_->bus = open_bus(path, address);
        private_->path = std::move(path);
        private_->address = address;
    } catch (const VELM_I2C_DEV_Exception& reason) {
        throw VELM_I2C_DEV_Exception("Cannot connect to address " + describe(address) + " on " + path + " (" +
                                     reason.what() + ")");
    }
}

void VELM_I2C_DEV::Disconnect()
{
    if (!private_->bus) {
        throw VELM_I2C_DEV_Exception("Cannot disconnect (not connected)");
    }
    private_->bus.reset();
}

void VELM_I2C_DEV::I2CWriteByteArray(unsigned char* data, int length)
{
    private_->transfer("write", "to", data, length, [&] {
        private_->bus->write({data, static_cast<std::size_t>(length)});
    });
}

void VELM_I2C_DEV::I2CReadByteArray(unsigned char* data, int length)
{
    private_->transfer("read", "from", data, length, [&] {
        private_->bus->read({data, static_cast<std::size_t>(length)});
    });
}

void VELM_I2C_DEV::SetDeviceDescription(std::string description)
{
    private_->description = std::move(description);
}

void VELM_I2C_DEV::PrintInfo()
{
    const bool connected = private_->bus != nullptr;
    std::cout << "Bus:         " + (connected ? private_->path : "not connected") + "\n" +
                     "Address:     " + (connected ? describe(private_->address) : "none") + "\n" +
                     "Description: " + private_->description + "\n"
              << std::flush;
}
