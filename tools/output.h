#pragma once

#include "leaf.h"

#include <functional>
#include <iosfwd>
#include <streambuf>
#include <string>

namespace zavra::tools
{

enum class Format { text, json, csv };

/// What a command found out.
struct Answer
{
    Leaves leaves;
    Json value = Json::object();
};

/// Writes answers in the format that was asked for: aligned text with units for people, JSON or CSV for programs.
class Answer_Writer
{
public:
    /// @param repeated  several answers follow each other, each with the time of day; JSON then has one line for each
    Answer_Writer(std::ostream& stream, Format format, bool repeated)
        : stream_(stream),
          format_(format),
          repeated_(repeated)
    {
    }

    void write(const Answer& answer);

private:
    void write_text(const Answer& answer);
    void write_json(const Answer& answer);
    void write_csv(const Answer& answer);

    std::ostream& stream_;
    Format format_;
    bool repeated_;
    bool first_ = true;
};

/// One line for each leaf: its path and, aligned, what text() says of it.
void write_rows(std::ostream& stream, const char* indent, const Leaves& leaves,
                const std::function<std::string(const Leaf&)>& text);

/// "value unit", and the date where a number counts milliseconds since 1970.
std::string text_with_unit(const Leaf& leaf, const Json& value);

/// JSON in ASCII, which has no control characters that a terminal would obey.
/// @param indent  negative: on one line
std::string json_text(const Json& value, int indent = 2);

/// A stream's way to a file descriptor. What cannot be written is thrown as Output_Failure; the stream must be told to
/// pass exceptions on (exceptions(std::ios::badbit)).
class Descriptor_Buffer : public std::streambuf
{
public:
    explicit Descriptor_Buffer(int descriptor) : descriptor_(descriptor) {}

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;

private:
    int descriptor_;
    std::string pending_;
};

}
