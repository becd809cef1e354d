#include "check.h"

#include "../simulator/bench/satellite_file.h"
#include "../simulator/bench/scenario.h"

#include <cstdlib>
#include <stdexcept>

namespace zavra::tools
{

namespace
{

/// What the reader of satellites says: "Satellite FILE:LINE: text", or without a line.
Finding finding_of(const std::string& message, const std::string& file)
{
    std::string text = message.substr(message.find(file) + file.size() + 1);
    char* end = text.data();
    const std::size_t line = std::strtoul(text.data(), &end, 10);
    if (line != 0)
        text = end + 1;
    return {line, text.substr(text.find_first_not_of(' '))};
}

}

std::vector<Finding> check_scenario(const std::string& file)
{
    read_file(file); // a file that is not there is wrong usage
    std::vector<Finding> findings;
    for (const auto& [line, text] : simulator::Scenario::problems(file))
        findings.push_back({line, text});
    return findings;
}

std::vector<Finding> check_satellite(const std::string& file)
{
    read_file(file);
    std::vector<Finding> findings;
    try {
        for (const std::string& warning : simulator::Satellite_File(file).warnings)
            findings.push_back(finding_of(warning, file));
    } catch (const std::runtime_error& error) {
        findings.push_back(finding_of(error.what(), file));
    }
    return findings;
}

}
