#pragma once

#include <iosfwd>
#include <string>

namespace zavra::tools
{

/// Says how the results of a campaign's runs are spread, which seeds are the worst, and which are missing.
/// @param results  the lines of zavra-sim --vary; where a seed was run again the last one counts
/// @param file  a page of histograms and scatter plots; nothing where it has no name
/// @throws Usage_Error  when the results cannot be opened
/// @throws Failure  with the line, when it is none of zavra-sim --vary's; naming the page, when it cannot be written
void show_campaign(const std::string& results, const std::string& file, std::ostream& out);

}
