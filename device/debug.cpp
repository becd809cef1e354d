#include "debug.h"

#include <ios>
#include <locale>
#include <sstream>
#include <string>

namespace zavra
{

namespace
{

std::string digits_of(unsigned long long value, unsigned int digits)
{
    std::string text(digits, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4U)
        *digit = "0123456789abcdef"[value & 0xFU];
    return text;
}

struct Hex_Dump
{
    const char* label;
    const unsigned char* bytes;
    unsigned int length;
};

void print(std::ostream& stream, const void* hex_dump)
{
    const auto& dump = *static_cast<const Hex_Dump*>(hex_dump);
    const auto next_piece = [&] { stream << "\033[0m\033[" << values.colour << 'm'; };
    stream << dump.label;
    for (unsigned int i = 0; i < dump.length; ++i) {
        next_piece();
        stream << digits_of(dump.bytes[i], 2);
    }
    next_piece();
}

}

void write_line(const Debug_Channel& channel, void (*print)(std::ostream&, const void*), const void* line,
                const char* end)
{
    std::ostream& stream = VELM_API_Debug::dout(static_cast<VELM_API_Debug::Level>(channel.level));
    if (!stream)
        return;
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << "\033[" << channel.colour << 'm';
    print(text, line);
    text << end;

    stream << std::dec;
    stream.fill(' ');
    stream.width(0);
    stream << text.view() << std::flush;
}

void debug_bytes(const char* label, const unsigned char* bytes, unsigned int length)
{
    const Hex_Dump dump{label, bytes, length};
    write_line(values, print, &dump, "\n\033[0m");
}

std::ostream& operator<<(std::ostream& stream, const Hex& number)
{
    return stream << "0x" << digits_of(number.value, number.digits);
}

}
