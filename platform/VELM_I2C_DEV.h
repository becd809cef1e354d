#pragma once

#include <exception>
#include <memory>
#include <string>
#include <utility>

/// Failure of a bus or of a transfer: what was tried, and what the system said.
class VELM_I2C_DEV_Exception : public std::exception
{
public:
    explicit VELM_I2C_DEV_Exception(std::string message) : message_(std::move(message)) {}
    const char* what() const noexcept override { return message_.c_str(); }

private:
    std::string message_;
};

/// One device on one I2C bus. Every failure is thrown as VELM_I2C_DEV_Exception. An object must not be used by two
/// threads at once; separate objects are independent.
class VELM_I2C_DEV
{
public:
    VELM_I2C_DEV();

    /// Closes the connection, if there is one.
    virtual ~VELM_I2C_DEV();

    VELM_I2C_DEV(const VELM_I2C_DEV&) = delete;
    VELM_I2C_DEV& operator=(const VELM_I2C_DEV&) = delete;

    /// Opens a bus for transfers with one device; nothing is sent to the device.
    /// @param address          7-bit slave address, 0x00 to 0x7F
    /// @param bus_device_name  name of the bus without a directory, for example "i2c-0"
    /// @throws VELM_I2C_DEV_Exception when the object is connected already, the address or the name is not valid, or
    ///         the bus cannot be opened; the object stays as it was
    void Connect(unsigned int address, std::string bus_device_name);

    /// Closes the connection.
    /// @throws VELM_I2C_DEV_Exception when there is none
    void Disconnect();

    /// Writes bytes to the device in one transaction.
    /// @param length  number of bytes, 1 to 65535
    /// @throws VELM_I2C_DEV_Exception when not every byte was written and acknowledged
    void I2CWriteByteArray(unsigned char* data, int length);

    /// Reads bytes from the device in one transaction.
    /// @param data    receives the bytes; its content is undefined when the call throws
    /// @param length  number of bytes, 1 to 65535
    /// @throws VELM_I2C_DEV_Exception when not every byte was read
    void I2CReadByteArray(unsigned char* data, int length);

    /// Sets the text that PrintInfo shows for the device.
    void SetDeviceDescription(std::string description);

    /// Prints bus, address and description to standard output, connected or not.
    void PrintInfo();

private:
    struct Private;
    std::unique_ptr<Private> private_;
};
