#include "unix_listener.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace zavra::simulator
{

namespace
{

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

File_Descriptor new_socket(const std::string& name, int type)
{
    File_Descriptor descriptor{::socket(AF_UNIX, type | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
    if (!descriptor)
        fail(name);
    return descriptor;
}

/// Makes the name free: a socket that nobody listens on is left over from a server that died.
void remove_stale_socket(const std::string& name, const std::filesystem::path& path, const sockaddr_un& address,
                         int type)
{
    struct stat status
    {
    };
    if (::lstat(path.c_str(), &status) != 0)
        return;
    if (!S_ISSOCK(status.st_mode))
        throw std::runtime_error(name + ": the name is taken by something else than a socket");
    const File_Descriptor probe = new_socket(name, type);
    if (::connect(probe.get(), generic(address), sizeof address) == 0 || errno != ECONNREFUSED)
        throw std::runtime_error(name + ": another simulated bus is running there");
    std::filesystem::remove(path);
}

}

Unix_Listener::Unix_Listener(const std::string& what, std::filesystem::path path, int type)
    : path_(std::move(path)),
      socket_(new_socket(what + " socket", type))
{
    const std::string name = what + " socket " + path_.string();
    const sockaddr_un address = socket_address(name, path_);
    const std::filesystem::path unfinished = path_.string() + '~';
    const sockaddr_un unfinished_address = socket_address(name, unfinished);

    // Two servers that start at the same time must not both take over the same stale socket.
    const std::filesystem::path directory = path_.has_parent_path() ? path_.parent_path() : ".";
    const File_Descriptor lock{::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (!lock || ::flock(lock.get(), LOCK_EX) != 0)
        fail(what + " directory " + directory.string());
    remove_stale_socket(name, path_, address, type);
    // The name is not there before somebody listens.
    ::unlink(unfinished.c_str());
    if (::bind(socket_.get(), generic(unfinished_address), sizeof unfinished_address) != 0)
        fail(name);
    if (::listen(socket_.get(), SOMAXCONN) != 0 || ::rename(unfinished.c_str(), path_.c_str()) != 0) {
        const int error = errno;
        ::unlink(unfinished.c_str());
        errno = error;
        fail(name);
    }
}

Unix_Listener::~Unix_Listener()
{
    ::unlink(path_.c_str());
}

File_Descriptor Unix_Listener::accept() const
{
    return File_Descriptor(::accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
}

}
