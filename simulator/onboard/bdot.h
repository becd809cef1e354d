#pragma once

#include "flight_settings.h"
#include "interval.h"

namespace zavra::simulator
{

/// Detumbling: a dipole moment against the change of the field as the satellite sees it,
///
///     moment = -k J_min dB/dt / |B|^2,
///
/// J_min being the smallest moment of inertia, k in 1/s, "proportional"; where that is more than the coils can give, or
/// than the k of "max" (A m^2), a moment of that size in the same direction, "max". A gain much above the rate at which
/// the field turns on the orbit (0.002 rad/s) has the spin axis follow the field, and the spin remains (Avanzini,
/// Giulietti, 2012, whose optimum this is). The change is the difference of the means over two update intervals.
class Bdot_Control
{
public:
    /// One control tick; the moment in A m^2 that is to act until the next.
    Eigen::Vector3d dipole(const Measurements::Vector& field, const Controller_Settings& settings,
                           double smallest_moment_kgm2, const Eigen::Vector3d& max_dipole_am2);

    /// At its maximum.
    bool full() const { return full_; }
    void reset() { *this = {}; }

private:
    using Time = std::chrono::milliseconds;

    bool full_ = true;
    Time begin_{-1}; // of the interval; negative before the first
    Eigen::Vector3d sum_ = Eigen::Vector3d::Zero();
    int count_ = 0;
    std::optional<Eigen::Vector3d> mean_; // of the interval before
    Eigen::Vector3d dipole_ = Eigen::Vector3d::Zero();
};

}
