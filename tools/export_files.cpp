#include "export_files.h"
#include "check.h"
#include "failure.h"

#include "../catalogue/exports.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <system_error>

namespace zavra::tools
{

namespace
{

[[noreturn]] void fail(const std::string& file, const std::string& reason)
{
    throw Failure(file + ": " + reason);
}

/// A file while it is written.
class Output_File
{
public:
    explicit Output_File(const std::string& name) : name_(name)
    {
        errno = 0;
        stream.open(name, std::ios::binary);
    }

    void close()
    {
        stream.close();
        if (!stream)
            fail(name_, std::generic_category().message(errno));
    }

    std::ofstream stream;

private:
    std::string name_;
};

void write_file(const std::string& name, const std::string& text)
{
    Output_File file(name);
    file.stream << text;
    file.close();
}

}

void write_text(const std::string& file, const std::string& text, std::ostream& out)
{
    if (file.empty())
        out << text << std::flush;
    else
        write_file(file, text);
}

void replace_text(const std::string& file, const std::string& text)
{
    // The collectors that read such files leave out what does not have their ending.
    const std::string beside = file + ".new";
    write_file(beside, text);
    if (std::rename(beside.c_str(), file.c_str()) != 0) {
        const int error = errno;
        std::remove(beside.c_str());
        fail(file, std::generic_category().message(error));
    }
}

void export_sigrok(const std::string& directory)
{
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error)
        fail(directory, error.message());
    const std::pair<const char*, std::string> files[] = {
        {"/__init__.py", sigrok_init}, {"/pd.py", sigrok_pd}, {"/tables.py", sigrok_tables()}};
    for (const auto& [name, text] : files)
        write_file(directory + name, text);
}

void export_vcd(const std::string& journal, const std::string& bus, const std::string& file, std::ostream& out)
{
    std::istringstream lines(journal == "-" ? "" : read_file(journal));
    std::istream& in = journal == "-" ? std::cin : lines;
    try {
        if (file.empty()) {
            write_vcd(in, bus, out);
            out.flush();
        } else {
            Output_File capture(file);
            write_vcd(in, bus, capture.stream);
            capture.close();
        }
    } catch (const std::invalid_argument& error) {
        fail(journal, error.what());
    }
}

}
