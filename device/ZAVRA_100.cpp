#include "ZAVRA_100.h"

#include "../protocol/codec.h"
#include "../protocol/crc8.h"
#include "debug.h"
#include "failure.h"

#include <typeinfo>
#include <utility>

static_assert(sizeof(ZAVRA_100) == sizeof(VELM_I2C_DEV) + 256, "the CRC table is the device object's only member");

using namespace zavra;

namespace
{

constexpr const char* device_description = "Fine ADCS module";

}

ZAVRA_100_Exception::ZAVRA_100_Exception(std::string message) : message_(std::move(message)) {}

ZAVRA_100_Exception::~ZAVRA_100_Exception() noexcept = default;

const char* ZAVRA_100_Exception::what() const noexcept
{
    return message_.c_str();
}

ZAVRA_100::ZAVRA_100()
{
    debug_line(constructors, " --> ", typeid(this).name(), " constructor: ");
    SetDeviceDescription(device_description);
    init_crc8ccitt_table();
}

ZAVRA_100::ZAVRA_100(unsigned int i2c_address, std::string i2c_device_name)
{
    debug_line(constructors, " --> ", typeid(this).name(), " constructor: unsigned int i2c_address: ", i2c_address,
               ", std::string i2c_device_name: ", i2c_device_name);
    attempt<VELM_I2C_DEV_Exception>("instantiate ZAVRA I2C Device", [&] {
        SetDeviceDescription(device_description);
        VELM_I2C_DEV::Connect(i2c_address, i2c_device_name);
    });
    init_crc8ccitt_table();
}

ZAVRA_100::~ZAVRA_100()
{
    debug_line(destructors, " <-- ", typeid(this).name(),
               " destructor: ZAVRA_100 class destroyed with virtual destructor");
}

void ZAVRA_100::Connect(unsigned int i2c_address, std::string i2c_device_name)
{
    attempt<VELM_I2C_DEV_Exception>("connect I2C device", [&] { VELM_I2C_DEV::Connect(i2c_address, i2c_device_name); });
}

void ZAVRA_100::Disconnect()
{
    attempt<VELM_I2C_DEV_Exception>("disconnect I2C device", [&] { VELM_I2C_DEV::Disconnect(); });
}

void ZAVRA_100::PrintDeviceInfo()
{
    VELM_I2C_DEV::PrintInfo();
}

unsigned char ZAVRA_100::crc8_ccitt(const unsigned char* data, unsigned int length)
{
    return crc8_ccitt_generic(data, length, 0);
}

unsigned char ZAVRA_100::crc8_ccitt_generic(const unsigned char* data, unsigned int length, unsigned char start_value)
{
    return crc8(crc8_table_, data, length, start_value);
}

void ZAVRA_100::init_crc8ccitt_table()
{
    fill_crc8_table(crc8_table_);
}

bool ZAVRA_100::check_message_crc8(unsigned char* message, unsigned int length)
{
    const unsigned char received = message[length];
    const unsigned char calculated = crc8_ccitt(message, length);
    debug_line(values, "CRC received: hex = ", hex(received), ", dec = ", unsigned{received});
    debug_line(values, "CRC calculated: hex = ", hex(calculated), ", dec = ", unsigned{calculated});
    return received == calculated;
}

unsigned long long ZAVRA_100::ToUInt64(unsigned char* source)
{
    return get<unsigned long long>(source);
}

void ZAVRA_100::FromUInt64(unsigned char* destination, unsigned long long value)
{
    put(destination, value);
}

unsigned int ZAVRA_100::ToUInt32(unsigned char* source)
{
    return get<unsigned int>(source);
}

void ZAVRA_100::FromUInt32(unsigned char* destination, unsigned int value)
{
    put(destination, value);
}

int ZAVRA_100::ToInt32_ST(unsigned char* source)
{
    return get_little_endian<int>(source);
}

unsigned short ZAVRA_100::ToUInt16(unsigned char* source)
{
    return get<unsigned short>(source);
}

void ZAVRA_100::FromUInt16(unsigned char* destination, unsigned int value)
{
    put(destination, static_cast<unsigned short>(value));
}

float ZAVRA_100::ToFloat32(unsigned char* source)
{
    return get<float>(source);
}

void ZAVRA_100::FromFloat32(unsigned char* destination, float value)
{
    put(destination, value);
}

double ZAVRA_100::ToFloat64(unsigned char* source)
{
    return get<double>(source);
}

void ZAVRA_100::FromFloat64(unsigned char* destination, double value)
{
    put(destination, value);
}

bool ZAVRA_100::isLittleEndian()
{
    return std::endian::native == std::endian::little;
}
