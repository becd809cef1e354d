#pragma once

#include <string>
#include <vector>

namespace zavra::tools
{

/// "; did you mean "..."?" with the candidate that is a slip or two away from `word`, or nothing.
std::string did_you_mean(const std::string& word, const std::vector<std::string>& candidates);

}
