#pragma once

#include "field.h"

#include "../common/text.h"

#include <string>
#include <string_view>

/// The sections and keys of the INI file that configures the sensors. A section's name ends with the sensor's index.
namespace zavra
{

inline constexpr const char* gyroscope_section = "zavra_dev_init_gyro";
inline constexpr const char* magnetometer_section = "zavra_dev_init_mtm";

/// "SENSOR_STDDEV_X" is the key sensor_stddev_x; the file has a name of its own for the mounting quaternion.
inline std::string ini_key(std::string path)
{
    constexpr std::string_view quaternion = "QUATERNION_Q_";
    if (path.starts_with(quaternion))
        path.replace(0, quaternion.size(), "TF_QUATERNION_Q");
    make_lower_case(path);
    return path;
}

/// Calls action(key, value) for every number of a record, in the order of the record's field list.
template <class List, class Action>
void for_each_key(const List& list, const std::string& path, const Action& action)
{
    for_each_field(list, [&](const auto& field) {
        const std::string field_path = path + field.name;
        if constexpr (requires { field.list; })
            for_each_key(field.list, field_path + '_', action);
        else if constexpr (requires { fields(field.value); })
            for_each_key(fields(field.value), field_path + '_', action);
        else
            action(ini_key(field_path), field.value);
    });
}

}
