#pragma once

#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <utility>

/// Failure to read or print an INI file.
class VELM_INIPARSER_Exception : public std::exception
{
public:
    explicit VELM_INIPARSER_Exception(std::string message) : message_(std::move(message)) {}
    const char* what() const noexcept override { return message_.c_str(); }

private:
    std::string message_;
};

/// The contents of one INI file. Section and key names are not case sensitive.
class VELM_INIPARSER
{
public:
    VELM_INIPARSER();
    ~VELM_INIPARSER();

    VELM_INIPARSER(const VELM_INIPARSER&) = delete;
    VELM_INIPARSER& operator=(const VELM_INIPARSER&) = delete;

    /// Reads a file; what was loaded before is released first. Sections and keys that stand there more than once
    /// merge, which is reported on debug level 4.
    /// @throws VELM_INIPARSER_Exception when the file cannot be read or has a line that is not INI text; nothing is
    ///         loaded then
    void load_dict(const char* path);

    /// Prints what is loaded as INI text; keys that stand before the first section are left out.
    /// @throws VELM_INIPARSER_Exception when nothing is loaded or the stream reports an error
    void dump(std::FILE* stream);

    /// @return the number of keys in a section, 0 when there is no such section
    /// @throws VELM_INIPARSER_Exception when nothing is loaded
    int get_number_of_section_keys(std::string section);

    /// @name Values
    /// Each call converts the value of one key, named "section:key". The whole value must be a decimal number that the
    /// type can hold: without a sign for the unsigned types (`unsigned char` is a number from 0 to 255), finite for
    /// `float`, which may also have a sign and an exponent.
    /// @return non-zero when the key was found and its value converted; otherwise 0, and *value is unchanged
    /// @throws VELM_INIPARSER_Exception when nothing is loaded
    /// @{
    int get_value(std::string key, float* value);
    int get_value(std::string key, unsigned char* value);
    int get_value(std::string key, unsigned int* value);
    int get_value(std::string key, unsigned long long* value);
    /// @}

    /// Releases what is loaded, if anything is.
    void free_dict();

private:
    struct Private;
    std::unique_ptr<Private> private_;
};
