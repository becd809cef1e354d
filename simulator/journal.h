#pragma once

#include "bus_server.h"
#include "fault_injector.h"

#include <mutex>
#include <string>

namespace zavra
{

/// One JSON object per transaction, one per line:
///
///     {"time_msec":1200,"bus":"i2c-0","address":10,"direction":"write","bytes":"02100800000000000000010262",
///      "command":"Set_Epoch_Time","fields":{"epoch_time_msec":258},"fault":"nak-write","error":"No such device or
///      address"}
std::string journal_line(const std::string& bus, unsigned int address, const Transaction& transaction);

/// Writes lines to a file, "-" for standard output. A file that is there is overwritten. When a line cannot be written
/// (the disk is full, the pipe is closed) the journal ends with a message on standard error and the simulation goes on.
/// A program that may write into a pipe ignores SIGPIPE.
class Journal
{
public:
    /// @throws std::runtime_error  when the file cannot be opened
    explicit Journal(const std::string& path);

    void write(const std::string& line);

private:
    std::mutex mutex_; // the buses of one program may share it
    std::string path_;
    Descriptor file_;
};

}
