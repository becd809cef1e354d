#pragma once

#include "../satellite/actuation.h"
#include "../satellite/measurements.h"

#include <optional>

namespace zavra::simulator
{

/// What runs in the unit at each control tick: attitude determination, guidance and control. It sees what the sensors
/// gave, never the truth.
class Onboard_Software
{
public:
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

    /// The unit was reset.
    virtual void reset() {}
};

}
