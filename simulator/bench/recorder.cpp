#include "recorder.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <fcntl.h>
#include <iostream>
#include <stdexcept>
#include <system_error>
#include <unistd.h>

namespace zavra::simulator
{

namespace
{

constexpr std::size_t buffer_bytes = 1U << 16U;

std::string names()
{
    std::string line;
    for (const std::string_view name : record_columns)
        (line += name) += ',';
    line.back() = '\n';
    return line;
}

/// Nothing where there is no number.
void append(std::string& text, double number, bool whole)
{
    if (std::isnan(number))
        return;
    char digits[32];
    char* const end = digits + sizeof digits;
    const auto written = whole ? std::to_chars(digits, end, static_cast<unsigned long long>(number))
                               : std::to_chars(digits, end, number);
    text.append(digits, written.ptr);
}

}

Recorder::Recorder(const std::string& path, Clock::Time interval)
    : path_(path),
      interval_(interval),
      file_(path == "-" ? ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)
                        : ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)),
      waiting_(names())
{
    if (!file_)
        throw std::runtime_error("Record " + path + ": " + std::generic_category().message(errno));
    if (interval.count() <= 0 || interval % Satellite_World::tick_length != Clock::Time(0))
        throw std::invalid_argument("The interval of a record is a multiple of " +
                                    std::to_string(Satellite_World::tick_length.count()) + " ms");
}

void Recorder::record(const Sample& sample)
{
    const Clock::Time time(std::llround(1000 * sample[column("time_s")]));
    if (ended() || time % interval_ != Clock::Time(0))
        return;
    for (std::size_t i = 0; i < record_columns.size(); ++i) {
        append(waiting_, sample[i], i == column("epoch_time_msec") || i == column("mode"));
        waiting_ += ',';
    }
    waiting_.back() = '\n';
    ++lines_;
    if (waiting_.size() >= buffer_bytes)
        flush();
}

void Recorder::flush()
{
    for (std::size_t written = 0; !ended() && written < waiting_.size();) {
        const ssize_t size = ::write(file_.get(), waiting_.data() + written, waiting_.size() - written);
        if (size >= 0) {
            written += static_cast<std::size_t>(size);
        } else if (errno != EINTR) {
            std::cerr << "The record " + path_ + " ends here: " + std::generic_category().message(errno) + "\n"
                      << std::flush;
            file_ = File_Descriptor();
        }
    }
    waiting_.clear();
}

}
