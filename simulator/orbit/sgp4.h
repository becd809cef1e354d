#pragma once

#include "tle.h"

#include <Eigen/Core>

namespace zavra::simulator
{

/// Position and velocity in the true equator, mean equinox frame (TEME) of the moment.
struct Orbit_State
{
    Eigen::Vector3d position_km = Eigen::Vector3d::Zero();
    Eigen::Vector3d velocity_kmps = Eigen::Vector3d::Zero();
};

/// The SGP4 orbit model for near-Earth satellites, with WGS-72 constants.
///
/// After "Spacetrack Report No. 3" (Hoots, Roehrich 1980) and "Revisiting Spacetrack Report #3" (Vallado, Crawford,
/// Hujsak, Kelso 2006, AIAA 2006-6753). Lengths are in Earth radii and times in minutes inside.
class Sgp4
{
public:
    explicit Sgp4(const Two_Line_Elements& elements);

    /// The state at a time that may also lie before the epoch. Fails with `deep_space`, `decayed`,
    /// `eccentricity_out_of_range`, `semi_latus_rectum_negative` or `out_of_reach`, and then leaves `state` alone.
    Tle_Error propagate(double minutes_since_epoch, Orbit_State& state) const;

private:
    /// Mean elements at a moment, and after the long-period terms the elements that these have changed.
    struct Moment
    {
        double semi_major_axis;
        double mean_motion;
        double eccentricity;
        double argument_of_perigee;
        double right_ascension;
        double mean_anomaly;
    };

    void set_gravity_rates();
    void set_drag_terms();
    Moment mean_elements(double minutes) const;
    Tle_Error osculating_state(const Moment& mean, Orbit_State& state) const;

    Two_Line_Elements epoch_;
    double mean_motion_;     // Brouwer's, recovered from Kozai's in the element set
    double semi_major_axis_; // at epoch
    double beta_squared_;    // 1 - e^2
    double cos_i_;
    double sin_i_;
    double three_cos2_minus_1_;
    double one_minus_cos2_;
    double seven_cos2_minus_1_;

    struct
    {
        double mean_anomaly, argument_of_perigee, right_ascension; // rad/min
        double right_ascension_from_equatorial_bulge;              // first-order part
    } rate_;

    struct
    {
        bool high_order;       // perigee at 220 km or above
        double highest_apogee; // from the Earth's centre
        double eta;
        double c1, c4, c5;
        double d2, d3, d4;
        double mean_longitude_t2, mean_longitude_t3, mean_longitude_t4, mean_longitude_t5;
        double right_ascension_t2;
        double argument_of_perigee;
        double mean_anomaly;
    } drag_{};
};

}
