#include "simulator/bench/satellite_file.h"
#include "simulator/satellite/sensor_suite.h"

#include <gmock/gmock.h>

namespace zavra::test
{

using namespace simulator;
using Eigen::Vector3d;
using std::chrono::milliseconds;

constexpr milliseconds tick{100};

/// At rest in the orbit of the ISS, with perfect sensors.
Satellite_Settings quiet_satellite()
{
    Satellite_Settings settings;
    settings.start_epoch_msec = 1'516'485'600'000; // 20.01.2018 22:00:00 UTC
    parse_tle("1 25544U 98067A   18020.89808844  .00002078  00000-0  38550-4 0  9992",
              "2 25544  51.6424  32.9776 0003646  28.7227  39.5332 15.54190080 95614", settings.elements);
    settings.inertia_kgm2 = Vector3d(0.05, 0.042, 0.0085).asDiagonal();
    return settings;
}

void let_pass(Satellite& satellite, int ticks, const Actuation& actuation = {})
{
    for (int i = 0; i < ticks; ++i) {
        satellite.look_around();
        satellite.act(actuation, tick);
        satellite.advance(tick);
    }
}

TEST(Satellite_Test, a_wheel_does_what_it_is_told_within_its_limits)
{
    auto settings = quiet_satellite();
    settings.wheels[0] = {.axis = Vector3d::UnitX(), .inertia_kgm2 = 2e-5, .coulomb_friction_nm = 1e-6};
    Satellite satellite{settings};
    const auto speed = [&] { return satellite.wheel_speeds_radps()[0]; };
    Actuation actuation;
    Wheel_Command& wheel = actuation.wheels[0];
    wheel = {.kind = Wheel_Command::Kind::speed, .target = 100, .max_torque_nm = 1e-4, .max_speed_radps = 150};

    let_pass(satellite, 100, actuation); // 10 s at (1e-4 - 1e-6) / 2e-5 rad/s^2
    EXPECT_NEAR(speed(), 49.5, 0.1);
    EXPECT_NEAR(satellite.wheel_power_w(), 1e-4 * 49.5, 1e-4);
    EXPECT_NEAR(satellite.angular_velocity_radps().x() * 0.05, -2e-5 * speed(), 1e-6);
    let_pass(satellite, 120, actuation);
    EXPECT_NEAR(speed(), 100, 0.01);
    wheel.kind = Wheel_Command::Kind::torque;
    wheel.target = 1; // far too much
    let_pass(satellite, 300, actuation);
    EXPECT_NEAR(speed(), 150, 0.1);
    wheel.kind = Wheel_Command::Kind::idle;
    let_pass(satellite, 100, actuation); // 1e-6 / 2e-5 rad/s^2
    EXPECT_NEAR(speed(), 149.5, 0.1);
    satellite.stick_wheel(0, true);
    let_pass(satellite, 2, actuation);
    EXPECT_NEAR(speed(), 0, 1e-2);
    EXPECT_LT(satellite.angular_momentum_nms().norm(), 1e-12);
}

TEST(Satellite_Test, commands_that_are_no_numbers_move_nothing)
{
    auto settings = quiet_satellite();
    settings.wheels[0] = {.axis = Vector3d::UnitX(), .inertia_kgm2 = 2e-5};
    settings.magnetorquers.emplace();
    Satellite satellite{settings};
    Actuation actuation;
    actuation.dipole_moment_am2.setConstant(std::numeric_limits<double>::infinity());
    for (const double number : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        actuation.wheels[0] = {Wheel_Command::Kind::torque, number, number, number};
        let_pass(satellite, 2, actuation);
    }
    EXPECT_TRUE(satellite.angular_velocity_radps().allFinite());
    EXPECT_TRUE(satellite.attitude().coeffs().allFinite());
}

TEST(Satellite_Test, torques_change_its_momentum)
{
    auto settings = quiet_satellite();
    settings.magnetorquers.emplace().rest_msec = 20;
    settings.residual_dipole_am2 = {0.01, 0, 0};
    Satellite satellite{settings};
    Actuation actuation;
    actuation.dipole_moment_am2 = {0, 0.1, 0};
    const Vector3d field = satellite.in_body(satellite.surroundings().magnetic_field_t);
    let_pass(satellite, 1, actuation);
    EXPECT_LT((satellite.dipole_moment_am2() - Vector3d(0, 0.08, 0)).norm(), 1e-15) << "off for a fifth of the tick";
    EXPECT_TRUE(satellite.dipole_moment_during_measurement_am2().isZero());
    EXPECT_LT((satellite.angular_momentum_nms() - 0.1 * Vector3d(0.01, 0.08, 0).cross(field)).norm(), 1e-12);

    Satellite pushed{quiet_satellite()};
    pushed.add_torque({0, 0, 1e-5}, std::chrono::seconds(10));
    let_pass(pushed, 200);
    EXPECT_NEAR(pushed.angular_momentum_nms().z(), 1e-4, 1e-12);
}

TEST(Satellite_Test, its_orbit_takes_it_through_the_shadow)
{
    Satellite satellite{quiet_satellite()};
    int in_shadow = 0;
    constexpr int orbit = 55'590; // ticks
    for (int i = 0; i < orbit; ++i) {
        let_pass(satellite, 1);
        in_shadow += satellite.surroundings().sunlight == 0 ? 1 : 0;
    }
    EXPECT_NEAR(in_shadow / 600.0, 34.5, 2.0) << "minutes";
    EXPECT_NEAR(satellite.surroundings().magnetic_field_t.norm(), 35e-6, 20e-6);
}

TEST(Sensor_Suite_Test, is_perfect_unless_told_otherwise)
{
    auto settings = quiet_satellite();
    settings.angular_velocity_radps = {0.01, -0.02, 0.03};
    settings.attitude = Eigen::Quaterniond(0.5, 0.5, -0.5, 0.5);
    Satellite satellite{settings};
    Sensor_Suite suite{settings.sensors, 1};
    let_pass(satellite, 10);
    suite.measure(satellite);
    const Measurements& m = suite.measurements();
    EXPECT_EQ(m.time, satellite.time());
    EXPECT_EQ(m.angular_velocity_radps[2].value, satellite.angular_velocity_radps());
    EXPECT_EQ(m.magnetic_field_t.value, satellite.in_body(satellite.surroundings().magnetic_field_t));
    EXPECT_EQ(m.attitude.value.coeffs(), satellite.attitude().coeffs());
    EXPECT_LT((m.sun_vector.value - satellite.in_body(satellite.surroundings().sun_vector)).norm(), 1e-15);
}

TEST(Sensor_Suite_Test, errs_as_it_is_told)
{
    Satellite satellite{quiet_satellite()};
    Sensor_Settings settings;
    settings.gyroscopes[0] = {.bias = {0.1, 0.2, 0.3}, .noise = 1e-3};
    settings.gyroscopes[1] = {.bias = {10, -10, 0}, .range = 4};
    settings.gyroscopes[2].random_walk = 1e-3;
    settings.star_tracker = {.noise_across_rad = 1e-4, .noise_along_rad = 1e-3};
    Sensor_Suite suite{settings, 7};
    constexpr int measurements = 2000;
    Vector3d mean = Vector3d::Zero();
    Vector3d squares = Vector3d::Zero();
    Vector3d tracker = Vector3d::Zero();
    for (int i = 0; i < measurements; ++i) {
        satellite.advance(tick);
        suite.measure(satellite);
        const Vector3d error = suite.measurements().angular_velocity_radps[0].value - Vector3d(0.1, 0.2, 0.3);
        mean += error / measurements;
        squares += error.cwiseAbs2() / measurements;
        const auto difference = satellite.attitude().conjugate() * suite.measurements().attitude.value;
        tracker += (2 * difference.vec()).cwiseAbs2() / measurements;
    }
    EXPECT_LT(mean.cwiseAbs().maxCoeff(), 4 * 1e-3 / std::sqrt(measurements));
    EXPECT_LT((squares.cwiseSqrt() / 1e-3 - Vector3d::Ones()).cwiseAbs().maxCoeff(), 0.08);
    EXPECT_LT((tracker.cwiseSqrt().cwiseQuotient(Vector3d(1e-4, 1e-4, 1e-3)) - Vector3d::Ones()).norm(), 0.1);
    EXPECT_EQ(suite.measurements().angular_velocity_radps[1].value, Vector3d(4, -4, 0));
    const double walked = suite.measurements().angular_velocity_radps[2].value.norm();
    EXPECT_GT(walked, 1e-3);
    EXPECT_LT(walked, 4 * 1e-3 * std::sqrt(3 * 200)) << "200 s";
}

TEST(Sensor_Suite_Test, what_fails_or_is_blind_keeps_its_last_value)
{
    auto settings = quiet_satellite();
    settings.angular_velocity_radps = {0, 0.1, 0};
    settings.sensors.star_tracker.max_rate_radps = 0.2;
    Satellite satellite{settings};
    Sensor_Suite suite{settings.sensors, 0};
    suite.measure(satellite);
    const Measurements before = suite.measurements();
    ASSERT_TRUE(before.attitude.valid && before.sun_vector.valid);
    EXPECT_THAT(suite.star_tracker().events(23).size(), testing::AllOf(testing::Gt(4U), testing::Lt(24U)));
    suite.settings.gyroscopes[0].failed = true;
    suite.settings.sun_sensors.failed.fill(true);
    satellite.set_angular_velocity({0, 0.3, 0});
    satellite.advance(tick);
    suite.measure(satellite);
    const Measurements& m = suite.measurements();
    EXPECT_FALSE(m.angular_velocity_radps[0].valid);
    EXPECT_EQ(m.angular_velocity_radps[0].value, before.angular_velocity_radps[0].value);
    EXPECT_EQ(m.angular_velocity_radps[0].time, before.time);
    EXPECT_NEAR(m.angular_velocity_radps[1].value.y(), 0.3, 1e-12);
    EXPECT_FALSE(m.sun_vector.valid);
    EXPECT_TRUE(m.sun_vector.value.isZero());
    EXPECT_FALSE(m.attitude.valid) << "too fast";
    EXPECT_EQ(m.attitude.time, before.time);
    EXPECT_TRUE(suite.star_tracker().events(23).empty());
}

}
