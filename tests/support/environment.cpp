
#include <stdlib.h>

// What the caller's environment says must not change what a test sees, nor what the programs it starts see.
[[maybe_unused]] static const bool environment_is_ours = [] {
    for (const char* variable : {"BASH_ENV", "COLUMNS", "LINES", "VELM_DEBUG", "VELM_I2C_BUS_DIR", "XDG_RUNTIME_DIR"})
        ::unsetenv(variable);
    return ::setenv("LC_ALL", "C.UTF-8", 1) == 0;
}();
