#include <VELM_INIPARSER.h>

#include "file_descriptor.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstring>
#include <mutex>
#include <system_error>
#include <type_traits>

#include <fcntl.h>
#include <iniparser/iniparser.h>

using namespace zavra::platform;

namespace
{

std::string error_text(int error)
{
    return std::generic_category().message(error);
}

/// The first complaint of the iniparser library about a file. The library tells one function for the whole process.
char complaint[8192];
std::mutex complaint_mutex;

int take_complaint(const char* format, ...)
{
    if (complaint[0] == '\0') {
        va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(complaint, sizeof(complaint), format, arguments);
        va_end(arguments);
    }
    return 0;
}

/// @param error  receives the complaint as one line, or stays empty
dictionary* load(const char* path, std::string& error)
{
    const std::lock_guard lock(complaint_mutex);
    complaint[0] = '\0';
    iniparser_set_error_callback(take_complaint);
    dictionary* const loaded = iniparser_load(path);
    iniparser_set_error_callback(nullptr);

    error = complaint;
    std::replace(error.begin(), error.end(), '\n', ' ');
    error.erase(error.find_last_not_of(' ') + 1);
    return loaded;
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
    std::string error;
    private_->loaded.reset(load(path, error));
    if (!private_->loaded || !error.empty()) {
        free_dict();
        fail(error);
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
