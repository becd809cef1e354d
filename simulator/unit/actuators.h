#pragma once

#include "../../protocol/records/actuators.h"
#include "../satellite/actuation.h"
#include "../satellite/satellite_settings.h"
#include "command_table.h"
#include "unit_time.h"
#include "world.h"

#include <array>

namespace zavra::simulator
{

/// One wheel. Its motor turns it towards the target as fast as torque and inertia allow; in idle mode it coasts down.
/// The speed is worked out when somebody asks for it.
class Reaction_Wheel
{
public:
    /// @param now  the unit's system time in milliseconds
    float speed_radps(unsigned long long now) const;
    float target_radps() const { return target_; }
    const ZAVRA_100_Single_Reactionwheel_Parameters& parameters() const { return parameters_; }

    /// What a wheel with mass is to do; `torque_nm` is its part of the torque on the body.
    Wheel_Command command(double torque_nm) const;

    bool can_reach(float speed_radps) const;
    void drive(float speed_radps, unsigned long long now);
    void idle(unsigned long long now);
    /// Until it is driven or left idle. The speed that is worked out here does not follow.
    void follow_torque() { follows_torque_ = true; }
    void set_parameters(const ZAVRA_100_Single_Reactionwheel_Parameters& parameters, unsigned long long now);

private:
    void settle(unsigned long long now);

    ZAVRA_100_Single_Reactionwheel_Parameters parameters_{.moment_of_inertia = 2.0e-6F,
                                                          .max_speed = 1000.0F,
                                                          .max_torque = 1.0e-4F,
                                                          .motor_constant = 2.0e-3F,
                                                          .max_time_for_speed_measurement = 500};
    bool idle_ = true;
    bool follows_torque_ = false;
    float target_ = 0;
    float speed_then_ = 0;
    unsigned long long then_ = 0;
};

/// The simulated unit's reaction wheels and magnetorquers. They act on the world's satellite, where it has one;
/// without one the wheels' torque target moves nothing.
class Actuators
{
public:
    static constexpr std::size_t number_of_wheels = 6;

    struct Settings
    {
        Settings();

        std::array<Reaction_Wheel, number_of_wheels> wheels;
        ZAVRA_100_Reactionwheel_Array_Parameters array;
        ZAVRA_100_Vector3_float torque_nm{};
        ZAVRA_100_Magnetorquer_Parameters magnetorquers;
        ZAVRA_100_Vector3_float dipole_moment_am2{}; ///< as commanded, whether suspended or not
        ZAVRA_100_Vector3_float current_a{};
        bool suspended = false;
    };

    Actuators(Command_Table& commands, const Unit_Time& time, World& world);

    ZAVRA_100_Vector6_float wheel_targets_radps() const;
    ZAVRA_100_Vector6_float wheel_speeds_radps() const;
    ZAVRA_100_Vector3_float dipole_moment_am2() const;
    ZAVRA_100_Vector3_float current_a() const;

    /// What they do to a satellite. A torque on the body is the wheels' reaction, distributed by the array's matrix.
    Actuation actuation() const;

    /// What the unit's own software has them do where that is not what commands say: telemetry shows it.
    void show(const std::optional<Actuation>& by_software) { by_software_ = by_software; }

    /// Has the settings of a unit that was built for a satellite, after each reset too.
    void build_for(const Satellite_Settings& satellite);

    void reset();

    Settings settings;

private:
    Reaction_Wheel& wheel(unsigned char index);
    void drive(const ZAVRA_100_Vector6_float& speed_radps);
    void set_array(const ZAVRA_100_Reactionwheel_Array_Parameters& array);
    void set_dipole_moment(const ZAVRA_100_Vector3_float& moment_am2);
    void set_current(const ZAVRA_100_Vector3_float& current_a);

    const Unit_Time& time_;
    const World& world_;
    Settings defaults_;
    std::optional<Actuation> by_software_;
};

}
