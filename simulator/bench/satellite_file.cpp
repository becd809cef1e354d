#include "satellite_file.h"

#include "../orbit/frames.h"
#include "../orbit/sgp4.h"
#include "../satellite/geomagnetic_field.h"
#include "../unit/actuators.h"
#include "toml_reader.h"
#include "variation.h"

#include <Eigen/Eigenvalues>

namespace zavra::simulator
{

namespace
{

constexpr std::array<const char*, max_wheels> wheel_names{"x", "y", "z", "u", "v", "w"};

void read_orbit(Toml_Reader& start, Satellite_File& file)
{
    constexpr double far_days = 30;
    Satellite_Settings& settings = file.settings;
    settings.start_epoch_msec = start.time("time");
    const auto lines = start.texts("tle");
    if (lines.size() != 2)
        start.fail("start.tle has not 2 lines", "tle");
    if (const Tle_Error error = parse_tle(lines[0], lines[1], settings.elements); error != Tle_Error::none)
        start.fail(std::string("start.tle: ") + to_string(error), "tle");

    const Julian_Date date = julian_date(settings.start_epoch_msec);
    const double minutes = minutes_between(settings.elements.epoch, date);
    Orbit_State state;
    if (const Tle_Error error = Sgp4(settings.elements).propagate(minutes, state); error != Tle_Error::none)
        start.fail(std::string("start.tle at start.time: ") + to_string(error), "tle");
    if (const double days = std::abs(minutes) / 1440; days > far_days)
        file.warnings.push_back(start.place_of("time") + "start.time is " + std::to_string(std::lround(days)) +
                                " days from the epoch of the elements; the orbit is a guess");
    if (const double year = decimal_year(date);
        year < Geomagnetic_Field::first_year || year > Geomagnetic_Field::last_year)
        file.warnings.push_back(start.place_of("time") +
                                "start.time is outside the years of the magnetic field's model");
}

void read_start(Toml_Reader start, Satellite_File& file)
{
    read_orbit(start, file);
    if (start.has("attitude")) {
        const auto q = start.numbers("attitude");
        if (q.size() != 4)
            start.fail("start.attitude has not 4 numbers", "attitude");
        const Eigen::Quaterniond attitude{q[3], q[0], q[1], q[2]};
        if (!(attitude.norm() > 0))
            start.fail("start.attitude is a quaternion of length 0", "attitude");
        file.settings.attitude = attitude.normalized();
    }
    file.settings.angular_velocity_radps =
        start.vector("angular_velocity_radps").value_or(Eigen::Vector3d(Eigen::Vector3d::Zero()));
    start.finish();
}

void read_body(Toml_Reader body, Satellite_Settings& settings)
{
    const auto inertia = body.numbers("inertia_kgm2");
    if (inertia.size() == 3)
        settings.inertia_kgm2 = Eigen::Vector3d(inertia.data()).asDiagonal();
    else if (inertia.size() == 9)
        settings.inertia_kgm2 = Eigen::Matrix3d(inertia.data());
    else
        body.fail("body.inertia_kgm2 has not 3 or 9 numbers", "inertia_kgm2");
    if (!settings.inertia_kgm2.isApprox(settings.inertia_kgm2.transpose()))
        body.fail("body.inertia_kgm2 is not symmetric", "inertia_kgm2");
    const Eigen::Vector3d moments =
        Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d>(settings.inertia_kgm2, Eigen::EigenvaluesOnly).eigenvalues();
    if (!(moments[0] > 0))
        body.fail("body.inertia_kgm2 has a principal moment that is not positive", "inertia_kgm2");
    if (moments[0] + moments[1] < moments[2] * (1 - 1e-9))
        body.fail("body.inertia_kgm2 has a principal moment that exceeds the sum of the other two", "inertia_kgm2");
    if (const auto dipole = body.vector("residual_dipole_am2"))
        settings.residual_dipole_am2 = *dipole;
    body.finish();
}

Wheel_Settings read_wheel(Toml_Reader wheel, std::size_t index)
{
    Wheel_Settings settings{
        .axis = wheel.unit_vector("axis").value_or(Eigen::Vector3d::Unit(static_cast<Eigen::Index>(index % 3))),
        .inertia_kgm2 =
            wheel.positive("inertia_kgm2").value_or(double{Reaction_Wheel().parameters().moment_of_inertia}),
        .max_torque_nm = wheel.positive("max_torque_nm"),
        .max_speed_radps = wheel.positive("max_speed_radps"),
        .viscous_friction_nms = wheel.not_negative("viscous_friction_nms"),
        .coulomb_friction_nm = wheel.not_negative("coulomb_friction_nm"),
        .speed_radps = wheel.number("speed_radps").value_or(0)};
    wheel.finish();
    return settings;
}

Magnetorquer_Settings read_magnetorquers(Toml_Reader torquers)
{
    Magnetorquer_Settings settings{.max_dipole_moment_am2 = torquers.vector("max_dipole_moment_am2"),
                                   .rest_msec = torquers.not_negative("rest_msec")};
    if (settings.max_dipole_moment_am2 && settings.max_dipole_moment_am2->minCoeff() < 0)
        torquers.fail("magnetorquers.max_dipole_moment_am2 is negative", "max_dipole_moment_am2");
    torquers.finish();
    return settings;
}

Vector_Sensor_Settings read_vector_sensor(Toml_Reader& sensor, const std::string& unit)
{
    Vector_Sensor_Settings settings;
    if (const auto bias = sensor.vector("bias_" + unit))
        settings.bias = *bias;
    settings.noise = sensor.not_negative("noise_" + unit);
    settings.random_walk = sensor.not_negative("random_walk_" + unit + "_sqrts");
    settings.range = sensor.positive("range_" + unit).value_or(0);
    return settings;
}

void read_sensors(Toml_Reader sensors, Sensor_Settings& settings)
{
    Toml_Reader gyroscopes = sensors.within("gyroscopes");
    settings.gyroscopes.fill(read_vector_sensor(gyroscopes, "radps"));
    gyroscopes.finish();

    Toml_Reader magnetometer = sensors.within("magnetometer");
    settings.magnetometer = read_vector_sensor(magnetometer, "t");
    settings.magnetorquer_disturbance_t_per_am2 = magnetometer.number("torquer_disturbance_t_per_am2").value_or(0);
    magnetometer.finish();

    Toml_Reader sun = sensors.within("sun_sensors");
    auto& sun_sensors = settings.sun_sensors;
    sun_sensors.half_field_of_view_rad =
        sun.positive("half_field_of_view_rad").value_or(sun_sensors.half_field_of_view_rad);
    sun_sensors.noise_rad = sun.not_negative("noise_rad");
    sun.finish();

    Toml_Reader tracker = sensors.within("star_tracker");
    settings.star_tracker = {.axis = tracker.unit_vector("axis").value_or(settings.star_tracker.axis),
                             .noise_across_rad = tracker.not_negative("noise_across_rad"),
                             .noise_along_rad = tracker.not_negative("noise_along_rad"),
                             .sun_exclusion_rad = tracker.not_negative("sun_exclusion_rad"),
                             .earth_exclusion_rad = tracker.not_negative("earth_exclusion_rad"),
                             .max_rate_radps = tracker.positive("max_rate_radps").value_or(0)};
    tracker.finish();
    settings.temperature_noise_degc = sensors.not_negative("temperature_noise_degc");
    sensors.finish();
}

void read(Toml_Reader file, Satellite_File& satellite)
{
    Satellite_Settings& settings = satellite.settings;
    settings.seed = file.whole_number("seed", 0);
    read_start(file.within("start"), satellite);
    read_body(file.within("body"), settings);

    Toml_Reader environment = file.within("environment");
    settings.gravity_gradient = environment.flag("gravity_gradient", false);
    if (const auto torque = environment.vector("disturbance_torque_nm"))
        settings.disturbance_torque_nm = *torque;
    environment.finish();

    Toml_Reader thermal = file.within("thermal");
    settings.temperature_degc = thermal.number("temperature_degc").value_or(settings.temperature_degc);
    settings.eclipse_cooling_degc = thermal.number("eclipse_cooling_degc").value_or(0);
    settings.thermal_time_constant_s = thermal.positive("time_constant_s").value_or(settings.thermal_time_constant_s);
    thermal.finish();

    Toml_Reader wheels = file.within("wheels");
    for (std::size_t i = 0; i < max_wheels; ++i)
        if (wheels.has(wheel_names[i]))
            settings.wheels[i] = read_wheel(wheels.within(wheel_names[i]), i);
    wheels.finish();
    if (file.has("magnetorquers"))
        settings.magnetorquers = read_magnetorquers(file.within("magnetorquers"));
    read_sensors(file.within("sensors"), settings.sensors);
    file.finish();
}

}

Satellite_File::Satellite_File(const std::filesystem::path& file, Variation* variation)
{
    const std::string name = "Satellite " + file.string();
    toml::table table = parse_toml(file, name);
    if (variation != nullptr)
        variation->apply(table);
    read(Toml_Reader(table, name), *this);
}

}
