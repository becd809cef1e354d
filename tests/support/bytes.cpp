#include "bytes.h"

#include <bit>
#include <cstdio>

namespace zavra::test
{

Octets octets(const std::string& hexadecimal)
{
    Octets bytes;
    std::string digits = hexadecimal;
    std::erase(digits, ' ');
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes.push_back(static_cast<unsigned char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    return bytes;
}

std::string hexadecimal(const Octets& bytes)
{
    std::string text;
    for (const unsigned char byte : bytes) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", byte);
        text += digits;
    }
    return text;
}

unsigned char reference_crc(const Octets& bytes)
{
    unsigned int crc = 0;
    for (const unsigned char byte : bytes)
        for (unsigned int bit = 0x80; bit != 0; bit >>= 1U) {
            const bool carry = ((crc & 0x80U) != 0) != ((byte & bit) != 0);
            crc = (crc << 1U ^ (carry ? 0x07U : 0U)) & 0xFFU;
        }
    return static_cast<unsigned char>(crc);
}

Octets with_crc(Octets bytes)
{
    bytes.push_back(reference_crc(bytes));
    return bytes;
}

Payload& Payload::big_endian(unsigned long long value, int size)
{
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        hexadecimal_ += test::hexadecimal({static_cast<unsigned char>(value >> shift)});
    return *this;
}

Payload& Payload::f32(float value)
{
    return big_endian(std::bit_cast<unsigned int>(value), 4);
}

Payload& Payload::f64(double value)
{
    return big_endian(std::bit_cast<unsigned long long>(value), 8);
}

Payload& Payload::f32_range(int first, int last)
{
    for (int value = first; value <= last; ++value)
        f32(static_cast<float>(value));
    return *this;
}

Payload& Payload::text(const std::string& characters, std::size_t size)
{
    Octets bytes(characters.begin(), characters.end());
    bytes.resize(size);
    hexadecimal_ += test::hexadecimal(bytes);
    return *this;
}

}
