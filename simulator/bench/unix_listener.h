#pragma once

#include "../../common/file_descriptor.h"

#include <filesystem>
#include <string>

namespace zavra::simulator
{

/// A Unix socket that others connect to. Its name is there as long as the object is.
class Unix_Listener
{
public:
    /// Takes over the socket of a server that died.
    /// @param what  what messages call it, "Bus"
    /// @param type  SOCK_SEQPACKET or SOCK_STREAM
    /// @throws std::runtime_error  when another server is alive there, or the socket cannot be made
    Unix_Listener(const std::string& what, std::filesystem::path path, int type);
    ~Unix_Listener();
    Unix_Listener(const Unix_Listener&) = delete;
    Unix_Listener& operator=(const Unix_Listener&) = delete;

    /// Who knocked, on a socket that does not block; none, with errno, when that was nobody.
    File_Descriptor accept() const;

    /// To wait for somebody.
    int get() const { return socket_.get(); }

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
    File_Descriptor socket_;
};

}
