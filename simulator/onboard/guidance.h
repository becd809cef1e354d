#pragma once

#include "../satellite/surroundings.h"
#include "flight_settings.h"

#include <Eigen/Geometry>

namespace zavra::simulator
{

/// An attitude to follow. Rate and acceleration are in the frame of the target attitude's body.
struct Target
{
    Eigen::Quaterniond attitude;
    Eigen::Vector3d rate_radps = Eigen::Vector3d::Zero();
    Eigen::Vector3d acceleration_radps2 = Eigen::Vector3d::Zero();
};

/// What a target-pointing mode was told.
struct Pointing_Order
{
    Operation::Mode mode;
    const ZAVRA_100_TargetPointing_Target_Parameters_Telemetry& parameters;
    unsigned int degree;           ///< of the inertial attitude's polynomials
    unsigned long long begin_msec; ///< when they begin, without a start time
    Eigen::Vector3d angles;        ///< turn the target about the body's x, then y, then z axis
};

/// Where the satellite is to point: the frame with z along the line of sight and x towards the flight vector (the
/// record's rotation matrix turns body into it) has
///
/// - nadir: z towards the Earth's centre, x towards the velocity
/// - Earth-fixed, constant velocity: z towards the point on the ellipsoid, x towards the velocity. A point with a
///   constant velocity goes along the great circle of the ellipsoid's normals, from the start to the stop time
/// - inertial: the attitude of the polynomials, in seconds since the start time, before it that of the start
///
/// for the unit's time plus the mode's offset. Rate and acceleration are central differences over a second.
///
/// @param orbit  at the time `epoch_msec`; not needed in the inertial mode
Target target(const Pointing_Order& order, const Surroundings* orbit, unsigned long long epoch_msec);

}
