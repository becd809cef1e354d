#include "bus.h"
#include "file_descriptor.h"

#include <VELM_I2C_DEV.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <string>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace zavra::platform
{

namespace
{

using namespace std::chrono_literals;

/// The time that one transaction, or opening the bus, may take.
class Deadline
{
public:
    /// Milliseconds that are left; throws when none are.
    int left() const
    {
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(end_ - std::chrono::steady_clock::now());
        if (rest <= 0ms) {
            fail(ETIMEDOUT, "the simulated bus does not answer");
        }
        return static_cast<int>(rest.count());
    }

private:
    std::chrono::steady_clock::time_point end_ = std::chrono::steady_clock::now() + 2s;
};

/// A Unix socket that stands for a bus. Each transaction is one datagram each way: the request is the address byte,
/// then the bytes to write or the length to read; the reply is 0 or an errno value, then the bytes read.
class Simulated_Bus final : public Bus
{
public:
    Simulated_Bus(const std::string& path, unsigned int address) : address_(static_cast<unsigned char>(address << 1))
    {
        server_.sun_family = AF_UNIX;
        if (path.size() >= sizeof(server_.sun_path)) {
            fail(ENAMETOOLONG);
        }
        std::copy(path.begin(), path.end(), server_.sun_path);
        connect(Deadline());
    }

    void write(std::span<const unsigned char> data) override { transact(address_, data, {}); }

    void read(std::span<unsigned char> data) override
    {
        const std::array length{static_cast<unsigned char>(data.size() >> 8), static_cast<unsigned char>(data.size())};
        transact(static_cast<unsigned char>(address_ | 1U), length, data);
    }

private:
    sockaddr_un server_ = {};
    unsigned char address_;
    File_Descriptor socket_;

    void connect(const Deadline& deadline)
    {
        socket_ = File_Descriptor(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        if (!socket_) {
            fail(errno);
        }
        while (::connect(socket_.get(), reinterpret_cast<const sockaddr*>(&server_), sizeof(server_)) < 0) {
            if (errno != EAGAIN && errno != EINTR) {
                fail(errno);
            }
            // The server's queue of connections is full, and nothing would wake a poll().
            ::poll(nullptr, 0, std::min(deadline.left(), 10));
        }
    }

    /// Calls send or receive as soon as the socket is ready for it.
    template <class Call>
    ssize_t when_ready(short event, const Deadline& deadline, Call call)
    {
        for (;;) {
            const ssize_t size = call();
            if (size > 0) {
                return size;
            }
            if (size == 0 || errno == EPIPE || errno == ECONNRESET) {
                throw VELM_I2C_DEV_Exception("the simulated bus has gone away");
            }
            if (errno != EAGAIN && errno != EINTR) {
                fail(errno);
            }
            pollfd ready{socket_.get(), event, 0};
            ::poll(&ready, 1, deadline.left());
        }
    }

    unsigned char exchange(unsigned char address, std::span<const unsigned char> data, std::span<unsigned char> answer)
    {
        const Deadline deadline;
        if (!socket_) {
            connect(deadline);
        }
        std::array request{iovec{&address, 1}, iovec{const_cast<unsigned char*>(data.data()), data.size()}};
        msghdr message = {};
        message.msg_iov = request.data();
        message.msg_iovlen = request.size();
        when_ready(POLLOUT, deadline, [&] { return ::sendmsg(socket_.get(), &message, MSG_NOSIGNAL); });

        unsigned char status = 0;
        std::array reply{iovec{&status, 1}, iovec{answer.data(), answer.size()}};
        message.msg_iov = reply.data();
        const auto size = static_cast<std::size_t>(
            when_ready(POLLIN, deadline, [&] { return ::recvmsg(socket_.get(), &message, MSG_TRUNC); }));
        if (status == 0 && size != 1 + answer.size()) {
            throw VELM_I2C_DEV_Exception("the simulated bus answered with " + std::to_string(size - 1) +
                                         " data bytes instead of " + std::to_string(answer.size()));
        }
        return status;
    }

    void transact(unsigned char address, std::span<const unsigned char> data, std::span<unsigned char> answer)
    {
        unsigned char status = 0;
        try {
            status = exchange(address, data, answer);
        } catch (...) {
            // A late answer must not meet the next transaction, which therefore opens a connection of its own.
            socket_ = File_Descriptor();
            throw;
        }
        if (status != 0) {
            fail(status);
        }
    }
};

}

std::unique_ptr<Bus> open_simulated_bus(const std::string& path, unsigned int address)
{
    return std::make_unique<Simulated_Bus>(path, address);
}

}
