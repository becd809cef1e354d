#pragma once

#include "../../common/file_descriptor.h"
#include "sample.h"

#include <string>

namespace zavra::simulator
{

/// Writes what a satellite does to a CSV file, "-" for standard output: a line of names, then a line per interval with
/// the truth of that moment, what its actuators do, the unit's mode, and what the unit's software believes, empty where
/// it believes nothing. Numbers have as many digits as they need to be read back the same. A file that is there is
/// overwritten. When a line cannot be written the record ends with a message on standard error, and the simulation goes
/// on.
class Recorder
{
public:
    /// @throws std::runtime_error  when the file cannot be opened
    /// @throws std::invalid_argument  unless the interval is a multiple of a control tick
    Recorder(const std::string& path, Clock::Time interval);

    /// Writes what is left.
    ~Recorder() { flush(); }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// Called in each control tick.
    void record(const Sample& sample);

    void flush();

    /// Lines below the names.
    unsigned long long lines() const { return lines_; }
    bool ended() const { return !file_; }

private:
    std::string path_;
    Clock::Time interval_;
    File_Descriptor file_;
    std::string waiting_;
    unsigned long long lines_ = 0;
};

}
