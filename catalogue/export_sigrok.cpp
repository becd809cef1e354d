#include "export_layout.h"
#include "exports.h"

#include <sstream>

namespace zavra
{

namespace
{

/// As Python's struct module has it; empty for bytes of any number.
std::string format_of(const Place& place)
{
    const auto letter = [&](const char* of_size) {
        return std::string(place.little_endian ? "<" : ">") + of_size[place.size];
    };
    switch (place.kind) {
    case Item::Kind::real:
        return letter("    f   d");
    case Item::Kind::signed_integer:
        return letter(" bh i   q");
    case Item::Kind::unsigned_integer:
        return letter(" BH I   Q");
    case Item::Kind::skipped:
        return std::to_string(place.size) + 'x';
    default:
        return place.size == 0 ? "" : std::to_string(place.size) + 's';
    }
}

void write_fields(std::ostream& out, const char* name, const std::vector<Place>& places)
{
    out << ",\n            " << name << "=(";
    for (const Place& place : places) {
        out << "\n                Field('" << place.name << "', '" << format_of(place) << '\'';
        if (*place.unit != '\0')
            out << ", unit='" << place.unit << '\'';
        if (place.kind == Item::Kind::text)
            out << ", is_text=True";
        if (place.hexadecimal)
            out << ", hexadecimal=True";
        if (place.event >= 0)
            out << ", event=" << place.event;
        if (!place.choices.empty()) {
            out << ", labels=(";
            for (const char* label : place.choices)
                out << '\'' << label << "',";
            out << ')';
        }
        out << "),";
    }
    out << ')';
}

}

std::string sigrok_tables()
{
    std::ostringstream out;
    out << "# Made by: zavractl export sigrok\n"
           "from collections import namedtuple\n"
           "\n"
           "Field = namedtuple('Field', 'name format unit is_text hexadecimal event labels',\n"
           "                   defaults=('', False, False, None, ()))\n"
           "Command = namedtuple('Command', 'identifier method request response')\n"
           "\n"
           "COMMANDS = (";
    for (const Described_Command& command : described_commands()) {
        out << "\n    Command(" << hexadecimal_identifier(command.identifier) << ", '" << command.method << '\'';
        write_fields(out, "request", places_of(command, command.request));
        write_fields(out, "response", places_of(command, command.response));
        out << "),";
    }
    out << "\n)\n";
    return out.str();
}

}
