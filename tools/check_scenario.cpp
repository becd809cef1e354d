#include "check.h"

#include "../simulator/bench/scenario.h"

namespace zavra::tools
{

std::vector<Finding> check_scenario(const std::string& file)
{
    read_file(file); // a file that is not there is wrong usage
    std::vector<Finding> findings;
    for (const auto& [line, text] : simulator::Scenario::problems(file))
        findings.push_back({line, text});
    return findings;
}

}
