#pragma once

#include "test_bench.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace zavra::simulator
{

/// The columns of a record; docs/satellite.md tells what they have.
inline constexpr std::array<std::string_view, 40> record_columns{
    "time_s",
    "epoch_time_msec",
    "position_x_km",
    "position_y_km",
    "position_z_km",
    "velocity_x_kmps",
    "velocity_y_kmps",
    "velocity_z_kmps",
    "q_1",
    "q_2",
    "q_3",
    "q_4",
    "angular_velocity_x_radps",
    "angular_velocity_y_radps",
    "angular_velocity_z_radps",
    "magnetic_field_x_t",
    "magnetic_field_y_t",
    "magnetic_field_z_t",
    "sun_vector_x",
    "sun_vector_y",
    "sun_vector_z",
    "sunlight",
    "wheel_speed_x_radps",
    "wheel_speed_y_radps",
    "wheel_speed_z_radps",
    "wheel_speed_u_radps",
    "wheel_speed_v_radps",
    "wheel_speed_w_radps",
    "dipole_moment_x_am2",
    "dipole_moment_y_am2",
    "dipole_moment_z_am2",
    "mode",
    "estimated_q_1",
    "estimated_q_2",
    "estimated_q_3",
    "estimated_q_4",
    "estimated_angular_velocity_x_radps",
    "estimated_angular_velocity_y_radps",
    "estimated_angular_velocity_z_radps",
    "pointing_error_rad",
};

/// Where a column is.
consteval std::size_t column(std::string_view name)
{
    const auto* const found = std::ranges::find(record_columns, name);
    return found == record_columns.end() ? throw "there is no such column"
                                         : static_cast<std::size_t>(found - record_columns.begin());
}

/// One moment of a satellite's flight, a number for each column: the truth, what the actuators do, the unit's mode, and
/// what the unit's software believes, NaN where it believes nothing.
using Sample = std::array<double, record_columns.size()>;

Sample sample_of(const Test_Bench::Unit& unit);

inline Eigen::Vector3d vector_of(const Sample& sample, std::size_t first)
{
    return Eigen::Vector3d(&sample[first]);
}

inline Eigen::Quaterniond quaternion_of(const Sample& sample, std::size_t first)
{
    return Eigen::Quaterniond(&sample[first]);
}

}
