#include "VELM_ZAVRA_REGISTER_MAP.h"

#include "../device/failure.h"
#include "registers.h"

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

using Names = std::string[bits_per_register];

constexpr const char* name_characters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";

std::string number_name(unsigned int bit)
{
    return std::string("bit_") + static_cast<char>('0' + bit / 10) + static_cast<char>('0' + bit % 10);
}

void number(Names (&names)[std::size(register_sources)])
{
    for (Names& of_register : names)
        for (unsigned int bit = 0; bit < bits_per_register; ++bit)
            of_register[bit] = number_name(bit);
}

std::string trimmed(const std::string& text)
{
    constexpr const char* blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Reads a map file line by line; knows where it is when something is wrong there.
class Map_Reader
{
public:
    Map_Reader(std::string path, Names (&names)[std::size(register_sources)]) : path_(std::move(path)), names_(names) {}

    void read()
    {
        std::ifstream file(path_);
        if (!file)
            fail(std::generic_category().message(errno));
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
        const auto found = std::find_if(std::begin(register_sources), std::end(register_sources),
                                        [&](const Register_Source& each) { return section == each.section; });
        if (found == std::end(register_sources))
            fail("there is no such register");
        register_ = static_cast<unsigned int>(found - register_sources);
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
            if (other != bit && (name == names_[register_][other] || name == number_name(other)))
                fail("the name \"" + name + "\" is that of bit " + std::to_string(other));
        names_[register_][bit] = name;
        listed_[register_].set(bit);
    }

    [[noreturn]] void fail(const std::string& reason) const
    {
        std::string where = path_;
        if (line_ != 0)
            where += ", line " + std::to_string(line_);
        if (!section_.empty())
            where += ", section " + section_;
        if (!key_.empty())
            where += ", key " + key_;
        throw VELM_ZAVRA_API_Exception(failure("load register map", where + ": " + reason));
    }

    const std::string path_;
    Names (&names_)[std::size(register_sources)];
    std::bitset<bits_per_register> listed_[std::size(register_sources)];
    unsigned int line_ = 0;
    unsigned int register_ = 0;
    std::string section_;
    std::string key_;
};

}

VELM_ZAVRA_REGISTER_MAP::VELM_ZAVRA_REGISTER_MAP()
{
    number(names_);
    auto& system_error = names_[VELM_ZAVRA_API_SYSTEM_ERROR_REGISTER];
    system_error[0] = "command_error_0";
    system_error[1] = "command_error_1";
}

VELM_ZAVRA_REGISTER_MAP::VELM_ZAVRA_REGISTER_MAP(std::string map_file)
{
    number(names_);
    Map_Reader(std::move(map_file), names_).read();
}

VELM_ZAVRA_API_REGISTER VELM_ZAVRA_REGISTER_MAP::Decode(VELM_ZAVRA_API_REGISTERS which, unsigned int value) const
{
    if (which >= std::size(register_sources))
        throw VELM_ZAVRA_API_Exception(failure("decode register", "unknown register"));
    VELM_ZAVRA_API_REGISTER decoded;
    decoded.which = which;
    decoded.name = register_sources[which].section;
    decoded.value = value;
    for (unsigned int bit = 0; bit < bits_per_register; ++bit)
        decoded.flags[bit] = {names_[which][bit], (value >> bit & 1U) != 0};
    return decoded;
}

VELM_ZAVRA_API_REGISTER VELM_ZAVRA_REGISTER_MAP::Decode(const VELM_ZAVRA_API_REGISTER& reading) const
{
    return Decode(reading.which, reading.value);
}
