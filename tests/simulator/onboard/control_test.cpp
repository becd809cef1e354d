#include "protocol/actuators.h"
#include "protocol/controllers.h"
#include "rehearsal.h"
#include "simulator/onboard/vectors.h"

#include <gmock/gmock.h>

namespace zavra::test
{

// With a fixed seed each; benchmarks/mission_table.cpp has the same cases with twenty.

TEST(Control_Test, a_tumble_is_caught)
{
    EXPECT_LT(detumbled_dps("3u", 1), 0.5);
    EXPECT_LT(detumbled_dps("1u", 1), 0.5);
    EXPECT_LT(detumbled_dps("12u", 1), 0.5);
    EXPECT_GT(detumbled_dps("12u", 1, 60), 10) << "not at once";
}

TEST(Control_Test, magnetorquers_point_at_the_sun)
{
    EXPECT_LT(from_sun_deg(1), 5);
}

TEST(Control_Test, wheels_point_at_nadir_and_are_unloaded)
{
    const auto with_star_tracker = nadir(1, true, 1200, 1800);
    EXPECT_LT(with_star_tracker.percentile_95_deg, 0.1);
    EXPECT_LT(with_star_tracker.wheel_use, 0.3);
    EXPECT_LT(nadir(1, false, 1200, 1800).percentile_95_deg, 1);
}

TEST(Control_Test, a_ground_station_is_followed)
{
    EXPECT_LT(pass_over_station_deg(1), 0.3);
}

TEST(Control_Test, a_slew_settles_in_time)
{
    const int seconds = slew_s(1);
    EXPECT_GT(seconds, 20);
    EXPECT_LT(seconds, 120);
}

class Orders_Test : public testing::Test
{
protected:
    static void run_controller(Rehearsal& run, const ZAVRA_100_PID_Controller_Parameters& parameters,
                               float target_radps)
    {
        run.order(protocol::set_singleaxis_angularvelocity_controller_parameters, 0, parameters);
        run.order(protocol::start_singleaxis_angularvelocity_controller, 0, target_radps);
    }

    double rate_x() const { return run.satellite.angular_velocity_radps().x(); }
    const Control_Report& report() const { return run.unit.unit.parts.report->control; }

    Rehearsal run{"3u", 1};
};

TEST_F(Orders_Test, single_axis_controllers_reach_their_target)
{
    run_controller(run, {0.1F, 0, 0, 0, 0, 0, 100}, 0.02F);
    run.pass(120);
    EXPECT_NEAR(rate_x(), 0.02, 5e-4);
    EXPECT_EQ(report().single_axis_status[0], static_cast<unsigned int>(Single_Axis_Status::angular_velocity));
    run.order(protocol::start_singleaxis_angularvelocity_controller, 0, 0.0F);
    run.pass(60);
    const Eigen::Quaterniond before = run.satellite.attitude();
    run.order(protocol::start_singleaxis_anglestep_controller, 0, 0.5F);
    run.pass(150);
    EXPECT_NEAR(rotation_vector(before.conjugate() * run.satellite.attitude()).x(), 0.5, 0.05);

    run.order(protocol::set_operationmode_measurement);
    run.pass(1);
    EXPECT_EQ(report().single_axis_status[0], static_cast<unsigned int>(Single_Axis_Status::paused));
}

TEST_F(Orders_Test, anti_windup_keeps_a_limited_controller_from_overshooting)
{
    const auto overshoot = [](float k_aw) {
        Rehearsal one{"3u", 1};
        run_controller(one, {0.5F, 0.1F, 0, k_aw, 0, 0, 100}, 0.3F);
        double most = 0;
        one.pass(60, [&] { most = std::max(most, one.satellite.angular_velocity_radps().x()); });
        return most - 0.3;
    };
    EXPECT_GT(overshoot(0), 2 * overshoot(10));
}

TEST_F(Orders_Test, safe_and_measurement_mode_switch_all_actuators_off_and_idle_lets_commands_act)
{
    run.order(protocol::set_magnettorquer_all_dipole_moments, {0.1F, 0, 0});
    run.order(protocol::set_reactionwheel_speed, 0, 100.0F);
    run.pass(10);
    EXPECT_NEAR(run.satellite.dipole_moment_am2().x(), 0.08, 1e-6);
    EXPECT_NEAR(run.satellite.wheel_speeds_radps()[0], 100, 0.1);
    for (const auto& mode : {protocol::set_operationmode_safe, protocol::set_operationmode_measurement}) {
        run.order(mode);
        const double speed = run.satellite.wheel_speeds_radps()[0];
        run.pass(10);
        EXPECT_EQ(run.satellite.dipole_moment_am2(), Eigen::Vector3d::Zero());
        EXPECT_LT(run.satellite.wheel_speeds_radps()[0], speed) << "friction";
        EXPECT_EQ(run.unit.unit.telemetry.actuator().magnetorquers_target_dipole_moment_x_am2, 0);
    }
    run.order(protocol::set_operationmode_idle);
    run.pass(1);
    EXPECT_NEAR(run.satellite.dipole_moment_am2().x(), 0.08, 1e-6);
}

TEST_F(Orders_Test, suspended_magnetorquers_and_unknown_interfaces_are_reported)
{
    run.order(protocol::start_operationmode_detumbling, {});
    run.order(protocol::suspend_all_magnettorquers);
    run.satellite.set_angular_velocity({0.1, 0, 0});
    run.pass(5);
    EXPECT_EQ(run.satellite.dipole_moment_am2(), Eigen::Vector3d::Zero());
    EXPECT_EQ(report().main_error, static_cast<unsigned int>(Control_Error::magnetorquers_suspended));
    run.order(protocol::resume_all_magnettorquers);
    run.pass(5);
    EXPECT_GT(run.satellite.dipole_moment_am2().norm(), 0.01);
    for (const unsigned int interface : {1U, 7U}) {
        run.order(protocol::set_threeaxis_bdot_controller_max_parameters, {1, interface, 1000});
        run.order(protocol::set_threeaxis_bdot_controller_proportional_parameters, {1, interface, 1000});
        run.pass(2);
        EXPECT_EQ(report().main_error, static_cast<unsigned int>(Control_Error::unknown_actuator_interface));
        EXPECT_EQ(run.satellite.dipole_moment_am2().isZero(), interface == 1) << "unknown ones count as the usual";
    }
}

TEST_F(Orders_Test, prealignment_shows_what_is_left_to_turn)
{
    run.pass(600); // until the attitude is known
    run.order(protocol::start_targetpointing_nadir_mode, {0, {0, 1, 0}, {1, 0, 0}, 0, 500, {0.02F, 0, 0.001F, 0.2F}});
    run.pass(1);
    ASSERT_TRUE(report().pointing);
    EXPECT_EQ(report().pointing->state, Operation::prealigning);
    EXPECT_GT(report().pointing->target_angle_rad.norm(), 0.3);
    const auto axis = report().pointing->axis;
    ASSERT_THAT(axis, testing::AllOf(testing::Ge(1), testing::Le(3)));
    EXPECT_TRUE(report().pointing->active[axis - 1U]);
    EXPECT_EQ(run.unit.unit.parts.report->control.all_axis_status &
                  static_cast<unsigned int>(All_Axis_Status::target_followed),
              0U);
    run.pass(300);
    ASSERT_TRUE(report().pointing);
    EXPECT_TRUE(report().pointing->ready);
    EXPECT_EQ(report().pointing->state, Operation::pointing);
    EXPECT_LT((report().pointing->angle_rad - report().pointing->target_angle_rad).norm(), 0.02);

    run.satellite.set_angular_velocity({0.2, 0, 0});
    bool again = false;
    run.pass(20, [&] { again = again || report().pointing->state == Operation::prealigning; });
    EXPECT_TRUE(again) << "it was pushed beyond the threshold";
}

TEST_F(Orders_Test, a_point_that_moves_is_followed_from_start_to_stop)
{
    ZAVRA_100_TargetPointing_Target_Parameters_Telemetry p{};
    p.rotation_matrix = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    p.stop_longitude = 1;
    p.start_epoch_time = 1'516'485'600'000;
    p.stop_epoch_time = p.start_epoch_time + 100'000;
    Surroundings orbit;
    orbit.velocity_kmps = {0, 0, 7};
    const std::pair<int, double> cases[] = {{-50, 0}, {0, 0}, {50, 0.5}, {100, 1}, {200, 1}};
    for (const auto& [seconds, longitude] : cases) {
        const auto epoch = p.start_epoch_time + static_cast<unsigned long long>(seconds * 1000LL);
        const Eigen::Matrix3d to_earth = teme_to_earth_fixed(julian_date(epoch));
        orbit.position_km = to_earth.transpose() * Eigen::Vector3d(7000, 0, 0);
        const Target aim = target({Operation::earth_const_velocity, p, 0, 0, Eigen::Vector3d::Zero()}, &orbit, epoch);
        const Eigen::Vector3d place = earth_fixed_position({0, longitude, 0});
        EXPECT_LT(
            (to_earth * (aim.attitude * Eigen::Vector3d::UnitZ()) - (place - Eigen::Vector3d(7000, 0, 0)).normalized())
                .norm(),
            1e-6)
            << seconds;
    }
}

TEST_F(Orders_Test, polynomials_turn_the_target)
{
    ZAVRA_100_TargetPointing_Target_Parameters_Telemetry p{};
    p.rotation_matrix = {0, 1, 0, 0, 0, 1, 1, 0, 0}; // the line of sight is the body's x axis
    p.start_epoch_time = 1'000'000;
    p.polynomial_coeff[2 * 7 + 1] = 0.005F; // q_3: half of 0.01 rad/s about z, for small angles
    p.polynomial_coeff[3 * 7] = 1;
    const Target aim = target({Operation::inertial, p, 6, 0, Eigen::Vector3d::Zero()}, nullptr, 1'010'000);
    EXPECT_NEAR(2 * std::atan(0.05),
                rotation_vector(aim.attitude * Eigen::Quaterniond(wide(p.rotation_matrix)).conjugate()).z(), 1e-6);
    EXPECT_NEAR(aim.rate_radps.x(), 0.01 / (1 + 0.05 * 0.05), 1e-5) << "about the line of sight";
    EXPECT_NEAR(aim.rate_radps.tail<2>().norm(), 0, 1e-6);
}

TEST(Wheel_Array_Test, torque_is_shared_with_the_least_effort)
{
    const auto settings = Satellite_File(ZAVRA_EXAMPLES "/satellites/3u.toml").settings;
    const Wheel_Axes matrix = wide(torque_distribution(mission_of(settings)));
    Wheel_Axes axes = Wheel_Axes::Zero();
    for (std::size_t i = 0; i < 4; ++i)
        axes.col(static_cast<Eigen::Index>(i)) = settings.wheels[i]->axis;
    EXPECT_TRUE((axes * matrix.transpose()).isApprox(Eigen::Matrix3d::Identity(), 1e-6));
    EXPECT_NEAR(matrix.row(2).cwiseAbs().maxCoeff(), std::sqrt(3) / 4, 1e-6);
    EXPECT_EQ(matrix.rightCols<2>().cwiseAbs().maxCoeff(), 0) << "there are four";
}

}
