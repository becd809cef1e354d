#include "quiet_platform.h"

#include <VELM_API_Debug.h>
#include <VELM_I2C_DEV.h>

#include <cstring>
#include <ostream>
#include <unistd.h>

namespace zavra::test
{

namespace
{

std::span<const unsigned char> answer;

}

void answer_with(std::span<const unsigned char> response)
{
    answer = response;
}

}

extern "C" int usleep(useconds_t)
{
    return 0;
}

struct VELM_I2C_DEV::Private
{
};

VELM_I2C_DEV::VELM_I2C_DEV() = default;
VELM_I2C_DEV::~VELM_I2C_DEV() = default;
void VELM_I2C_DEV::Connect(unsigned int, std::string) {}
void VELM_I2C_DEV::Disconnect() {}
void VELM_I2C_DEV::SetDeviceDescription(std::string) {}
void VELM_I2C_DEV::PrintInfo() {}
void VELM_I2C_DEV::I2CWriteByteArray(unsigned char*, int) {}

void VELM_I2C_DEV::I2CReadByteArray(unsigned char* data, int length)
{
    std::memcpy(data, zavra::test::answer.data(), static_cast<std::size_t>(length));
}

std::ostream& VELM_API_Debug::dout(Level)
{
    static std::ostream discarded(nullptr);
    return discarded;
}
