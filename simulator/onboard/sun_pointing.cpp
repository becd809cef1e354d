#include "sun_pointing.h"

#include "magnetic.h"
#include "vectors.h"

#include <cmath>

namespace zavra::simulator
{

Eigen::Vector3d sun_pointing_torque(const Mission& mission,
                                    const ZAVRA_100_SunPointing_Controller_Parameters& parameters,
                                    const Eigen::Vector3d& line_of_sight, const std::optional<Eigen::Vector3d>& sun,
                                    const Eigen::Vector3d& rate_radps)
{
    const Eigen::Matrix3d& inertia = mission.inertia_kgm2;
    const double moment = line_of_sight.dot(inertia * line_of_sight);
    const double spin = sun_pointing_spin_radps * std::sqrt(inertia.diagonal().maxCoeff() / moment);
    const double near = sun ? std::max(sun->dot(line_of_sight), 0.0) : 1.0;
    const double k_p{parameters.k_p};
    Eigen::Vector3d torque = inertia * (wide(parameters.k_v) * (near * spin * line_of_sight - rate_radps));
    if (sun)
        torque +=
            (1 - near) * k_p * (inertia * line_of_sight.cross(*sun)) + near * moment * k_p * (*sun - line_of_sight);
    return shortened(torque, wide(parameters.max_torque));
}

}
