#pragma once

#include "../satellite/actuation.h"
#include "../satellite/measurements.h"
#include "attitude_determination.h"
#include "control_report.h"

#include <optional>

namespace zavra::simulator
{

/// What runs in the unit at each control tick: attitude determination, guidance and control. It sees what the sensors
/// gave, never the truth.
class Onboard_Software
{
public:
    /// Of simulated time.
    static constexpr std::chrono::milliseconds control_tick{100};

    /// What the software believes.
    struct Estimate
    {
        Eigen::Quaterniond attitude; ///< as in attitude.h
        Eigen::Vector3d angular_velocity_radps;
        std::optional<double> pointing_error_rad; ///< to its target, where it has one
    };

    virtual ~Onboard_Software() = default;

    /// One control tick. `actuation` comes as commands over the bus have it, and may be changed.
    virtual void tick(const Measurements& measurements, Actuation& actuation) = 0;

    virtual std::optional<Estimate> estimate() const { return std::nullopt; }

    /// What it believed and did at the last control tick, for telemetry.
    struct Report
    {
        Attitude_Estimate attitude;
        Control_Report control;
    };

    virtual std::optional<Report> report() const { return std::nullopt; }

    /// The unit was reset.
    virtual void reset() {}
};

}
