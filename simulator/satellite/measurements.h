#pragma once

#include <Eigen/Geometry>

#include <array>
#include <chrono>

namespace zavra::simulator
{

inline constexpr std::size_t max_gyroscopes = 3;
inline constexpr std::size_t max_wheels = 6;

/// As a number of seconds.
constexpr double seconds_of(std::chrono::milliseconds time)
{
    return 1e-3 * static_cast<double>(time.count());
}

/// A value that a sensor gave and when, in simulated time. A sensor that gives nothing keeps its last value and time,
/// and is not valid; before the first one the value is zero.
template <class Value>
struct Measured
{
    Value value;
    std::chrono::milliseconds time{0};
    bool valid = false;
};

/// What the sensors have given up to a control tick. Vectors and angles are in the body frame.
struct Measurements
{
    using Vector = Measured<Eigen::Vector3d>;

    std::chrono::milliseconds time{0};    ///< of the tick, simulated time
    unsigned long long epoch_time_msec{}; ///< of the tick, as the unit's clock says
    std::array<Vector, max_gyroscopes> angular_velocity_radps{
        Vector{Eigen::Vector3d::Zero()}, Vector{Eigen::Vector3d::Zero()}, Vector{Eigen::Vector3d::Zero()}};
    Vector magnetic_field_t{Eigen::Vector3d::Zero()};
    Vector sun_vector{Eigen::Vector3d::Zero()}; ///< Unit vector; not valid where no sun sensor sees the sun
    Measured<Eigen::Quaterniond> attitude{Eigen::Quaterniond::Identity()}; ///< The star tracker's
    std::array<double, max_wheels> wheel_speed_radps{};
    double temperature_degc = 0;
};

}
