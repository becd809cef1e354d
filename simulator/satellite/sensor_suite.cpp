#include "sensor_suite.h"

namespace zavra::simulator
{

namespace
{

enum Stream : unsigned long long {
    gyroscope,
    magnetometer = gyroscope + max_gyroscopes,
    sun,
    startracker,
    temperature
};

/// Of the six faces with a sun sensor: +x, -x, +y, -y, +z, -z.
Eigen::Vector3d normal_of_face(std::size_t face)
{
    return Eigen::Vector3d::Unit(static_cast<Eigen::Index>(face / 2)) * (face % 2 == 0 ? 1 : -1);
}

}

Sensor_Suite::Sensor_Suite(const Sensor_Settings& of_sensors, unsigned long long seed)
    : settings(of_sensors),
      magnetometer_(Random(seed, Stream::magnetometer)),
      sun_noise_(seed, Stream::sun),
      temperature_noise_(seed, Stream::temperature),
      star_tracker_(Random(seed, Stream::startracker))
{
    for (std::size_t i = 0; i < max_gyroscopes; ++i)
        gyroscopes_.emplace_back(Random(seed, Stream::gyroscope + i));
}

void Sensor_Suite::measure_vector(Vector_Sensor& sensor, const Vector_Sensor_Settings& settings,
                                  const Eigen::Vector3d& truth, Time now, double seconds,
                                  Measurements::Vector& measured)
{
    // Drawn whether they are wanted or not, so that a change of settings changes nothing else.
    const Eigen::Vector3d noise = sensor.random.normal_vector();
    sensor.walked += settings.random_walk * std::sqrt(seconds) * sensor.random.normal_vector();
    measured.valid = !settings.failed;
    if (settings.failed)
        return;
    measured.value = truth + settings.bias + sensor.walked + settings.noise * noise;
    if (settings.range > 0)
        measured.value = measured.value.cwiseMin(settings.range).cwiseMax(-settings.range);
    measured.time = now;
}

void Sensor_Suite::measure(const Satellite& truth)
{
    const double seconds = static_cast<double>((truth.time() - measurements_.time).count()) * 1e-3;
    measurements_.time = truth.time();
    for (std::size_t i = 0; i < max_gyroscopes; ++i)
        measure_vector(gyroscopes_[i], settings.gyroscopes[i], truth.angular_velocity_radps(), truth.time(), seconds,
                       measurements_.angular_velocity_radps[i]);
    measure_vector(magnetometer_, settings.magnetometer,
                   truth.in_body(truth.surroundings().magnetic_field_t) +
                       settings.magnetorquer_disturbance_t_per_am2 * truth.dipole_moment_during_measurement_am2(),
                   truth.time(), seconds, measurements_.magnetic_field_t);
    measure_sun(truth);
    star_tracker_.measure(truth, settings.star_tracker, measurements_.attitude);
    measurements_.wheel_speed_radps = truth.wheel_speeds_radps();
    measurements_.temperature_degc =
        truth.temperature_degc() + settings.temperature_noise_degc * temperature_noise_.normal();
}

/// Each sensor that sees the sun gives its direction; the unit takes the mean.
void Sensor_Suite::measure_sun(const Satellite& truth)
{
    const Eigen::Vector3d direction = truth.in_body(truth.surroundings().sun_vector);
    const double least_cosine = std::cos(settings.sun_sensors.half_field_of_view_rad);
    Eigen::Vector3d seen = Eigen::Vector3d::Zero();
    for (std::size_t face = 0; face < settings.sun_sensors.failed.size(); ++face) {
        const Eigen::Vector3d noise = settings.sun_sensors.noise_rad * sun_noise_.normal_vector();
        if (!settings.sun_sensors.failed[face] && truth.surroundings().sunlight > 0 &&
            direction.dot(normal_of_face(face)) > least_cosine)
            seen += (direction + direction.cross(noise)).normalized();
    }
    measurements_.sun_vector = {seen.normalized(), truth.time(), !seen.isZero()};
}

}
