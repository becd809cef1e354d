#pragma once

#include "unix_listener.h"

#include <functional>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace zavra::simulator
{

/// A Unix socket of type SOCK_SEQPACKET on which each packet is answered by one, those of all clients in order, in a
/// thread of its own.
class Packet_Server
{
public:
    using Handler = std::function<std::vector<unsigned char>(std::span<const unsigned char>)>;
    static constexpr std::size_t max_packet_bytes = 1 + 8192; // what the Linux i2c-dev driver takes, and an address

    /// Serves from now on. Takes over the socket of a server that died.
    /// @param what  what messages call it, "Bus"
    /// @throws std::runtime_error  when another server is alive there, or the socket cannot be made
    Packet_Server(const std::string& what, std::filesystem::path path, Handler handler);

    /// Stops serving and removes the socket.
    ~Packet_Server();

    Packet_Server(const Packet_Server&) = delete;
    Packet_Server& operator=(const Packet_Server&) = delete;

    const std::filesystem::path& path() const { return listener_.path(); }

private:
    void serve();
    bool serve_client(int client);

    Handler handler_;
    Unix_Listener listener_;
    File_Descriptor stop_;
    std::vector<File_Descriptor> clients_;
    std::thread thread_;
};

}
