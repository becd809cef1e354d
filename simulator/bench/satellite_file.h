#pragma once

#include "../satellite/satellite_settings.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zavra::simulator
{

/// A satellite as a TOML file describes it; docs/satellite.md lists the tables and keys.
struct Satellite_File
{
    /// @throws std::runtime_error  with file and line, for what cannot be read, is unknown, or is no satellite
    explicit Satellite_File(const std::filesystem::path& file);

    Satellite_Settings settings;
    std::vector<std::string> warnings; ///< What makes no error but little sense, with file and line
};

}
