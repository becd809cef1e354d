#include "VELM_ZAVRA_REGISTER_MAP.h"

#include "../common/text.h"
#include "../device/failure.h"
#include "../protocol/registers.h"

#include <algorithm>
#include <bitset>
#include <cerrno>
#include <charconv>
#include <fstream>
#include <string>
#include <system_error>
#include <utility>

using namespace zavra;

namespace
{

constexpr unsigned int rows = std::size(register_sources);
using Names = std::string[rows][bits_per_register];

static_assert(number_of_registers <= 2 * rows, "one or two names stand in each string");

constexpr const char* name_characters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";

std::string number_name(unsigned int bit)
{
    return std::string("bit_") + static_cast<char>('0' + bit / 10) + static_cast<char>('0' + bit % 10);
}

std::string name_of(const Names& names, unsigned int which, unsigned int bit)
{
    const std::string& both = names[which % rows][bit];
    const auto end = std::min(both.find('\n'), both.size());
    return which < rows ? both.substr(0, end) : both.substr(end + 1);
}

void set_name(Names& names, unsigned int which, unsigned int bit, const std::string& name)
{
    std::string& both = names[which % rows][bit];
    const auto end = std::min(both.find('\n'), both.size());
    both = which < rows ? name + both.substr(end) : both.substr(0, end) + '\n' + name;
}

void number(Names& names)
{
    for (unsigned int which = 0; which < number_of_registers; ++which)
        for (unsigned int bit = 0; bit < bits_per_register; ++bit)
            set_name(names, which, bit, number_name(bit));
}

void check_register(unsigned int which, const char* action_words)
{
    if (which >= number_of_registers)
        fail<VELM_ZAVRA_API_Exception>(failure(action_words, "unknown register"), refused);
}

unsigned int mask_of(const Names& names, unsigned int which, const std::string& flag, const char* action_words)
{
    check_register(which, action_words);
    for (unsigned int bit = 0; bit < bits_per_register; ++bit)
        if (flag == name_of(names, which, bit) || flag == number_name(bit))
            return 1U << bit;
    fail<VELM_ZAVRA_API_Exception>(
        failure(action_words, std::string(register_section(which)) + " has no flag \"" + flag + '"'), refused);
}

/// Reads a map file line by line; knows where it is when something is wrong there.
class Map_Reader
{
public:
    Map_Reader(std::string path, Names& names) : path_(std::move(path)), names_(names) {}

    void read()
    {
        std::ifstream file(path_);
        if (!file)
            fail(std::generic_category().message(errno), errno);
        for (std::string text; std::getline(file, text);) {
            ++line_;
            key_.clear();
            read_line(trimmed(text.substr(0, text.find_first_of(";#"))));
        }
        if (file.bad())
            fail("the file cannot be read");
    }

private:
    void read_line(const std::string& text)
    {
        if (text.empty())
            return;
        const auto equals = text.find('=');
        if (text.front() == '[' && text.back() == ']') {
            enter(trimmed(text.substr(1, text.size() - 2)));
        } else if (equals != std::string::npos) {
            key_ = '"' + trimmed(text.substr(0, equals)) + '"';
            name(bit_of(trimmed(text.substr(0, equals))), trimmed(text.substr(equals + 1)));
        } else {
            fail("neither a section, a key with a name, nor a comment");
        }
    }

    void enter(const std::string& section)
    {
        section_ = '[' + section + ']';
        register_ = 0;
        while (register_ < number_of_registers && section != register_section(register_))
            ++register_;
        if (register_ == number_of_registers)
            fail("there is no such register");
    }

    unsigned int bit_of(const std::string& key)
    {
        unsigned int bit = 0;
        const char* const end = key.data() + key.size();
        const auto [stop, error] = std::from_chars(key.data(), end, bit);
        if (error != std::errc() || stop != end || bit >= bits_per_register)
            fail("the key is not a bit number from 0 to 31");
        return bit;
    }

    void name(unsigned int bit, const std::string& name)
    {
        if (section_.empty())
            fail("the key stands before the first section");
        if (listed_[register_][bit])
            fail("the bit has a name already");
        if (name.empty())
            fail("the name is empty");
        if (name.find_first_not_of(name_characters) != std::string::npos)
            fail("the name \"" + name + "\" has other characters than letters, digits and underscores");
        for (unsigned int other = 0; other < bits_per_register; ++other)
            if (other != bit && (name == name_of(names_, register_, other) || name == number_name(other)))
                fail("the name \"" + name + "\" is that of bit " + std::to_string(other));
        set_name(names_, register_, bit, name);
        listed_[register_].set(bit);
    }

    [[noreturn]] void fail(const std::string& reason, int code = 0) const
    {
        std::string where = path_;
        if (line_ != 0)
            where += ", line " + std::to_string(line_);
        if (!section_.empty())
            where += ", section " + section_;
        if (!key_.empty())
            where += ", key " + key_;
        zavra::fail<VELM_ZAVRA_API_Exception>(failure("load register map", where + ": " + reason), code);
    }

    const std::string path_;
    Names& names_;
    std::bitset<bits_per_register> listed_[number_of_registers];
    unsigned int line_ = 0;
    unsigned int register_ = 0;
    std::string section_;
    std::string key_;
};

}

VELM_ZAVRA_REGISTER_MAP::VELM_ZAVRA_REGISTER_MAP()
{
    number(names_);
    set_name(names_, VELM_ZAVRA_API_SYSTEM_ERROR_REGISTER, 0, "command_error_0");
    set_name(names_, VELM_ZAVRA_API_SYSTEM_ERROR_REGISTER, 1, "command_error_1");
}

VELM_ZAVRA_REGISTER_MAP::VELM_ZAVRA_REGISTER_MAP(std::string map_file)
{
    number(names_);
    Map_Reader(std::move(map_file), names_).read();
}

VELM_ZAVRA_API_REGISTER VELM_ZAVRA_REGISTER_MAP::Decode(VELM_ZAVRA_API_REGISTERS which, unsigned int value) const
{
    check_register(which, "decode register");
    VELM_ZAVRA_API_REGISTER decoded;
    decoded.which = which;
    decoded.name = register_section(which);
    decoded.value = value;
    for (unsigned int bit = 0; bit < bits_per_register; ++bit)
        decoded.flags[bit] = {name_of(names_, which, bit), (value >> bit & 1U) != 0};
    return decoded;
}

VELM_ZAVRA_API_REGISTER VELM_ZAVRA_REGISTER_MAP::Decode(const VELM_ZAVRA_API_REGISTER& reading) const
{
    return Decode(reading.which, reading.value);
}

unsigned int VELM_ZAVRA_REGISTER_MAP::Encode(VELM_ZAVRA_API_REGISTERS which,
                                             const std::vector<std::string>& flags) const
{
    constexpr const char* action_words = "encode register";
    check_register(which, action_words);
    unsigned int value = 0;
    for (const std::string& flag : flags)
        value |= mask_of(names_, which, flag, action_words);
    return value;
}

bool VELM_ZAVRA_REGISTER_MAP::Is_Set(const VELM_ZAVRA_API_REGISTER& reading, const std::string& flag) const
{
    return (reading.value & mask_of(names_, reading.which, flag, "look at a register's flag")) != 0;
}
