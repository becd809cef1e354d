#include <VELM_API_Debug.h>

#include "environment.h"

#include <cstddef>
#include <iostream>
#include <memory>

namespace
{

/// One bit for each level that VELM_DEBUG names with its digit.
unsigned int chosen_levels()
{
    unsigned int levels = 0;
    for (const char* c = zavra::platform::setting("VELM_DEBUG", "4"); *c != '\0'; ++c) {
        if (*c >= '0' && *c <= '9') {
            levels |= 1U << (*c - '0');
        }
    }
    return levels;
}

std::ostream& silence()
{
    // Never destroyed: static objects write debug lines in their destructors, when the thread's own objects are gone.
    alignas(std::ostream) thread_local std::byte storage[sizeof(std::ostream)];
    thread_local std::ostream* const stream = std::construct_at(reinterpret_cast<std::ostream*>(storage), nullptr);
    return *stream;
}

}

std::ostream& VELM_API_Debug::dout(Level level)
{
    static const unsigned int levels = chosen_levels();
    return level <= 9 && (levels >> level & 1U) != 0 ? std::cerr : silence();
}
