#include "check.h"
#include "failure.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

namespace zavra::tools
{

std::string located(const std::string& file, const Finding& finding)
{
    return file + (finding.line == 0 ? "" : ':' + std::to_string(finding.line)) + ": " + finding.text;
}

std::ifstream open_file(const std::string& file)
{
    const auto fail = [&](int error) { throw Usage_Error(file + ": " + std::generic_category().message(error)); };
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        fail(errno);
    std::error_code ignored;
    if (std::filesystem::is_directory(file, ignored)) // which opens and cannot be read
        fail(EISDIR);
    return stream;
}

std::string read_stream(std::istream& stream, const std::string& name)
{
    // A device would be read until the memory ends.
    constexpr std::size_t most = std::size_t{16} << 20U;
    std::string text(most + 1, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    if (text.size() > most)
        throw Usage_Error(name + ": more than 16 MB");
    return text;
}

std::string read_file(const std::string& file)
{
    std::ifstream stream = open_file(file);
    return read_stream(stream, file);
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
