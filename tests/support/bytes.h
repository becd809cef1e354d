#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zavra::test
{

using Octets = std::vector<unsigned char>;

/// Bytes of hexadecimal text; blanks do not count.
Octets octets(const std::string& hexadecimal);
std::string hexadecimal(const Octets& bytes);

/// CRC-8 with polynomial 0x07 computed bit by bit, independently of the library.
unsigned char reference_crc(const Octets& bytes);
Octets with_crc(Octets bytes);

/// Builds the bytes of a payload, independently of the library's codec.
class Payload
{
public:
    Payload& u8(unsigned int value) { return big_endian(value, 1); }
    Payload& u32(unsigned int value) { return big_endian(value, 4); }
    Payload& u64(unsigned long long value) { return big_endian(value, 8); }
    Payload& f32(float value);
    Payload& f64(double value);
    /// The floats first, first + 1, ... last.
    Payload& f32_range(int first, int last);
    Payload& text(const std::string& characters, std::size_t size);
    const std::string& hexadecimal() const { return hexadecimal_; }

private:
    Payload& big_endian(unsigned long long value, int size);

    std::string hexadecimal_;
};

/// The message of the exception that an action throws; a failed expectation and "" when it throws none.
template <class Exception, class Action>
std::string message_of(Action&& action)
{
    try {
        action();
    } catch (const Exception& exception) {
        return exception.what();
    }
    ADD_FAILURE() << "no exception";
    return "";
}

}
