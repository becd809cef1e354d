#include "debug.h"

#include <locale>

namespace zavra
{

namespace
{

std::string begin_piece(int colour)
{
    return "\033[" + std::to_string(colour) + "m";
}

const std::string end_piece = "\033[0m";

std::string digits_of(unsigned long long value, unsigned int digits)
{
    std::string text(digits, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4U)
        *digit = "0123456789abcdef"[value & 0xFU];
    return text;
}

void write_unformatted(std::ostream& stream, const std::string& text)
{
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
}

}

void write_line(std::ostream& stream, int colour, const std::string& text)
{
    write_unformatted(stream, begin_piece(colour) + text + end_piece + '\n');
    stream.flush();
}

std::ostringstream plain_text()
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    return text;
}

std::ostream& operator<<(std::ostream& stream, const Hex& number)
{
    return stream << "0x" << digits_of(number.value, number.digits);
}

void write_bytes(std::ostream& stream, const char* label, const unsigned char* bytes, unsigned int length)
{
    const std::string begin = begin_piece(values.colour);
    std::string line = begin + label + end_piece;
    for (unsigned int i = 0; i < length; ++i)
        line += begin + digits_of(bytes[i], 2) + end_piece;
    write_unformatted(stream, line + begin + '\n' + end_piece);
    stream.flush();
}

}
