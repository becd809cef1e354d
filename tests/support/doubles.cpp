#include "doubles.h"

#include <charconv>

#include <VELM_API_Debug.h>
#include <VELM_I2C_DEV.h>
#include <VELM_INIPARSER.h>

#include <unistd.h>

namespace zavra::test
{

/// Appends what is written to the double's text, at once.
class Text_Buffer : public std::streambuf
{
    int_type overflow(int_type c) override
    {
        double_of_platform.debug += static_cast<char>(c);
        return c;
    }
};

template <class Exception>
static void fail_if(const std::string& message)
{
    if (!message.empty())
        throw Exception(message);
}

template <class T>
static int convert(const std::string& key, T* value)
{
    fail_if<VELM_INIPARSER_Exception>(double_of_platform.value_failure);
    const auto entry = double_of_platform.dictionary.find(key);
    if (entry == double_of_platform.dictionary.end())
        return 0;
    const std::string& text = entry->second;
    T converted{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), converted);
    if (error != std::errc{} || end != text.data() + text.size())
        return 0;
    *value = converted;
    return 1;
}

Lines Platform_Double::events_of(const std::string& kind) const
{
    Lines found;
    for (const std::string& event : events)
        if (event.starts_with(kind))
            found.push_back(event.substr(kind.size()));
    return found;
}

Lines Platform_Double::dumped() const
{
    Lines lines;
    std::istringstream text(debug);
    for (std::string line; std::getline(text, line);) {
        // A byte dump closes with a piece whose end stands at the start of the next line.
        if (line.starts_with("\033[0m"))
            line.erase(0, 4);
        const bool whole = (line.starts_with("\033[32m") || line.starts_with("\033[33m")) && line.ends_with("\033[0m");
        if (!whole)
            continue;
        line = line.substr(5, line.size() - 9);
        if (!line.starts_with("CRC ") && line != "Read response bytes")
            lines.push_back(line);
    }
    return lines;
}

}

using zavra::test::double_of_platform;
using zavra::test::fail_if;

extern "C" int usleep(useconds_t usec)
{
    if (double_of_platform.recording)
        double_of_platform.events.push_back("sleep " + std::to_string(usec));
    return 0;
}

struct VELM_I2C_DEV::Private
{
};

VELM_I2C_DEV::VELM_I2C_DEV() : private_(new Private) {}

VELM_I2C_DEV::~VELM_I2C_DEV()
{
    double_of_platform.events.emplace_back("base destroyed");
}

void VELM_I2C_DEV::Connect(unsigned int address, std::string bus_device_name)
{
    fail_if<VELM_I2C_DEV_Exception>(double_of_platform.connect_failure);
    double_of_platform.events.push_back("connect " + std::to_string(address) + " " + bus_device_name);
}

void VELM_I2C_DEV::Disconnect()
{
    fail_if<VELM_I2C_DEV_Exception>(double_of_platform.connect_failure);
    double_of_platform.events.emplace_back("disconnect");
}

void VELM_I2C_DEV::I2CWriteByteArray(unsigned char* data, int length)
{
    fail_if<VELM_I2C_DEV_Exception>(double_of_platform.write_failure);
    if (double_of_platform.recording)
        double_of_platform.events.push_back("write " + zavra::test::hexadecimal({data, data + length}));
}

void VELM_I2C_DEV::I2CReadByteArray(unsigned char* data, int length)
{
    auto& platform = double_of_platform;
    fail_if<VELM_I2C_DEV_Exception>(platform.read_failure);
    if (platform.recording)
        platform.events.push_back("read " + std::to_string(length));
    std::fill_n(data, length, platform.unanswered);
    if (platform.replies.empty())
        return;
    const auto reply = std::move(platform.replies.front());
    platform.replies.pop_front();
    std::copy_n(reply.begin(), std::min(reply.size(), static_cast<std::size_t>(length)), data);
}

void VELM_I2C_DEV::SetDeviceDescription(std::string description)
{
    double_of_platform.events.push_back("description " + description);
}

void VELM_I2C_DEV::PrintInfo()
{
    std::puts("platform info");
    std::fflush(stdout);
}

std::ostream& VELM_API_Debug::dout(Level level)
{
    static zavra::test::Text_Buffer buffer;
    static std::ostream listened(&buffer);
    static std::ostream discarded(nullptr);
    const auto digit = static_cast<char>('0' + level);
    return double_of_platform.debug_levels.find(digit) == std::string::npos ? discarded : listened;
}

struct VELM_INIPARSER::Private
{
};

VELM_INIPARSER::VELM_INIPARSER() = default;

VELM_INIPARSER::~VELM_INIPARSER()
{
    double_of_platform.parser_calls.emplace_back("destroy");
}

void VELM_INIPARSER::load_dict(const char*)
{
    double_of_platform.parser_calls.emplace_back("load");
    fail_if<VELM_INIPARSER_Exception>(double_of_platform.load_failure);
}

void VELM_INIPARSER::dump(FILE* stream)
{
    double_of_platform.parser_calls.emplace_back("dump");
    fail_if<VELM_INIPARSER_Exception>(double_of_platform.dump_failure);
    std::fputs("(dictionary)\n", stream);
}

int VELM_INIPARSER::get_number_of_section_keys(std::string section)
{
    fail_if<VELM_INIPARSER_Exception>(double_of_platform.section_failure);
    return static_cast<int>(std::ranges::count_if(
        double_of_platform.dictionary, [&](const auto& entry) { return entry.first.starts_with(section + ":"); }));
}

int VELM_INIPARSER::get_value(std::string key, float* value)
{
    return zavra::test::convert(key, value);
}

int VELM_INIPARSER::get_value(std::string key, unsigned char* value)
{
    return zavra::test::convert(key, value);
}

int VELM_INIPARSER::get_value(std::string key, unsigned int* value)
{
    return zavra::test::convert(key, value);
}

int VELM_INIPARSER::get_value(std::string key, unsigned long long* value)
{
    return zavra::test::convert(key, value);
}

void VELM_INIPARSER::free_dict()
{
    double_of_platform.parser_calls.emplace_back("free");
}
