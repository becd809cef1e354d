#pragma once

#include "attitude_determination.h"
#include "bdot.h"
#include "control_report.h"
#include "pointing_control.h"
#include "single_axis.h"
#include "sun_pointing.h"
#include "wheel_array.h"

namespace zavra::simulator
{

/// Guidance and control: what the operation mode, or the single-axis controllers in idle mode, have the actuators do.
/// Actuators that the mode has no use for do what commands over the bus say; in safe and measurement mode all are off.
class Attitude_Control
{
public:
    explicit Attitude_Control(const Mission& mission);

    /// One control tick.
    void tick(const Measurements& measurements, const Attitude_Estimate& estimate, const Control_Settings& settings,
              Actuation& actuation);

    const Control_Report& report() const { return report_; }

    void reset() { *this = Attitude_Control(mission_); }

private:
    /// What a tick is about.
    struct Tick
    {
        const Measurements& measurements;
        const Attitude_Estimate& estimate;
        const Control_Settings& settings;
        Actuation& actuation;
        Wheel_Array wheels;
        Eigen::Vector3d max_dipole_am2;
        Eigen::Matrix3d from_coils; ///< into the body frame
        double duty;                ///< of the magnetorquers
    };

    void turn_single_axes(Tick& tick);
    void detumble(Tick& tick);
    void point_at_sun(Tick& tick);
    void point_at_target(Tick& tick);
    Control_Report::Pointing prealign(const Tick& tick, const Target& target, const Pointing_Error& error);
    void turn(Tick& tick, const Eigen::Vector3d& torque_nm, bool with_magnetorquers);
    void unload_momentum(Tick& tick);
    void set_dipole(Tick& tick, const Eigen::Vector3d& moment_am2);
    bool drives_magnetorquers(unsigned int interface, bool usually);

    Mission mission_;
    double smallest_moment_;
    Control_Report report_;
    unsigned int starts_ = 0;
    std::array<Single_Axis_Control, 3> single_axes_;
    Bdot_Control bdot_;

    // Of the mode that runs.
    struct Progress
    {
        Interval control;
        Interval guidance;
        Eigen::Vector3d torque_nm = Eigen::Vector3d::Zero();
        unsigned long long begin_msec = 0;
        std::optional<Target> target;
        std::chrono::milliseconds target_time{0};
        std::optional<Eigen::Vector3d> angle_at_start_rad;
        std::optional<std::chrono::milliseconds> aligned_since;
        bool ready = false;
    };

    Progress progress_;
};

}
