#include "bus_server.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/eventfd.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace zavra
{

namespace
{

constexpr std::size_t max_transaction_bytes = 8192; // what the Linux i2c-dev driver takes

[[noreturn]] void fail(const std::string& what)
{
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

sockaddr_un socket_address(const std::filesystem::path& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.native().size() >= sizeof address.sun_path)
        throw std::runtime_error("Bus socket " + path.string() + ": path longer than " +
                                 std::to_string(sizeof address.sun_path - 1) + " characters");
    path.native().copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

const sockaddr* generic(const sockaddr_un& address)
{
    return reinterpret_cast<const sockaddr*>(&address);
}

Descriptor new_socket()
{
    Descriptor descriptor{::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
    if (descriptor.get() < 0)
        fail("Bus socket");
    return descriptor;
}

/// Makes the name free: a socket that nobody listens on is left over from a server that died.
void remove_stale_socket(const std::filesystem::path& path, const sockaddr_un& address)
{
    struct stat status
    {
    };
    if (::lstat(path.c_str(), &status) != 0)
        return;
    if (!S_ISSOCK(status.st_mode))
        throw std::runtime_error("Bus socket " + path.string() + ": the name is taken by something else than a socket");
    const Descriptor probe = new_socket();
    if (::connect(probe.get(), generic(address), sizeof address) == 0 || errno != ECONNREFUSED)
        throw std::runtime_error("Bus socket " + path.string() + ": another simulated bus is running there");
    std::filesystem::remove(path);
}

}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept
{
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

Descriptor::~Descriptor()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

int Descriptor::release()
{
    return std::exchange(descriptor_, -1);
}

Bus_Server::Bus_Server(const std::filesystem::path& directory, const std::string& bus, Devices devices)
    : path_(directory / bus),
      devices_(std::move(devices)),
      listener_(new_socket()),
      stop_(::eventfd(0, EFD_CLOEXEC))
{
    if (stop_.get() < 0)
        fail("Bus server");
    const sockaddr_un address = socket_address(path_);

    // Two servers that start at the same time must not both take over the same stale socket.
    const Descriptor lock{::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (lock.get() < 0 || ::flock(lock.get(), LOCK_EX) != 0)
        fail("Bus directory " + directory.string());
    remove_stale_socket(path_, address);
    if (::bind(listener_.get(), generic(address), sizeof address) != 0)
        fail("Bus socket " + path_.string());
    if (::listen(listener_.get(), SOMAXCONN) != 0) {
        const int error = errno;
        ::unlink(path_.c_str());
        errno = error;
        fail("Bus socket " + path_.string());
    }
    thread_ = std::thread([this] { serve(); });
}

Bus_Server::~Bus_Server()
{
    ::eventfd_write(stop_.get(), 1);
    thread_.join();
    ::unlink(path_.c_str());
}

void Bus_Server::serve()
{
    for (;;) {
        std::vector<pollfd> watched{{stop_.get(), POLLIN, 0}, {listener_.get(), POLLIN, 0}};
        for (const Descriptor& client : clients_)
            watched.push_back({client.get(), POLLIN, 0});
        if (::poll(watched.data(), watched.size(), -1) < 0)
            continue; // EINTR; there is nothing else that could go wrong here
        if (watched[0].revents != 0)
            return;

        std::vector<int> gone;
        for (std::size_t i = 2; i < watched.size(); ++i)
            if (watched[i].revents != 0 && !serve_client(watched[i].fd))
                gone.push_back(watched[i].fd);
        std::erase_if(clients_, [&](const Descriptor& client) {
            return std::find(gone.begin(), gone.end(), client.get()) != gone.end();
        });

        if (watched[1].revents != 0)
            if (Descriptor client{::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK)};
                client.get() >= 0)
                clients_.push_back(std::move(client));
    }
}

bool Bus_Server::serve_client(int client)
{
    unsigned char request[1 + max_transaction_bytes];
    const ssize_t size = ::recv(client, request, sizeof request, 0);
    if (size < 0)
        return errno == EAGAIN || errno == EINTR;
    if (size == 0)
        return false;
    const auto reply = transact(request, static_cast<std::size_t>(size));
    // A client that does not take its replies is let go: it must not hold up the others.
    return ::send(client, reply.data(), reply.size(), MSG_NOSIGNAL) >= 0;
}

std::vector<unsigned char> Bus_Server::transact(const unsigned char* request, std::size_t size)
{
    const bool is_read = (request[0] & 1U) != 0;
    const auto device = devices_.find(request[0] >> 1U);
    const std::span<const unsigned char> body{request + 1, size - 1};

    std::vector<unsigned char> bytes;
    int error = ENXIO;
    if (device != devices_.end()) {
        if (!is_read) {
            error = device->second->write(body);
        } else if (body.size() == 2) {
            bytes.resize(std::size_t{body[0]} << 8U | body[1]);
            error = device->second->read(bytes);
        } else {
            error = EINVAL;
        }
    }
    if (error != 0)
        bytes.clear();
    bytes.insert(bytes.begin(), static_cast<unsigned char>(error));
    return bytes;
}

}
