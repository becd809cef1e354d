#include "journal.h"

#include "../device/protocol/crc8.h"
#include "../device/protocol/frame.h"
#include "../device/protocol/json.h"

#include <cerrno>
#include <fcntl.h>
#include <iostream>
#include <stdexcept>
#include <system_error>
#include <unistd.h>

namespace zavra
{

namespace
{

using Bytes_View = std::span<const unsigned char>;

/// The commands that a request may be; none when it is no request.
std::vector<const Described_Command*> commands_of(Bytes_View request)
{
    if (request.size() < frame_header_bytes + crc_bytes)
        return {};
    const std::size_t size = request.size() - frame_header_bytes - crc_bytes;
    if (get_little_endian<unsigned short>(request.data() + 2) != size)
        return {};
    return find_requests(get<unsigned short>(request.data()), size);
}

/// Names the command and its fields. Several commands may share a request: all of them are named then, and a reply's
/// length tells which one was answered.
void describe(Json& line, const Transaction& transaction)
{
    auto commands = commands_of(transaction.is_read ? transaction.request : transaction.bytes);
    const Bytes_View bytes = transaction.bytes;
    if (transaction.is_read && !bytes.empty())
        std::erase_if(commands,
                      [&](const auto* command) { return command->response_size + crc_bytes != bytes.size(); });
    if (commands.empty())
        return;
    std::string names;
    for (const auto* command : commands)
        names += (names.empty() ? "" : " or ") + std::string(command->method);
    line["command"] = names;
    if (bytes.empty())
        return;
    if (crc8(bytes) != 0)
        line["crc"] = "wrong";
    else if (transaction.is_read)
        line["fields"] = commands.front()->decode_response(bytes.first(bytes.size() - crc_bytes));
    else
        line["fields"] = commands.front()->decode_request(
            bytes.subspan(frame_header_bytes, bytes.size() - frame_header_bytes - crc_bytes));
}

}

std::string journal_line(const std::string& bus, unsigned int address, const Transaction& transaction)
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
    return line.dump();
}

Journal::Journal(const std::string& path)
    : path_(path),
      file_(path == "-" ? ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)
                        : ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666))
{
    if (file_.get() < 0)
        throw std::runtime_error("Journal " + path + ": " + std::generic_category().message(errno));
}

void Journal::write(const std::string& line)
{
    const std::lock_guard guard(mutex_);
    const std::string text = line + '\n';
    for (std::size_t written = 0; file_.get() >= 0 && written < text.size();) {
        const ssize_t size = ::write(file_.get(), text.data() + written, text.size() - written);
        if (size >= 0) {
            written += static_cast<std::size_t>(size);
        } else if (errno != EINTR) {
            std::cerr << "The journal " + path_ + " ends here: " + std::generic_category().message(errno) + "\n"
                      << std::flush;
            file_ = Descriptor();
        }
    }
}

}
