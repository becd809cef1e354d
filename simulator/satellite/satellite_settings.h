#pragma once

#include "measurements.h"

#include "../orbit/tle.h"

#include <optional>

namespace zavra::simulator
{

struct Wheel_Settings
{
    Eigen::Vector3d axis; ///< Unit vector, body frame
    double inertia_kgm2;  ///< Of the rotor about its axis
    std::optional<double> max_torque_nm{};
    std::optional<double> max_speed_radps{};
    double viscous_friction_nms = 0;
    double coulomb_friction_nm = 0;
    double speed_radps = 0; ///< At the start
};

struct Magnetorquer_Settings
{
    std::optional<Eigen::Vector3d> max_dipole_moment_am2;
    double rest_msec = 0; ///< How long they are off in each control tick, while the magnetometer measures
};

/// What a vector sensor makes of the truth. Zeros are a perfect sensor.
struct Vector_Sensor_Settings
{
    Eigen::Vector3d bias = Eigen::Vector3d::Zero();
    double noise = 0;       ///< Standard deviation of each measurement, each axis
    double random_walk = 0; ///< Of the bias, each axis: per square root of a second
    double range = 0;       ///< Each axis is cut at this value; 0 for none
    bool failed = false;    ///< Gives nothing
};

struct Sun_Sensor_Settings
{
    double half_field_of_view_rad = 1.5707963267948966;
    double noise_rad = 0;         ///< Standard deviation about each axis across the direction to the sun
    std::array<bool, 6> failed{}; ///< On the faces +x, -x, +y, -y, +z, -z
};

struct Star_Tracker_Settings
{
    Eigen::Vector3d axis = Eigen::Vector3d::UnitZ(); ///< Line of sight, body frame
    double noise_across_rad = 0;                     ///< Standard deviation about each axis across the line of sight
    double noise_along_rad = 0;                      ///< Standard deviation about the line of sight
    double sun_exclusion_rad = 0;                    ///< Blind where the sun is nearer to the line of sight than this
    double earth_exclusion_rad = 0;                  ///< The same for the Earth's limb
    double max_rate_radps = 0;                       ///< Blind above; 0 for no limit
    bool failed = false;
};

struct Sensor_Settings
{
    std::array<Vector_Sensor_Settings, max_gyroscopes> gyroscopes;
    Vector_Sensor_Settings magnetometer;
    double magnetorquer_disturbance_t_per_am2 = 0; ///< What a dipole moment adds to the magnetometer along its axis
    Sun_Sensor_Settings sun_sensors;
    Star_Tracker_Settings star_tracker;
    double temperature_noise_degc = 0; ///< Standard deviation
};

/// A satellite: what a file says of it. What is left out is absent or perfect.
struct Satellite_Settings
{
    unsigned long long start_epoch_msec = 0; ///< since 01.01.1970 0:00:00 UTC
    Two_Line_Elements elements{};
    Eigen::Quaterniond attitude = Eigen::Quaterniond::Identity();
    Eigen::Vector3d angular_velocity_radps = Eigen::Vector3d::Zero();

    Eigen::Matrix3d inertia_kgm2 = Eigen::Matrix3d::Identity(); ///< Without the rotors' spin inertia
    Eigen::Vector3d residual_dipole_am2 = Eigen::Vector3d::Zero();
    bool gravity_gradient = false;
    Eigen::Vector3d disturbance_torque_nm = Eigen::Vector3d::Zero(); ///< Constant, body frame

    std::array<std::optional<Wheel_Settings>, max_wheels> wheels; ///< x, y, z, u, v, w
    std::optional<Magnetorquer_Settings> magnetorquers;
    Sensor_Settings sensors;

    double temperature_degc = 21;    ///< Of the unit, in sunlight
    double eclipse_cooling_degc = 0; ///< How much colder it gets in shadow, in the long run
    double thermal_time_constant_s = 1800;

    unsigned long long seed = 0;
};

}
