#include "bus_server.h"

#include <cerrno>

namespace zavra::simulator
{

namespace
{

/// The request is the address byte, then the bytes to write or the length to read; the reply is 0 or an errno value,
/// then the bytes read.
std::vector<unsigned char> transact(const Bus_Server::Devices& devices, std::span<const unsigned char> request)
{
    const bool is_read = (request[0] & 1U) != 0;
    const auto body = request.subspan(1);
    if (is_read && body.size() != 2)
        return {EINVAL};
    std::vector<unsigned char> bytes(body.begin(), body.end());
    if (is_read)
        bytes.resize(std::size_t{body[0]} << 8U | body[1]);
    const int error = transfer(devices, request[0] >> 1U, is_read, bytes);
    if (error != 0 || !is_read)
        bytes.clear();
    bytes.insert(bytes.begin(), static_cast<unsigned char>(error));
    return bytes;
}

}

Bus_Server::Bus_Server(const std::filesystem::path& directory, const std::string& bus, const Devices& devices)
    : server_("Bus", directory / bus,
              [devices](std::span<const unsigned char> request) { return transact(devices, request); })
{
}

}
