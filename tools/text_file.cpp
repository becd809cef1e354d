#include "check.h"
#include "failure.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <system_error>

namespace zavra::tools
{

std::string located(const std::string& file, const Finding& finding)
{
    return file + (finding.line == 0 ? "" : ':' + std::to_string(finding.line)) + ": " + finding.text;
}

std::string read_file(const std::string& file)
{
    const auto fail = [&](int error) { throw Usage_Error(file + ": " + std::generic_category().message(error)); };
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        fail(errno);
    std::error_code ignored;
    if (std::filesystem::is_directory(file, ignored)) // which opens and cannot be read
        fail(EISDIR);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    return text;
}

std::vector<std::string> lines_of(const std::string& text)
{
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        if (line.ends_with('\r'))
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

}
