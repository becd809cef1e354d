#include "journal.h"

#include "../../catalogue/commands.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <poll.h>
#include <stdexcept>
#include <system_error>
#include <unistd.h>

namespace zavra::simulator
{

namespace
{

constexpr std::size_t max_waiting_bytes = std::size_t{16} << 20U;

/// Names the command and its fields. Several commands may share a request: all of them are named then, and a reply's
/// length tells which one was answered.
void describe(Json& line, const Transaction& transaction)
{
    const std::span<const unsigned char> bytes = transaction.bytes;
    const Request_Frame request = take_apart(transaction.is_read ? transaction.request : transaction.bytes);
    auto commands = find_requests(request);
    if (transaction.is_read && !bytes.empty())
        std::erase_if(commands,
                      [&](const auto* command) { return wire_bytes(command->response) + crc_bytes != bytes.size(); });
    if (commands.empty())
        return;
    line["command"] = names_of(commands);
    if (bytes.empty())
        return;
    if (!crc_is_right(bytes))
        line["crc"] = "wrong";
    else if (transaction.is_read)
        line["fields"] = commands.front()->decode_response(bytes.first(bytes.size() - crc_bytes));
    else
        line["fields"] = commands.front()->decode_request(request.payload);
}

}

Json journal_entry(const std::string& bus, unsigned int address, const Transaction& transaction)
{
    Json line;
    line["time_msec"] = transaction.time.count();
    line["bus"] = bus;
    line["address"] = address;
    line["direction"] = transaction.is_read ? "read" : "write";
    line["bytes"] = json::hexadecimal(transaction.bytes);
    if (!transaction.unit_side.empty())
        line["unit_bytes"] = json::hexadecimal(transaction.unit_side);
    describe(line, transaction);
    if (transaction.fault)
        line["fault"] = name_of(*transaction.fault);
    if (transaction.error != 0)
        line["error"] = std::generic_category().message(transaction.error);
    return line;
}

std::string journal_line(const std::string& bus, unsigned int address, const Transaction& transaction)
{
    return journal_entry(bus, address, transaction).dump();
}

Journal::Journal(const std::string& path) : path_(path)
{
    if (path == "-") {
        file_ = File_Descriptor(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0));
    } else {
        std::error_code ignored;
        // Opening a pipe to write only would wait for a reader.
        const int access = std::filesystem::is_fifo(path, ignored) ? O_RDWR : O_WRONLY;
        file_ = File_Descriptor(::open(path.c_str(), access | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    }
    if (!file_)
        throw std::runtime_error("Journal " + path + ": " + std::generic_category().message(errno));
}

Journal::~Journal()
{
    flush(1000);
    if (file_ && !waiting_.empty())
        end("nobody reads it");
}

void Journal::write(const std::string& line)
{
    const std::lock_guard guard(mutex_);
    if (!file_)
        return;
    waiting_ += line + '\n';
    flush(0);
    if (waiting_.size() > max_waiting_bytes)
        end("nobody reads it");
}

/// Writes what a pipe takes without making us wait, or what it takes as long as it goes on within the patience.
void Journal::flush(int patience_msec)
{
    std::size_t written = 0;
    while (file_ && written < waiting_.size()) {
        pollfd ready{file_.get(), POLLOUT, 0};
        if (::poll(&ready, 1, patience_msec) == 0)
            break;
        // A pipe that is ready takes that many bytes.
        const std::size_t size = std::min<std::size_t>(PIPE_BUF, waiting_.size() - written);
        const ssize_t taken = ::write(file_.get(), waiting_.data() + written, size);
        if (taken >= 0)
            written += static_cast<std::size_t>(taken);
        else if (errno != EINTR)
            end(std::generic_category().message(errno));
    }
    waiting_.erase(0, written);
}

void Journal::end(const std::string& reason)
{
    std::cerr << "The journal " + path_ + " ends here: " + reason + "\n" << std::flush;
    file_ = File_Descriptor();
}

}
