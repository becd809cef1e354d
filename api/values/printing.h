#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <ostream>
#include <string>

/// @file
/// What == and << of the records are made of.

namespace velm_zavra
{
namespace detail
{

template <class T>
bool same(const T& a, const T& b)
{
    return a == b;
}

template <class T, std::size_t count>
bool same(const T (&a)[count], const T (&b)[count])
{
    for (std::size_t i = 0; i < count; ++i)
        if (!same(a[i], b[i]))
            return false;
    return true;
}

template <class T>
void print(std::ostream& out, const T& value)
{
    out << value;
}

inline void print(std::ostream& out, unsigned char value)
{
    out << static_cast<unsigned int>(value);
}

inline void print(std::ostream& out, const std::string& text)
{
    out << '"' << text << '"';
}

template <std::size_t size>
void print(std::ostream& out, const char (&text)[size])
{
    print(out, std::string(text, std::find(text, text + size, '\0')));
}

template <class T, std::size_t count>
void print(std::ostream& out, const T (&values)[count])
{
    for (std::size_t i = 0; i < count; ++i) {
        out << (i == 0 ? "[" : ", ");
        print(out, values[i]);
    }
    out << ']';
}

/// Prints a record's members, {name: value, ...}, as the stream is set up.
class Record_Printer
{
public:
    explicit Record_Printer(std::ostream& out) : out_(out), before_("{") {}

    template <class T>
    Record_Printer& operator()(const char* name, const T& value)
    {
        out_ << before_ << name << ": ";
        print(out_, value);
        before_ = ", ";
        return *this;
    }

    std::ostream& end() { return out_ << '}'; }

private:
    std::ostream& out_;
    const char* before_;
};

}
}
