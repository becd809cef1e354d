#pragma once

#include "../../common/file_descriptor.h"

#include <cerrno>

namespace zavra::platform
{

using zavra::File_Descriptor;

/// Repeats a system call that a signal interrupts, up to nine times: no frame is sent for ever.
template <class Call>
auto uninterrupted(Call call)
{
    auto result = call();
    for (int repeats = 9; repeats > 0 && result < 0 && errno == EINTR; --repeats) {
        result = call();
    }
    return result;
}

}
