#pragma once

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

#include <stdlib.h>

namespace zavra
{

/// A directory of one's own among the system's temporary ones, removed with everything in it.
class Temporary_Directory
{
public:
    /// @param name  what its name starts with
    /// @throws std::runtime_error  when it cannot be made
    explicit Temporary_Directory(const std::string& name)
    {
        const std::filesystem::path like = std::filesystem::temp_directory_path() / (name + "-XXXXXX");
        std::string made = like;
        if (::mkdtemp(made.data()) == nullptr)
            throw std::runtime_error("cannot make a directory like " + like.string() + ": " +
                                     std::generic_category().message(errno));
        path_ = made;
    }
    ~Temporary_Directory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Temporary_Directory(const Temporary_Directory&) = delete;
    Temporary_Directory& operator=(const Temporary_Directory&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

}
