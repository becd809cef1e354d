#include "simulator/bench/satellite_file.h"
#include "simulator/bench/scenario.h"
#include "tests/support/simulated_bus.h"

#include <cstring>
#include <fstream>
#include <gmock/gmock.h>

namespace zavra::test
{

using namespace simulator;
using testing::FloatNear;
using testing::HasSubstr;

class Satellite_World_Test : public Bus_Test
{
protected:
    static Satellite_Settings settings()
    {
        auto settings = Satellite_File(ZAVRA_SCENARIOS "/../satellites/12u.toml").settings;
        settings.sensors = {};
        return settings;
    }

    void pass(Clock::Time time)
    {
        clock.advance(time);
        bench.time.run_due();
    }

    Manual_Clock clock;
    Test_Bench bench{clock, {.satellite = settings()}};
    Test_Bench::Unit& unit = bench.unit();
    Unit_Parts& parts = unit.unit.parts;
    Satellite& satellite = unit.satellite->satellite;
};

TEST_F(Satellite_World_Test, commands_move_it_and_telemetry_shows_it)
{
    EXPECT_EQ(parts.time.epoch_msec(), 1'516'489'200'000U);
    Bus_Server server{unit.faults, directory, "i2c-0"};
    ZAVRA_100 device(10, "i2c-0");
    device.Set_ReactionWheel_Speed(2, 50);
    device.Set_Magnettorquer_All_Dipole_Moments({0.4F, 0, 0});
    const auto momentum = satellite.angular_momentum_nms();
    pass(std::chrono::seconds(60));
    const auto t = unit.unit.telemetry;
    EXPECT_THAT(t.actuator().reactionwheel_current_speed_z_radps, FloatNear(50, 0.1F));
    EXPECT_EQ(t.actuator().reactionwheel_current_speed_u_radps, 0) << "there is none";
    EXPECT_FLOAT_EQ(t.power().magnettorquer_current_consumption_a, 0.1F * 0.75F) << "on for three quarters of a tick";
    EXPECT_FLOAT_EQ(t.power().magnettorquer_power_consumption_w, 5 * 0.1F * 0.75F);
    EXPECT_GT(t.power().reactionwheel_power_consumption_w, 0);
    EXPECT_GT((satellite.angular_momentum_nms() - momentum).norm(), 1e-6);
    EXPECT_EQ(t.sensor().measured_angular_velocity_gyro_2_z_radps,
              static_cast<float>(unit.satellite->sensors.measurements().angular_velocity_radps[1].value.z()));
    device.Suspend_All_Magnettorquers();
    device.Set_ReactionWheel_Torque({0, 0, 1e-4F});
    satellite.set_angular_velocity(Eigen::Vector3d::Zero());
    pass(std::chrono::seconds(10));
    EXPECT_NEAR(satellite.angular_velocity_radps().z(), (1e-4 + 1e-5) * 10 / 0.19, 5e-5)
        << "friction brakes the rotor, too";
}

TEST_F(Satellite_World_Test, measurements_are_as_old_as_the_last_tick_and_injections_stand_for_them)
{
    pass(Clock::Time(1250));
    EXPECT_EQ(parts.sensors.magnetic_field_t(0).epoch_msec, parts.time.epoch_msec() - 50);
    EXPECT_EQ(parts.startracker_orbit.quaternion().epoch_time_msec, parts.time.epoch_msec() - 50);
    Sensors::Measurement injected{{1, 2, 3}, 5};
    parts.sensors.gyroscopes[0].injected = injected;
    parts.sensors.injected_sun_vector = injected;
    EXPECT_EQ(unit.unit.telemetry.sensor().measured_angular_velocity_gyro_1_y_radps, 2);
    pass(Clock::Time(100));
    const Measurements seen = parts.measurements(unit.satellite->sensors.measurements());
    EXPECT_EQ(seen.angular_velocity_radps[0].value, Eigen::Vector3d(1, 2, 3));
    EXPECT_EQ(seen.sun_vector.value, Eigen::Vector3d(1, 2, 3));
    EXPECT_EQ(seen.epoch_time_msec, parts.time.epoch_msec());
}

TEST_F(Satellite_World_Test, telemetry_shows_what_the_software_believes)
{
    const auto standard = [&] { return unit.unit.telemetry.standard(); };
    pass(std::chrono::seconds(1));
    EXPECT_EQ(unit.unit.telemetry.attitude().quaternion_attitude_4_bf, 0) << "unknown";
    EXPECT_EQ(standard().sat_error_register, 1U) << "no elements";
    EXPECT_EQ(standard().sat_main_register, 0x20U) << "the bias is estimated";

    ZAVRA_100_Orbit_TLE_Data elements{};
    std::strcpy(elements.tle_1, "1 33591U 09005A   18020.91958580  .00000107  00000-0  83477-4 0  9992");
    std::strcpy(elements.tle_2, "2 33591  99.1238 356.1693 0014450  24.0615 336.1228 14.12247534461122");
    ASSERT_EQ(parts.startracker_orbit.load(elements), Tle_Error::none);
    pass(std::chrono::seconds(10));
    const auto t = unit.unit.telemetry.attitude();
    const Eigen::Quaternionf q(t.quaternion_attitude_4_bf, t.quaternion_attitude_1_bf, t.quaternion_attitude_2_bf,
                               t.quaternion_attitude_3_bf);
    EXPECT_LT(q.cast<double>().angularDistance(satellite.attitude()), 2e-3) << "of the last tick";
    EXPECT_EQ(t.epoch_time_last_attitude_determination_msec, parts.time.epoch_msec());
    EXPECT_EQ(standard().sat_error_register, 0U);
    EXPECT_EQ(standard().sat_main_register & 3U, 3U);
}

TEST_F(Satellite_World_Test, a_reset_of_the_unit_does_not_stop_it)
{
    pass(std::chrono::seconds(10));
    unit.faults.inject(Fault::reset);
    pass(std::chrono::seconds(10));
    EXPECT_EQ(parts.time.epoch_msec(), 10'000U);
    EXPECT_EQ(satellite.epoch_time_msec(), 1'516'489'220'100U) << "ready for the next tick";
}

TEST_F(Satellite_World_Test, what_happens_does_not_depend_on_who_looks_when)
{
    Manual_Clock other_clock;
    Test_Bench other{other_clock, {.satellite = settings()}};
    pass(std::chrono::seconds(50));
    for (int i = 0; i < 500; ++i) {
        other_clock.advance(Clock::Time(100));
        other.time.run_due();
        other.unit().unit.telemetry.sensor();
    }
    EXPECT_EQ(satellite.attitude().coeffs(), other.unit().satellite->satellite.attitude().coeffs());
}

TEST_F(Satellite_World_Test, the_on_board_software_runs_at_each_tick)
{
    struct Counting : Onboard_Software
    {
        void tick(const Measurements& m, Actuation& actuation) override
        {
            ++ticks;
            last = m.time;
            actuation.dipole_moment_am2 = {1, 0, 0};
        }
        void reset() override { ++resets; }
        int ticks = 0;
        int resets = 0;
        Clock::Time last{0};
    };
    auto software = std::make_unique<Counting>();
    const Counting& counting = *software;
    unit.unit.software = std::move(software);
    pass(std::chrono::seconds(1));
    EXPECT_EQ(counting.ticks, 11);
    EXPECT_EQ(counting.last, Clock::Time(1000));
    EXPECT_EQ(satellite.dipole_moment_am2(), Eigen::Vector3d(0.75, 0, 0));
    unit.unit.reset();
    EXPECT_EQ(counting.resets, 1);
}

TEST_F(Satellite_World_Test, a_scenario_changes_it)
{
    const auto play = [&](const std::string& text) {
        std::ofstream(directory / "scenario.toml") << text;
        Scenario(directory / "scenario.toml").play(bench, {10});
    };
    play(R"(
        [[event]]
        at = 1
        satellite = { angular_velocity_radps = [0.1, 0, 0] }
        [[event]]
        at = 2
        satellite = { sensor = "gyroscope_2", fails = true }
        [[event]]
        at = 2
        satellite = { sensor = "magnetometer", bias = [1e-3, 0, 0] }
        [[event]]
        at = 3
        satellite = { torque_nm = [0, 0, 1e-3], for = 2 }
    )");
    pass(Clock::Time(1000));
    EXPECT_NEAR(satellite.angular_velocity_radps().x(), 0.1, 1e-3);
    EXPECT_FLOAT_EQ(unit.unit.telemetry.sensor().measured_angular_velocity_gyro_1_x_radps, 0.1F);
    pass(Clock::Time(2000));
    const double before = satellite.angular_momentum_nms().norm();
    EXPECT_GT(parts.sensors.magnetic_field_t(0).vector.x, 9e-4F);
    EXPECT_EQ(parts.sensors.angular_velocity_radps(1).epoch_msec, parts.time.epoch_msec() - 1100);
    pass(Clock::Time(10'000));
    EXPECT_GT(satellite.angular_momentum_nms().norm(), before + 1e-5);

    for (const auto& [event, message] : std::vector<std::pair<const char*, const char*>>{
             {"torque_nm = [0, 0]", "torque_nm"},
             {"torque_nm = [0, 0, nan]", "expected a finite number"},
             {"sensor = \"nose\", fails = true", "there is no \"nose\""},
             {"sensor = \"gyroscope_4\", fails = true", "there is no \"gyroscope_4\""},
             {"sensor = \"magnetometer\", fails = 1", "expected true or false"},
             {"wheel = \"q\", sticks = true", "expected x, y, z, u, v or w"},
             {"wheel = \"x\"", "satellite"},
             {"colour = 1, wheel = \"x\", sticks = true", "no meaning together"}}) {
        SCOPED_TRACE(event);
        EXPECT_THAT(
            message_of<std::runtime_error>([&] { play(std::string("[[event]]\nsatellite = { ") + event + " }\n"); }),
            testing::AllOf(HasSubstr("scenario.toml:1: "), HasSubstr(message)));
    }
}

}
