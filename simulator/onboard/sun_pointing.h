#pragma once

#include "flight_settings.h"

namespace zavra::simulator
{

/// About a line of sight along the axis of the largest moment of inertia, in rad/s; about others so much faster that
/// the energy is the same.
inline constexpr double sun_pointing_spin_radps = 0.08;

/// The torque in N m that points the line of sight at the sun and has the satellite spin about it (after Avanzini,
/// de Angelis, Giulietti, 2014), n being the cosine of the angle between the two, or 0 where it is negative:
///
///     torque = J K_v (n spin line - rate) + J (1 - n) k_p line x sun + J_line n k_p (sun - line)
///
/// Far from the sun the satellite is turned directly; near it the last part turns the angular momentum towards the sun,
/// and the first one the body towards its momentum (K_v in 1/s, k_p in 1/s^2). Magnetorquers give of it what is across
/// the field; as the field turns, that is enough. Where the sun is not known the spin alone keeps the direction.
///
/// A body does not spin steadily about the axis of its middle moment of inertia, and magnetorquers cannot make it.
Eigen::Vector3d sun_pointing_torque(const Mission& mission,
                                    const ZAVRA_100_SunPointing_Controller_Parameters& parameters,
                                    const Eigen::Vector3d& line_of_sight, const std::optional<Eigen::Vector3d>& sun,
                                    const Eigen::Vector3d& rate_radps);

}
