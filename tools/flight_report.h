#pragma once

#include <iosfwd>
#include <string>

namespace zavra::tools
{

/// Makes the page of a flight from a record alone.
/// @param file  the page; standard output where it has no name
/// @throws Usage_Error  when the record cannot be opened
/// @throws Failure  with the line, when it is no record; naming the page, when it cannot be written
void report_record(const std::string& record, const std::string& file, std::ostream& out);

}
