#include "bytes.h"

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

Payload& Payload::f32_range(int first, int last)
{
    for (int value = first; value <= last; ++value)
        f32(static_cast<float>(value));
    return *this;
}

Payload& Payload::f32_permuted(int first, const std::vector<int>& in_api)
{
    Image api = api_;
    for (const int place : in_api)
        append(api, bytes_of(static_cast<float>(first + place)), sizeof(float));
    f32_range(first, first + static_cast<int>(in_api.size()) - 1);
    api_ = api;
    return *this;
}

Payload& Payload::text(const std::string& characters, std::size_t size, std::size_t terminator)
{
    Octets bytes(characters.begin(), characters.end());
    bytes.resize(size);
    wire(bytes);
    bytes.resize(size + terminator);
    append(device_, bytes, 1);
    append(api_, bytes, 1);
    return *this;
}

Payload& Payload::wire(const Octets& bytes)
{
    hexadecimal_ += test::hexadecimal(bytes);
    return *this;
}

void Payload::append(Image& image, const Octets& bytes, std::size_t alignment)
{
    while (image.size() % alignment != 0)
        image.push_back(-1);
    image.insert(image.end(), bytes.begin(), bytes.end());
}

const Payload::Image& Payload::image(Layer layer, std::size_t size, std::size_t alignment) const
{
    const Image& image = layer == Layer::device ? device_ : api_;
    if ((image.size() + alignment - 1) / alignment * alignment != size)
        throw std::logic_error("The payload has other values than the record has members");
    return image;
}

}
