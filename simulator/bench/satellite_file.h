#pragma once

#include "../satellite/satellite_settings.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zavra::simulator
{

class Variation;

/// A satellite as a TOML file describes it; docs/satellite.md lists the tables and keys.
struct Satellite_File
{
    /// @param variation  changes the satellite, where there is one
    /// @throws std::runtime_error  with file and line, for what cannot be read, is unknown, or is no satellite
    explicit Satellite_File(const std::filesystem::path& file, Variation* variation = nullptr);

    Satellite_Settings settings;
    std::vector<std::string> warnings; ///< What makes no error but little sense, with file and line
};

}
