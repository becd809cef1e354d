#pragma once

#include "random.h"
#include "satellite.h"

#include <vector>

namespace zavra::simulator
{

/// A star tracker: the attitude with noise, and where on its detector stars are. The stars are made up, as dense as
/// those that such a camera sees, and the same for ever.
class Star_Tracker
{
public:
    /// Where a star is on the detector, in pixels from its centre.
    struct Event
    {
        int x, y;
    };

    static constexpr double half_field_of_view_rad = 0.17; ///< Of the cone in which stars are seen
    static constexpr double focal_length_pixels = 2980;

    explicit Star_Tracker(Random noise) : noise_(std::move(noise)) {}

    /// Blind near the sun and the Earth, and when it turns too fast.
    void measure(const Satellite& truth, const Star_Tracker_Settings& settings, Measured<Eigen::Quaterniond>& attitude);

    /// What it sees of the sky at its last measurement, up to a number of events; nothing while it is blind.
    std::vector<Event> events(std::size_t most) const;

private:
    Random noise_;
    bool sees_ = false;
    Eigen::Matrix3d from_inertial_ = Eigen::Matrix3d::Identity(); // to x and y on the detector and z into the sky
};

}
