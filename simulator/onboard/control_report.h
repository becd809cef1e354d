#pragma once

#include "flight_settings.h"

namespace zavra::simulator
{

// The simulated unit's own bits, by register of the standard telemetry; examples/zavra_sim_registers.ini names them.

enum class Single_Axis_Status : unsigned int { // control_single_axis_status_x, _y, _z
    angular_velocity = 1U << 0U,
    angle_step = 1U << 1U,
    paused = 1U << 2U,  ///< by a mode other than idle
    limited = 1U << 3U, ///< by what the actuators can do
};

enum class All_Axis_Status : unsigned int { // control_all_axis_status
    bdot_max = 1U << 0U,
    bdot_proportional = 1U << 1U,
    sun_seen = 1U << 2U, ///< by sensors, or by attitude and orbit; else sun pointing holds
    prealignment = 1U << 3U,
    target_followed = 1U << 4U,
    momentum_unloading = 1U << 5U,
};

enum class Control_Error : unsigned int { // control_main_error
    no_attitude = 1U << 0U,               ///< which the mode needs
    no_orbit = 1U << 1U,
    no_magnetic_field = 1U << 2U,
    unknown_actuator_interface = 1U << 3U, ///< or one that the controller has no use for
    magnetorquers_suspended = 1U << 4U,    ///< which the mode needs
};

enum class Actuators_Error : unsigned int { // actuators_error_register; bits 0 to 5: wheels x to w
    wheel_x_saturated = 1U << 0U,           ///< at its maximum speed
};

/// What control did in a tick.
struct Control_Report
{
    std::array<unsigned int, 3> single_axis_status{};
    unsigned int all_axis_status = 0;
    unsigned int main_error = 0;
    unsigned int actuators_error = 0;
    bool acts = false; ///< Some actuators do not do what commands over the bus say
    std::optional<double> pointing_error_rad; ///< to the target of the mode

    struct Pointing
    {
        Operation::Pointing_State state = Operation::not_pointing;
        bool ready = false;           ///< prealignment
        unsigned char axis = 0;       ///< The one with most to turn: 1 to 3 for x to z, 0 for none
        std::array<bool, 3> active{}; ///< Turn still
        Eigen::Vector3d target_angle_rad = Eigen::Vector3d::Zero();
        Eigen::Vector3d angle_rad = Eigen::Vector3d::Zero();
        Eigen::Quaterniond target = Eigen::Quaterniond::Identity();
    };

    std::optional<Pointing> pointing; ///< In a target-pointing mode that knows its target

    template <class Bit>
    static void set(unsigned int& word, Bit bit, bool condition = true)
    {
        if (condition)
            word |= static_cast<unsigned int>(bit);
    }
};

}
