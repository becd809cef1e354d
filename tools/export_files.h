#pragma once

#include <iosfwd>
#include <string>

/// Files for other people's programs. All of them throw Failure, naming the file and what is wrong.
namespace zavra::tools
{

/// Writes the text to a file, or to the stream where the file has no name.
void write_text(const std::string& file, const std::string& text, std::ostream& out);

/// Writes a file that others read at any time: they find the text before or this one, whole.
void replace_text(const std::string& file, const std::string& text);

/// Writes the sigrok decoder into a directory, which is made where it is not there yet.
void export_sigrok(const std::string& directory);

/// Turns a journal of simulated units into a Value Change Dump; "-" is standard input. Up to a line that is none of a
/// journal everything is written.
void export_vcd(const std::string& journal, const std::string& bus, const std::string& file, std::ostream& out);

}
