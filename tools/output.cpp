#include "output.h"
#include "failure.h"
#include "moment.h"

#include <algorithm>
#include <cerrno>
#include <ostream>

#include <unistd.h>

namespace zavra::tools
{

namespace
{

std::string csv_cell(const std::string& text)
{
    if (text.find_first_of(",\"\n\r") == std::string::npos)
        return text;
    std::string cell = "\"";
    for (const char c : text)
        cell += c == '"' ? std::string("\"\"") : std::string(1, c);
    return cell + '"';
}

std::string host_time()
{
    return utc(host_epoch_msec());
}

}

std::string text_with_unit(const Leaf& leaf, const Json& value)
{
    std::string text = text_of(leaf, value);
    if (!leaf.unit.empty())
        text += ' ' + leaf.unit;
    if (is_epoch_time(leaf)) {
        const auto date = utc(value.at(Json::json_pointer(leaf.pointer)).get<unsigned long long>());
        text += date.empty() ? "" : "  (" + date + ')';
    }
    return text;
}

void write_rows(std::ostream& stream, const char* indent, const Leaves& leaves,
                const std::function<std::string(const Leaf&)>& text)
{
    std::size_t width = 0;
    for (const Leaf& leaf : leaves)
        width = std::max(width, leaf.path.size());
    for (const Leaf& leaf : leaves)
        stream << indent << leaf.path << std::string(width - leaf.path.size() + 2, ' ') << text(leaf) << '\n';
}

std::string json_text(const Json& value, int indent)
{
    return value.dump(indent, ' ', true, Json::error_handler_t::replace);
}

void Answer_Writer::write(const Answer& answer)
{
    switch (format_) {
    case Format::text:
        write_text(answer);
        break;
    case Format::json:
        write_json(answer);
        break;
    case Format::csv:
        write_csv(answer);
        break;
    }
    first_ = false;
    stream_.flush();
}

void Answer_Writer::write_text(const Answer& answer)
{
    if (repeated_)
        stream_ << (first_ ? "" : "\n") << "-- " << host_time() << '\n';
    write_rows(stream_, "", answer.leaves, [&](const Leaf& leaf) { return text_with_unit(leaf, answer.value); });
}

void Answer_Writer::write_json(const Answer& answer)
{
    if (!repeated_) {
        stream_ << json_text(answer.value) << '\n';
        return;
    }
    Json line = Json::object();
    line["time"] = host_time();
    line.update(answer.value);
    stream_ << json_text(line, -1) << '\n';
}

void Answer_Writer::write_csv(const Answer& answer)
{
    if (first_) {
        stream_ << "time";
        for (const Leaf& leaf : answer.leaves)
            stream_ << ',' << csv_cell(leaf.path);
        stream_ << '\n';
    }
    stream_ << host_time();
    for (const Leaf& leaf : answer.leaves)
        stream_ << ',' << csv_cell(text_of(leaf, answer.value));
    stream_ << '\n';
}

Descriptor_Buffer::int_type Descriptor_Buffer::overflow(int_type character)
{
    if (!traits_type::eq_int_type(character, traits_type::eof()))
        pending_ += traits_type::to_char_type(character);
    return traits_type::not_eof(character);
}

std::streamsize Descriptor_Buffer::xsputn(const char* text, std::streamsize size)
{
    pending_.append(text, static_cast<std::size_t>(size));
    return size;
}

int Descriptor_Buffer::sync()
{
    while (!pending_.empty()) {
        const ssize_t written = ::write(descriptor_, pending_.data(), pending_.size());
        if (written > 0) {
            pending_.erase(0, static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            pending_.clear();
            throw Output_Failure(errno);
        }
    }
    return 0;
}

}
