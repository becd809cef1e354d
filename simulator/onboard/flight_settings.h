#pragma once

#include "../../protocol/records/actuators.h"
#include "../../protocol/records/controllers.h"
#include "../../protocol/records/modes.h"
#include "../satellite/satellite_settings.h"

#include <optional>

namespace zavra::simulator
{

struct Operation
{
    enum Mode : unsigned int {
        idle = 0,
        safe = 1,
        measurement = 2,
        detumbling = 3,
        sun_pointing = 4,
        nadir = 5,
        earth_fixed = 6,
        earth_const_velocity = 7,
        inertial = 8,
    };

    enum Pointing_State : unsigned char { not_pointing = 0, waiting_for_start = 1, pointing = 2, prealigning = 3 };
};

/// What the software is built for: the satellite that it flies on.
struct Mission
{
    Eigen::Matrix3d inertia_kgm2 = Eigen::Matrix3d::Identity();          ///< Without the rotors' spin inertia
    std::array<std::optional<Eigen::Vector3d>, max_wheels> wheel_axes{}; ///< Unit vectors, body frame
};

inline Mission mission_of(const Satellite_Settings& satellite)
{
    Mission mission{.inertia_kgm2 = satellite.inertia_kgm2};
    for (std::size_t i = 0; i < max_wheels; ++i)
        if (satellite.wheels[i])
            mission.wheel_axes[i] = satellite.wheels[i]->axis;
    return mission;
}

/// What a controller drives: the simulated unit's codes for `ctrl_actuator_cmd_if`.
enum class Actuator_Interface : unsigned int {
    usual = 0, ///< magnetorquers for B-dot and sun pointing, wheels for the others
    wheels = 1,
    magnetorquers = 2,
};

/// The parameters of the controllers, and which single-axis controller runs on which axis.
struct Controller_Settings
{
    enum class Running { nothing, angular_velocity, angle_step };

    struct Axis
    {
        ZAVRA_100_PID_Controller_Parameters angular_velocity{0.1F, 0.01F, 0, 0, 0, 0, 100};
        ZAVRA_100_Cascaded_PID_Controller_Parameters angle_step{0.1F, 0.01F, 0, 0, 0, 0.05F, 0, 0, 0, 0, 0, 100};
        Running running = Running::nothing;
        float target = 0; ///< rad/s, or rad from the angle at the start
        unsigned int starts = 0;
    };

    std::array<Axis, 3> axes;
    ZAVRA_100_BDot_Controller_Parameters bdot_max{1.0e4F, 0, 1000};
    ZAVRA_100_BDot_Controller_Parameters bdot_proportional{7.0e-3F, 0, 1000};
    ZAVRA_100_SunPointing_Controller_Parameters sun_pointing{
        1.6e-4F, {5.0e-3F, 0, 0, 0, 5.0e-3F, 0, 0, 0, 5.0e-3F}, {1.0e-4F, 1.0e-4F, 1.0e-4F}, 0, 500};
    ZAVRA_100_Sliding_Controller_Parameters sliding{0.1F, 0.4F, 0, 500};
};

/// What was commanded over the bus, as control reads it at each tick.
struct Control_Settings
{
    Operation::Mode mode = Operation::idle;
    bool waiting = false;    ///< for the start of the mode
    unsigned int starts = 0; ///< how often a mode was started
    Eigen::Vector3d sun_line_of_sight = Eigen::Vector3d::Zero();
    const ZAVRA_100_TargetPointing_Target_Parameters_Telemetry& target;
    const ZAVRA_100_TargetPointing_Operation_Parameters_Telemetry& operation_in_use;
    const ZAVRA_100_TargetPointing_Operation_Parameters& operation;
    unsigned int polynomial_degree = 0; ///< of the inertial attitude
    const Controller_Settings& controllers;
    const ZAVRA_100_Reactionwheel_Array_Parameters& wheel_array;
    std::array<ZAVRA_100_Single_Reactionwheel_Parameters, max_wheels> wheels;
    const ZAVRA_100_Magnetorquer_Parameters& magnetorquers;
    bool magnetorquers_suspended = false;
};

}
