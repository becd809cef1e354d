#pragma once

#include "../../catalogue/json.h"
#include "../../common/file_descriptor.h"
#include "fault_injector.h"

#include <mutex>
#include <string>

namespace zavra::simulator
{

/// One JSON object per transaction:
///
///     {"time_msec":1200,"bus":"i2c-0","address":10,"direction":"write","bytes":"02100800000000000000010262",
///      "command":"Set_Epoch_Time","fields":{"epoch_time_msec":258},"fault":"nak-write","error":"No such device or
///      address"}
Json journal_entry(const std::string& bus, unsigned int address, const Transaction& transaction);

/// The same as a line of text.
std::string journal_line(const std::string& bus, unsigned int address, const Transaction& transaction);

/// Writes lines to a file, "-" for standard output. A file that is there is overwritten. When a line cannot be written
/// (the disk is full, the pipe is closed) the journal ends with a message on standard error and the simulation goes on.
/// Where nobody reads a pipe, lines wait in memory, up to 16 MiB of them. A program ignores SIGPIPE and SIGXFSZ.
class Journal
{
public:
    /// @throws std::runtime_error  when the file cannot be opened
    explicit Journal(const std::string& path);

    /// Takes a second at most for what nobody has read yet.
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    void write(const std::string& line);

private:
    void flush(int patience_msec);
    void end(const std::string& reason);

    std::mutex mutex_; // the buses of one program may share it
    std::string path_;
    File_Descriptor file_;
    std::string waiting_;
};

}
