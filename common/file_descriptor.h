#pragma once

#include <utility>

#include <unistd.h>

namespace zavra
{

/// Owns a file descriptor; negative means none.
class File_Descriptor
{
public:
    File_Descriptor() = default;
    explicit File_Descriptor(int descriptor) : descriptor_(descriptor) {}
    File_Descriptor(File_Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    File_Descriptor& operator=(File_Descriptor&& other) noexcept
    {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~File_Descriptor()
    {
        if (*this) {
            ::close(descriptor_);
        }
    }

    explicit operator bool() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }

private:
    int descriptor_ = -1;
};

}
