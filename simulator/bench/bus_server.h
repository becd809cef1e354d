#pragma once

#include "../unit/bus_device.h"
#include "packet_server.h"

namespace zavra::simulator
{

/// A simulated I2C bus: a Unix socket of type SOCK_SEQPACKET named after the bus, behind it devices at their addresses.
/// One transaction is one datagram each way; transactions of all clients are served in order, in a thread of its own.
///
///     Simulated_Unit unit;
///     Bus_Server bus{unit, directory, "i2c-0"};
class Bus_Server
{
public:
    using Devices = Bus_Devices;
    static constexpr unsigned int default_address = 10;

    /// Serves from now on. Takes over the socket of a server that died.
    /// @throws std::runtime_error  when another server is alive there, or the socket cannot be made
    Bus_Server(const std::filesystem::path& directory, const std::string& bus, const Devices& devices);

    /// Serves a single device.
    Bus_Server(Bus_Device& device, const std::filesystem::path& directory, const std::string& bus,
               unsigned int address = default_address)
        : Bus_Server(directory, bus, {{address, &device}})
    {
    }

    /// Of the socket, which goes away when the object ends.
    const std::filesystem::path& path() const { return server_.path(); }

private:
    Packet_Server server_;
};

}
