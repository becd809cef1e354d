#pragma once

#include "simulator/onboard/attitude_determination.h"
#include "simulator/satellite/sensor_suite.h"

#include <functional>

namespace zavra::test
{

/// A satellite that is moved, its sensors, and the determination that looks at them alone.
struct Observed_Satellite
{
    enum class Motion {
        free,    ///< as it started
        nadir,   ///< z down, x towards the flight direction
        inertial ///< held as it started
    };

    Observed_Satellite(const simulator::Satellite_Settings& settings, unsigned long long seed);

    /// One control tick: the satellite moves, sensors measure, `meddle` changes what they gave, the software looks.
    void tick();

    double attitude_error_rad() const;
    double rate_error_radps() const
    {
        return (determination.estimate().angular_velocity_radps - satellite.angular_velocity_radps()).norm();
    }

    simulator::Satellite satellite;
    simulator::Sensor_Suite sensors;
    simulator::Attitude_Determination determination;
    simulator::Attitude_Determination::Settings settings;
    Motion motion = Motion::free;
    std::function<void(simulator::Measurements&)> meddle = [](simulator::Measurements&) {};
};

/// The angle of the whole error; 1 sigma is the root of the mean square.
struct Error_Statistics
{
    double squares = 0;
    int number = 0;

    void add(double error)
    {
        squares += error * error;
        ++number;
    }
    double sigma() const { return std::sqrt(squares / number); }
};

struct Attitude_Knowledge
{
    Error_Statistics light, eclipse, star_tracker;
};

/// Two orbits from a random attitude, and about a random axis where it tumbles. Statistics are from the second orbit,
/// by what there was: the star tracker, or else the sun, or not even that.
Attitude_Knowledge attitude_knowledge(simulator::Satellite_Settings settings, Observed_Satellite::Motion motion,
                                      simulator::Determination_Method method, unsigned long long seed);

}
