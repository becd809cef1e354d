#pragma once

#include <cstdlib>
#include <string>

#include <unistd.h>

namespace zavra
{

/// Where simulated buses are: where applications look already, or else a directory of the user's own.
inline std::string default_bus_directory()
{
    if (const char* directory = std::getenv("VELM_I2C_BUS_DIR"))
        return directory;
    if (const char* directory = std::getenv("XDG_RUNTIME_DIR"))
        return std::string(directory) + "/zavra";
    return "/tmp/zavra-" + std::to_string(::getuid());
}

}
