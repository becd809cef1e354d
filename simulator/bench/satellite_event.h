#pragma once

#include "../../catalogue/json.h"
#include "test_bench.h"

#include <functional>

namespace zavra::simulator
{

/// What a scenario lets happen to a unit's satellite:
///
///     {"torque_nm": [0, 0, 1e-5], "for": 10}          in the body frame, for that many seconds; else for ever
///     {"angular_velocity_radps": [0.1, 0, 0]}         from one moment to the next
///     {"sensor": "gyroscope_1", "fails": true}        gives nothing more, or again with false
///     {"sensor": "magnetometer", "noise": 1e-6}       from now on, in the sensor's unit
///     {"sensor": "magnetometer", "bias": [0, 0, 1e-5]}
///     {"wheel": "x", "sticks": true}                  to the body, or is free again with false
///
/// Sensors are gyroscope_1 to gyroscope_3, magnetometer, sun_sensors and star_tracker.
/// @throws std::invalid_argument  for what makes no sense
/// @return something that throws std::runtime_error when the unit has no satellite
std::function<void(Test_Bench::Unit&)> satellite_action(const Json& change);

}
