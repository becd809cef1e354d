#pragma once

#include "../orbit/sgp4.h"

#include <Eigen/Core>

#include <chrono>

namespace zavra::simulator
{

/// Where the satellite is and what is around it at one moment. Vectors are in TEME.
struct Surroundings
{
    Eigen::Vector3d position_km = Eigen::Vector3d::Zero();
    Eigen::Vector3d velocity_kmps = Eigen::Vector3d::Zero();
    Eigen::Vector3d magnetic_field_t = Eigen::Vector3d::Zero();
    Eigen::Vector3d sun_vector = Eigen::Vector3d::UnitX(); ///< Unit vector from the satellite
    double sunlight = 1;                                   ///< Visible fraction of the sun's disc
};

}
