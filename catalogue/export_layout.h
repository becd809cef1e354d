#pragma once

#include "commands.h"

#include <span>
#include <string>
#include <vector>

/// What the descriptions for other programs are made from.
namespace zavra
{

/// One number, text or run of bytes at its place in a payload.
struct Place
{
    std::string name; ///< "parameters.correction_scale.m11", "speeds[3]"; empty for bytes that belong to no field
    const char* unit = "";
    Item::Kind kind = Item::Kind::skipped;
    unsigned int size = 0; ///< bytes; 0: as many as there are
    bool hexadecimal = false;
    bool little_endian = false;
    int event = -1;               ///< of the star tracker's event list: there is one when num_event is greater
    const char* choice = nullptr; ///< the name of its enumeration
    std::span<const char* const> choices = {}; ///< labels of the values from 0, where no others are valid
    const char* range = nullptr;               ///< the name of its range
    const char* limit = nullptr;               ///< no value is valid that lies farther from 0
};

std::vector<Place> places_of(const Described_Command& command, Items items);

/// The name with underscores for what is no letter or digit.
std::string plain_name(const Place& place);
std::string plain_unit(const char* unit);

/// "0x0229"
std::string hexadecimal_identifier(unsigned short identifier);

}
