#pragma once

#include <Eigen/Core>

namespace zavra::simulator
{

/// The fraction of the Sun's disc that a satellite sees past the Earth: 1 in full sunlight, between 0 and 1 in penumbra
/// (and in antumbra, beyond the tip of the umbra), 0 in umbra. Positions are in km from the Earth's centre, in one
/// inertial frame, the satellite outside the Earth.
///
/// After Montenbruck, Gill, "Satellite Orbits" (2000), section 3.4.2. The Earth is a sphere of its equatorial radius
/// and without atmosphere, the disc equally bright all over.
double visible_fraction_of_sun(const Eigen::Vector3d& satellite_km, const Eigen::Vector3d& sun_km);

}
