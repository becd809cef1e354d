#include "packet_server.h"

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

namespace zavra::simulator
{

namespace
{

constexpr int full_wait_msec = 100;

[[noreturn]] void fail(const std::string& what)
{
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

sockaddr_un socket_address(const std::string& name, const std::filesystem::path& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.native().size() >= sizeof address.sun_path)
        throw std::runtime_error(name + ": path longer than " + std::to_string(sizeof address.sun_path - 1) +
                                 " characters");
    path.native().copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

const sockaddr* generic(const sockaddr_un& address)
{
    return reinterpret_cast<const sockaddr*>(&address);
}

File_Descriptor new_socket(const std::string& name)
{
    File_Descriptor descriptor{::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
    if (!descriptor)
        fail(name);
    return descriptor;
}

/// Makes the name free: a socket that nobody listens on is left over from a server that died.
void remove_stale_socket(const std::string& name, const std::filesystem::path& path, const sockaddr_un& address)
{
    struct stat status
    {
    };
    if (::lstat(path.c_str(), &status) != 0)
        return;
    if (!S_ISSOCK(status.st_mode))
        throw std::runtime_error(name + ": the name is taken by something else than a socket");
    const File_Descriptor probe = new_socket(name);
    if (::connect(probe.get(), generic(address), sizeof address) == 0 || errno != ECONNREFUSED)
        throw std::runtime_error(name + ": another simulated bus is running there");
    std::filesystem::remove(path);
}

}

Packet_Server::Packet_Server(const std::string& what, std::filesystem::path path, Handler handler)
    : path_(std::move(path)),
      handler_(std::move(handler)),
      listener_(new_socket(what + " socket")),
      stop_(::eventfd(0, EFD_CLOEXEC))
{
    if (!stop_)
        fail(what + " server");
    const std::string name = what + " socket " + path_.string();
    const sockaddr_un address = socket_address(name, path_);
    const std::filesystem::path unfinished = path_.string() + '~';
    const sockaddr_un unfinished_address = socket_address(name, unfinished);

    // Two servers that start at the same time must not both take over the same stale socket.
    const std::filesystem::path directory = path_.parent_path();
    const File_Descriptor lock{::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (!lock || ::flock(lock.get(), LOCK_EX) != 0)
        fail(what + " directory " + directory.string());
    remove_stale_socket(name, path_, address);
    // The name is not there before somebody listens.
    ::unlink(unfinished.c_str());
    if (::bind(listener_.get(), generic(unfinished_address), sizeof unfinished_address) != 0)
        fail(name);
    if (::listen(listener_.get(), SOMAXCONN) != 0 || ::rename(unfinished.c_str(), path_.c_str()) != 0) {
        const int error = errno;
        ::unlink(unfinished.c_str());
        errno = error;
        fail(name);
    }
    thread_ = std::thread([this] { serve(); });
}

Packet_Server::~Packet_Server()
{
    ::eventfd_write(stop_.get(), 1);
    thread_.join();
    ::unlink(path_.c_str());
}

void Packet_Server::serve()
{
    bool full = false; // who knocks cannot be let in for a while: there are no descriptors left, say
    for (;;) {
        std::vector<pollfd> watched{{stop_.get(), POLLIN, 0}, {full ? -1 : listener_.get(), POLLIN, 0}};
        for (const File_Descriptor& client : clients_)
            watched.push_back({client.get(), POLLIN, 0});
        if (::poll(watched.data(), watched.size(), std::exchange(full, false) ? full_wait_msec : -1) < 0)
            continue; // EINTR; there is nothing else that could go wrong here
        if (watched[0].revents != 0)
            return;

        std::vector<int> gone;
        for (std::size_t i = 2; i < watched.size(); ++i)
            if (watched[i].revents != 0 && !serve_client(watched[i].fd))
                gone.push_back(watched[i].fd);
        std::erase_if(clients_, [&](const File_Descriptor& client) {
            return std::find(gone.begin(), gone.end(), client.get()) != gone.end();
        });

        if (watched[1].revents != 0) {
            File_Descriptor client{::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK)};
            full = !client && errno != EAGAIN;
            if (client)
                clients_.push_back(std::move(client));
        }
    }
}

bool Packet_Server::serve_client(int client)
{
    unsigned char request[max_packet_bytes];
    const ssize_t size = ::recv(client, request, sizeof request, 0);
    if (size < 0)
        return errno == EAGAIN || errno == EINTR;
    if (size == 0)
        return false;
    const auto reply = handler_({request, static_cast<std::size_t>(size)});
    // A client that does not take its replies is let go: it must not hold up the others.
    return ::send(client, reply.data(), reply.size(), MSG_NOSIGNAL) >= 0;
}

}
