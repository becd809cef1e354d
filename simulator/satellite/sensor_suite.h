#pragma once

#include "random.h"
#include "satellite.h"
#include "star_tracker.h"

namespace zavra::simulator
{

/// A satellite's sensors: what they make of the truth at each control tick. Each draws its noise from a stream of its
/// own, so that one sensor's failure does not change what another one gives.
class Sensor_Suite
{
public:
    Sensor_Suite(const Sensor_Settings& settings, unsigned long long seed);

    /// Measures. What has failed or is blind keeps its last value; the sun vector is zero where no sensor sees the sun.
    void measure(const Satellite& truth);

    const Measurements& measurements() const { return measurements_; }
    const Star_Tracker& star_tracker() const { return star_tracker_; }

    /// May be changed while time goes on.
    Sensor_Settings settings;

private:
    using Time = std::chrono::milliseconds;

    struct Vector_Sensor
    {
        explicit Vector_Sensor(Random own) : random(std::move(own)) {}

        Random random;
        Eigen::Vector3d walked = Eigen::Vector3d::Zero();
    };

    static void measure_vector(Vector_Sensor& sensor, const Vector_Sensor_Settings& settings,
                               const Eigen::Vector3d& truth, Time now, double seconds, Measurements::Vector& measured);
    void measure_sun(const Satellite& truth);

    Measurements measurements_;
    std::vector<Vector_Sensor> gyroscopes_;
    Vector_Sensor magnetometer_;
    Random sun_noise_;
    Random temperature_noise_;
    Star_Tracker star_tracker_;
};

}
