#include <VELM_I2C_DEV.h>

#include "bus.h"
#include "environment.h"
#include "reservation.h"

#include <cerrno>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <locale>
#include <optional>
#include <sstream>
#include <system_error>

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

using namespace zavra::platform;

void zavra::platform::fail(int error)
{
    const std::string text = std::generic_category().message(error);
    const bool nak = error == ENXIO || error == EREMOTEIO;
    fail(error, nak ? "not acknowledged: " + text : text);
}

void zavra::platform::fail(int error, const std::string& reason)
{
    try {
        throw std::system_error(error, std::generic_category());
    } catch (const std::system_error&) {
        std::throw_with_nested(VELM_I2C_DEV_Exception(reason));
    }
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

/// What a person can do about a bus that is not there or not theirs.
std::string advice(const std::string& path)
{
    if (::access(path.c_str(), R_OK | W_OK) == 0) {
        return "";
    }
    if (errno == EACCES) {
        return ": join the group that may use it, with sudo usermod -aG i2c USER and a new login";
    }
    if (errno != ENOENT) {
        return "";
    }
    return path.starts_with("/dev/") ? ": buses are there when the driver is loaded, with modprobe i2c-dev"
                                     : ": zavra-sim makes simulated buses";
}

/// The file over which programs take turns at a device: beside a simulated bus, and for a bus of the kernel where the
/// computer's locks are, so that it is the same whatever the bus is called.
std::string reservation_file(const std::string& path, unsigned int address)
{
    std::string place = path;
    struct stat file;
    if (::stat(path.c_str(), &file) == 0 && S_ISCHR(file.st_mode)) {
        place = "/run/lock/velm-i2c-" + std::to_string(major(file.st_rdev)) + '-' + std::to_string(minor(file.st_rdev));
    } else {
        const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
        if (real) {
            place = real.get();
        }
    }
    return place + '.' + std::to_string(address) + ".lock";
}

}

struct VELM_I2C_DEV::Private
{
    std::unique_ptr<Bus> bus;
    std::optional<Reservation> reservation;
    std::string path;
    unsigned int address = 0;
    std::string description;

    std::string device() const { return "address " + describe(address) + " on " + path; }

    /// Runs one transaction; the reason of a failure is completed with what was tried.
    template <class Transaction>
    void transfer(const char* verb, const char* preposition, const unsigned char* data, int length,
                  Transaction transaction) const
    {
        const auto failed = [&](const std::string& circumstance, const char* reason) {
            std::ostringstream text;
            text << "Cannot " << verb << ' ' << std::to_string(length) << " bytes ";
            if (bus) {
                text << preposition << ' ' << device() << circumstance << ' ';
            }
            text << '(' << reason << ')';
            std::throw_with_nested(VELM_I2C_DEV_Exception(text.str()));
        };
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
        } catch (const In_Use& other) {
            failed(", reserved by process " + std::to_string(other.process), "in use by another program");
        } catch (const VELM_I2C_DEV_Exception& reason) {
            failed("", reason.what());
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
        private_->reservation.emplace(reservation_file(path, address));
        private_->path = std::move(path);
        private_->address = address;
    } catch (const VELM_I2C_DEV_Exception& reason) {
        std::throw_with_nested(VELM_I2C_DEV_Exception("Cannot connect to address " + describe(address) + " on " + path +
                                                      " (" + reason.what() + ")" + advice(path)));
    }
}

void VELM_I2C_DEV::Disconnect()
{
    if (!private_->bus) {
        throw VELM_I2C_DEV_Exception("Cannot disconnect (not connected)");
    }
    private_->bus.reset();
    private_->reservation.reset();
}

void VELM_I2C_DEV::I2CWriteByteArray(unsigned char* data, int length)
{
    private_->transfer("write", "to", data, length, [&] {
        private_->reservation->write([&] { private_->bus->write({data, static_cast<std::size_t>(length)}); });
    });
}

void VELM_I2C_DEV::I2CReadByteArray(unsigned char* data, int length)
{
    private_->transfer("read", "from", data, length, [&] {
        private_->reservation->read([&] { private_->bus->read({data, static_cast<std::size_t>(length)}); });
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
