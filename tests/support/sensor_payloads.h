#pragma once

#include "bytes.h"

/// Parameter sets of the sensors in which each number is its place in the record, counted from 1.
namespace zavra::test
{

inline const std::string gyro_payload =
    Payload().u8(1).f32_range(2, 11).u64(12).u8(13).f32_range(14, 25).u32(26).u8(27).u32(28).f32(29).hexadecimal();

inline const std::string magnetometer_payload =
    Payload().f32_range(1, 10).u64(11).u8(12).f32_range(13, 24).u8(25).u32(26).f32(27).hexadecimal() +
    Payload().u8(28).f32_range(29, 30).hexadecimal();

}
