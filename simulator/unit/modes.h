#pragma once

#include "../../protocol/records/modes.h"
#include "../onboard/onboard_software.h"
#include "actuators.h"
#include "command_table.h"
#include "unit_time.h"
#include "world.h"

namespace zavra::simulator
{

/// The simulated unit's operation modes, target pointing and Kalman filter parameters.
///
/// A mode with a start time waits for it; one with a stop time other than 0 ends after it, which leaves the unit idle.
/// Both follow the unit's epoch time wherever it is set. The unit refuses a start after the stop, a latitude or
/// longitude out of range or not a number, and an attitude polynomial of another degree than 0 or 6.
///
/// The codes in telemetry are the simulated unit's own:
/// - control_main_status, main_register: the mode in bits 0 to 7, waiting_bit while it waits for its start
/// - general_mode: the mode; control_mode: the target-pointing mode that was started last
/// - state_target, current_state: a Pointing_State, the one that was commanded and the one reached
/// - next_action_epoch_time_msec: when the target-pointing mode starts or ends, 0 when nothing is to come
/// - rotation_matrix: body frame to the frame with z along the line of sight and x towards the flight vector; zero rows
///   where the two span no plane
/// - target_quaternion: the constant terms of the inertial mode's polynomials, 0 in the other modes
/// - tolerances and update interval: from the mode that was started or the operation parameters, whichever came last
///
/// With a satellite, its own software fills the operation data in: target_quaternion is the attitude to follow in every
/// mode, attitude_quaternion and angular_velocity_bf are what it believes, and while it prealigns
/// - current_state is prealigning; waiting_for_start when it is aligned before its start time
/// - prealignment_is_ready: 1 when all axes have been within tolerance for the operation parameters' wait_time; 0 again
///   where the error exceeds the target threshold, unless that is 0. A tolerance of 0 is none
/// - prealignment_current_rotation_axis: the one with most to turn, 1 to 3, or 0; prealignment_active_flag: 1 where an
///   axis is out of tolerance
/// - prealignment_target_rotation_angle: the rotation vector to the target at the start, in the body frame;
///   prealignment_rotation_angle: what is done of it
/// Without one the unit does not turn anything, and the prealignment fields stay 0.
class Modes : public Operation
{
public:
    static constexpr unsigned int waiting_bit = 1U << 8U;

    struct Settings
    {
        ZAVRA_100_KalmanFilter_Parameters kalman_filter{1e-13, 1e-8, 1e-4, 1e-7, 0};
        ZAVRA_100_TargetPointing_Operation_Parameters operation{};
        Mode mode = idle;
        unsigned long long start_epoch_time = 0;
        unsigned long long stop_epoch_time = 0;
        unsigned int starts = 0; ///< of modes
        ZAVRA_100_Vector3_float sun_line_of_sight{};
        unsigned int polynomial_degree = 0; ///< of the inertial attitude
        ZAVRA_100_TargetPointing_Target_Parameters_Telemetry target{};
        ZAVRA_100_TargetPointing_Operation_Parameters_Telemetry operation_in_use{};
    };

    /// @param report  of the unit's own software; nothing where there is none
    Modes(Command_Table& commands, const Unit_Time& time, const World& world, const Actuators& actuators,
          const std::optional<Onboard_Software::Report>& report);

    /// The mode that the unit is in now, or waits to enter.
    Mode mode() const;
    bool waiting() const;
    unsigned int main_status() const { return mode() | (waiting() ? waiting_bit : 0); }

    void reset() { settings = {}; }

    Settings settings;

private:
    void enter(Mode mode, unsigned long long start_epoch_time = 0, unsigned long long stop_epoch_time = 0);
    template <class Request>
    void point(Mode mode, const Request& request);
    void use(const ZAVRA_100_TargetPointing_Operation_Parameters& parameters);
    ZAVRA_100_TargetPointing_Target_Parameters_Telemetry target() const;
    ZAVRA_100_TargetPointing_Operation_Parameters_Telemetry operation_parameters() const;
    ZAVRA_100_TargetPointing_Operation_Data_Telemetry operation_data() const;

    const Unit_Time& time_;
    const World& world_;
    const Actuators& actuators_;
    const std::optional<Onboard_Software::Report>& report_;
};

}
