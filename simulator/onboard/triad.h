#pragma once

#include <Eigen/Geometry>

#include <optional>

namespace zavra::simulator
{

/// A direction that was measured and the same one by the models: unit vectors.
struct Direction
{
    Eigen::Vector3d body;
    Eigen::Vector3d inertial;
};

/// The attitude (as in ../satellite/attitude.h) that gives the first direction exactly and the second one as nearly as
/// that allows (Black, "A Passive System for Determining the Attitude of a Satellite", AIAA Journal 2, 1964). Nothing
/// where they are within 0.1 rad of one line, or where the angles between them, in the body and by the models, differ
/// by more than `tolerance_rad`.
std::optional<Eigen::Quaterniond> triad(const Direction& first, const Direction& second, double tolerance_rad);

}
