#include "packet_server.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <stdexcept>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <utility>

namespace zavra::simulator
{

namespace
{

constexpr int full_wait_msec = 100;

}

Packet_Server::Packet_Server(const std::string& what, std::filesystem::path path, Handler handler)
    : handler_(std::move(handler)),
      listener_(what, std::move(path), SOCK_SEQPACKET),
      stop_(::eventfd(0, EFD_CLOEXEC))
{
    if (!stop_)
        throw std::runtime_error(what + " server: " + std::strerror(errno));
    thread_ = std::thread([this] { serve(); });
}

Packet_Server::~Packet_Server()
{
    ::eventfd_write(stop_.get(), 1);
    thread_.join();
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
            File_Descriptor client = listener_.accept();
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
