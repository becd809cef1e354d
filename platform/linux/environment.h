#pragma once

#include <cstdlib>

namespace zavra::platform
{

/// What an environment variable says, if it is set. A build for flight does not look at the environment.
inline const char* setting([[maybe_unused]] const char* variable, const char* otherwise)
{
    if constexpr (VELM_SIMULATED_BUS) {
        if (const char* value = std::getenv(variable)) {
            return value;
        }
    }
    return otherwise;
}

}
