#include <VELM_INIPARSER.h>

#include "file_descriptor.h"
#include "ini_lines.h"

#include <VELM_API_Debug.h>

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <system_error>
#include <type_traits>

#include <fcntl.h>
#include <iniparser/iniparser.h>
#include <sys/stat.h>

using namespace zavra::platform;

namespace
{

std::string error_text(int error)
{
    return std::generic_category().message(error);
}

/// A line on the debug stream's level of warnings.
void warn(const std::string& text)
{
    const std::string line = "\033[33mWARNING: " + text + "\033[0m\n";
    VELM_API_Debug::dout(4).write(line.data(), static_cast<std::streamsize>(line.size())).flush();
}

template <class T>
int convert(const char* text, T* value)
{
    if (text == nullptr) {
        return 0;
    }
    const char* const end = text + std::strlen(text);
    if constexpr (std::is_floating_point_v<T>) {
        if (text[0] == '+' && text[1] != '-') {
            ++text;
        }
    }
    T number = 0;
    const auto [stop, error] = std::from_chars(text, end, number);
    if (error != std::errc() || stop != end || !std::isfinite(static_cast<double>(number))) {
        return 0;
    }
    *value = number;
    return 1;
}

}

struct VELM_INIPARSER::Private
{
    struct Free
    {
        void operator()(dictionary* dict) const { iniparser_freedict(dict); }
    };
    std::unique_ptr<dictionary, Free> loaded;

    dictionary* dict() const
    {
        if (!loaded) {
            throw VELM_INIPARSER_Exception("No INI file is loaded");
        }
        return loaded.get();
    }

    const char* text(const std::string& key) const { return iniparser_getstring(dict(), key.c_str(), nullptr); }
};

VELM_INIPARSER::VELM_INIPARSER() : private_(std::make_unique<Private>()) {}

VELM_INIPARSER::~VELM_INIPARSER() = default;

void VELM_INIPARSER::load_dict(const char* path)
{
    free_dict();
    if (path == nullptr) {
        throw VELM_INIPARSER_Exception("Cannot load INI file (path is null)");
    }
    const auto fail = [&](const std::string& reason) {
        throw VELM_INIPARSER_Exception(std::string("Cannot load INI file ") + path + " (" + reason + ")");
    };
    // The library takes a directory for an empty file and does not say why a file cannot be opened.
    const File_Descriptor file(uninterrupted([&] { return ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC); }));
    char nothing;
    if (!file || ::read(file.get(), &nothing, 0) < 0) {
        fail(error_text(errno));
    }
    struct stat status;
    const bool can_be_read_twice = ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode);
    const Ini_Findings findings = can_be_read_twice ? examine_ini_file(path) : Ini_Findings();
    if (!findings.error.empty()) {
        fail(findings.error);
    }
    private_->loaded.reset(iniparser_load(path));
    if (!private_->loaded) {
        fail("it is not INI text");
    }
    for (const std::string& repetition : findings.repetitions) {
        warn(std::string("INI file ") + path + ", " + repetition);
    }
}

void VELM_INIPARSER::dump(std::FILE* stream)
{
    dictionary* const dict = private_->dict();
    if (stream == nullptr) {
        throw VELM_INIPARSER_Exception("Cannot print INI dictionary (stream is null)");
    }
    errno = 0;
    iniparser_dump_ini(dict, stream);
    if (std::fflush(stream) != 0 || std::ferror(stream) != 0) {
        throw VELM_INIPARSER_Exception("Cannot print INI dictionary (" + error_text(errno != 0 ? errno : EIO) + ")");
    }
}

int VELM_INIPARSER::get_number_of_section_keys(std::string section)
{
    return iniparser_getsecnkeys(private_->dict(), section.c_str());
}

int VELM_INIPARSER::get_value(std::string key, float* value)
{
    return convert(private_->text(key), value);
}

int VELM_INIPARSER::get_value(std::string key, unsigned char* value)
{
    return convert(private_->text(key), value);
}

int VELM_INIPARSER::get_value(std::string key, unsigned int* value)
{
    return convert(private_->text(key), value);
}

int VELM_INIPARSER::get_value(std::string key, unsigned long long* value)
{
    return convert(private_->text(key), value);
}

void VELM_INIPARSER::free_dict()
{
    private_->loaded.reset();
}
