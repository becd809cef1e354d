#pragma once

#include <iosfwd>
#include <string>

/// The commands for other people's programs. Each function returns the whole text of a file.
namespace zavra
{

/// The sigrok decoder: its two files in catalogue/sigrok, and their tables as a third Python module.
extern const char* const sigrok_init;
extern const char* const sigrok_pd;
std::string sigrok_tables();

/// XTCE 1.2: responses as containers, each in a space system of its command's name; requests as meta commands.
std::string xtce();

/// A Kaitai Struct description: the chief type is a request frame, the types whose names end in _response are
/// responses.
std::string kaitai_struct();

/// Writes a journal of simulated units as a Value Change Dump of SCL and SDA, at 100 kHz and in steps of 1 us. From the
/// end of a transaction to the start of the next it takes as long as the journal says, but one second at most.
/// @param bus  transactions of other buses are left out
/// @throws std::invalid_argument  naming the line that is none of a journal, or the buses when `bus` is not among them
void write_vcd(std::istream& journal, const std::string& bus, std::ostream& out);

}
