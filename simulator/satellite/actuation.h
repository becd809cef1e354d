#pragma once

#include "measurements.h"

#include <limits>

namespace zavra::simulator
{

/// What the unit has one wheel do until the next control tick.
struct Wheel_Command
{
    enum class Kind {
        idle,  ///< no current: friction alone
        speed, ///< the motor's own controller turns it towards the speed as fast as torque allows
        torque ///< the motor gives the torque on the rotor
    };

    Kind kind = Kind::idle;
    double target = 0; ///< rad/s relative to the body, or N m
    double max_torque_nm = std::numeric_limits<double>::infinity();
    double max_speed_radps = std::numeric_limits<double>::infinity();
};

/// What the unit has its actuators do until the next control tick.
struct Actuation
{
    std::array<Wheel_Command, max_wheels> wheels{};
    Eigen::Vector3d dipole_moment_am2 = Eigen::Vector3d::Zero();
};

}
