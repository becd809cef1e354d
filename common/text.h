#pragma once

#include <string>

/// Text in files and on command lines: plain ASCII, whatever the locale.
namespace zavra
{

inline char lower_case(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline void make_lower_case(std::string& text)
{
    for (char& c : text)
        c = lower_case(c);
}

/// Without the blanks at both ends.
inline std::string trimmed(const std::string& text)
{
    constexpr const char* blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}
