#pragma once

#include "bus_device.h"

#include <filesystem>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace zavra
{

/// A file descriptor that closes itself.
class Descriptor
{
public:
    explicit Descriptor(int descriptor = -1) : descriptor_(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : descriptor_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();

    int get() const { return descriptor_; }
    int release();

private:
    int descriptor_;
};

/// A simulated I2C bus: a Unix socket of type SOCK_SEQPACKET named after the bus, behind it devices at their addresses.
/// One transaction is one datagram each way; transactions of all clients are served in order, in a thread of its own.
///
///     Simulated_Unit unit;
///     Bus_Server bus{unit, directory, "i2c-0"};
class Bus_Server
{
public:
    using Devices = std::map<unsigned int, Bus_Device*>;
    static constexpr unsigned int default_address = 10;

    /// Serves from now on. Takes over the socket of a server that died.
    /// @throws std::runtime_error  when another server is alive there, or the socket cannot be made
    Bus_Server(const std::filesystem::path& directory, const std::string& bus, Devices devices);

    /// Serves a single device.
    Bus_Server(Bus_Device& device, const std::filesystem::path& directory, const std::string& bus,
               unsigned int address = default_address)
        : Bus_Server(directory, bus, {{address, &device}})
    {
    }

    /// Stops serving and removes the socket.
    ~Bus_Server();

    Bus_Server(const Bus_Server&) = delete;
    Bus_Server& operator=(const Bus_Server&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    void serve();
    bool serve_client(int client);
    std::vector<unsigned char> transact(const unsigned char* request, std::size_t size);

    std::filesystem::path path_;
    Devices devices_;
    Descriptor listener_;
    Descriptor stop_;
    std::vector<Descriptor> clients_;
    std::thread thread_;
};

}
