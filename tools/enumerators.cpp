#include "enumerators.h"

#include <VELM_ZAVRA_API.h>

namespace zavra::tools
{

namespace
{

constexpr Enumerator gyroscopes[] = {
    {"gyro_0", VELM_ZAVRA_API_GYRO_0},
    {"gyro_1", VELM_ZAVRA_API_GYRO_1},
    {"gyro_2", VELM_ZAVRA_API_GYRO_2},
};

constexpr Enumerator magnetometers[] = {{"magnetometer_0", VELM_ZAVRA_API_MAGNETOMETER_0}};

// The wheels are the components of a vector of speeds, too.
constexpr Enumerator wheels[] = {
    {"x", VELM_ZAVRA_API_REACTIONWHEEL_0},
    {"y", VELM_ZAVRA_API_REACTIONWHEEL_1},
    {"z", VELM_ZAVRA_API_REACTIONWHEEL_2},
    {"u", VELM_ZAVRA_API_REACTIONWHEEL_3},
    {"v", VELM_ZAVRA_API_REACTIONWHEEL_4},
    {"w", VELM_ZAVRA_API_REACTIONWHEEL_5},
    {"reactionwheel_0", VELM_ZAVRA_API_REACTIONWHEEL_0},
    {"reactionwheel_1", VELM_ZAVRA_API_REACTIONWHEEL_1},
    {"reactionwheel_2", VELM_ZAVRA_API_REACTIONWHEEL_2},
    {"reactionwheel_3", VELM_ZAVRA_API_REACTIONWHEEL_3},
    {"reactionwheel_4", VELM_ZAVRA_API_REACTIONWHEEL_4},
    {"reactionwheel_5", VELM_ZAVRA_API_REACTIONWHEEL_5},
};

constexpr Enumerator axes[] = {
    {"x", VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS_X},
    {"y", VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS_Y},
    {"z", VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS_Z},
};

constexpr Enumerator startracker_modes[] = {
    {"mode_0", VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE_0},
    {"mode_1", VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE_1},
    {"mode_2", VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE_2},
    {"mode_3", VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE_3},
};

}

std::span<const Enumerator> enumerators_of(const std::string& method, const std::string& argument)
{
    const auto of = [&](const char* word) { return method.find(word) != std::string::npos; };
    if (argument == "axis")
        return axes;
    if (argument == "mode" && of("Startracker"))
        return startracker_modes;
    if (argument == "gyro_index" || (argument == "index" && of("Gyro")))
        return gyroscopes;
    if (argument == "magnetometer_index" || (argument == "index" && of("Magnetometer")))
        return magnetometers;
    if (argument == "index" && of("ReactionWheel"))
        return wheels;
    return {};
}

std::string known_ranges(const Leaves& arguments)
{
    std::string text;
    for (const Leaf& leaf : arguments) {
        if (!leaf.names.empty())
            text += "; " + leaf.path + ": 0 to " + std::to_string(leaf.names.back().value);
        else if (leaf.path.ends_with("latitude"))
            text += "; " + leaf.path + ": -90deg to 90deg";
        else if (leaf.path.ends_with("longitude"))
            text += "; " + leaf.path + ": -180deg to 180deg";
    }
    return text;
}

}
