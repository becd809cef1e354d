#include "simulator/satellite/attitude.h"
#include "simulator/satellite/rigid_body.h"
#include "tests/simulator/number_table.h"

#include <gmock/gmock.h>

#include <numbers>

namespace zavra::test
{

using namespace simulator;
using Eigen::Vector3d;

constexpr double degree = std::numbers::pi / 180;
constexpr double tick_s = 0.1;
const auto no_torque = [](const Eigen::Quaterniond&) { return Vector3d(Vector3d::Zero()); };

Rigid_Body body_of(const Vector3d& moments, const Vector3d& rate, const Rigid_Body::Wheels& wheels = {})
{
    Rigid_Body body{moments.asDiagonal(), wheels};
    body.set_angular_velocity(rate);
    return body;
}

template <class Torque = decltype(no_torque)>
void let_pass(Rigid_Body& body, double seconds, const Torque& torque = no_torque,
              const Rigid_Body::Per_Wheel& rotor_torques = {})
{
    for (long i = std::lround(seconds / tick_s); i > 0; --i)
        body.advance(tick_s, torque, rotor_torques);
}

TEST(Rigid_Body_Test, turns_as_jacobis_elliptic_functions_say)
{
    for (const char* name : {"torque_free_about_max_axis.csv", "torque_free_about_min_axis.csv"}) {
        SCOPED_TRACE(name);
        const auto rows = number_table(std::string("dynamics/") + name);
        ASSERT_EQ(rows.size(), 13U);
        Rigid_Body body = body_of({0.05, 0.042, 0.0085}, {rows[0][1], rows[0][2], rows[0][3]});
        double time = 0;
        for (const auto& row : rows) {
            let_pass(body, row[0] - time);
            time = row[0];
            EXPECT_LT((body.angular_velocity_radps() - Vector3d(row[1], row[2], row[3])).norm(), 1e-7) << time;
            const Eigen::Quaterniond attitude{row[4], row[5], row[6], row[7]};
            EXPECT_LT(body.attitude().angularDistance(attitude), 2e-6) << time;
        }
    }
}

/// The direction of the transverse rate, in rad.
double phase(const Rigid_Body& body)
{
    return std::atan2(body.angular_velocity_radps().y(), body.angular_velocity_radps().x());
}

TEST(Rigid_Body_Test, a_symmetric_top_nutates_and_precesses)
{
    Rigid_Body top = body_of({0.04, 0.04, 0.01}, {0.1, 0, 0.5});
    const Vector3d momentum = top.angular_momentum_nms().normalized();
    const auto axis = [&] { return Vector3d(body_from_inertial(top.attitude()).transpose().col(2)); };
    EXPECT_NEAR(std::acos(axis().dot(momentum)), 38.659808254 * degree, 1e-9);
    // About the momentum's direction in inertial space, from one second to the next.
    const Vector3d before = axis();
    let_pass(top, 1);
    EXPECT_NEAR(phase(top), -0.375, 1e-8);
    const Vector3d from = momentum.cross(before).normalized();
    const Vector3d to = momentum.cross(axis()).normalized();
    EXPECT_NEAR(std::atan2(from.cross(to).dot(momentum), from.dot(to)), 0.160078105936, 1e-8);
    EXPECT_NEAR(std::acos(axis().dot(momentum)), 38.659808254 * degree, 1e-8);
}

TEST(Rigid_Body_Test, a_wheel_makes_it_a_gyrostat)
{
    Rigid_Body::Wheels wheels;
    wheels[2] = {Vector3d::UnitZ(), 4e-5};
    Rigid_Body top = body_of({0.04, 0.04, 0.01}, {0.1, 0, 0.5}, wheels);
    top.set_wheel_speeds({0, 0, 0.02 / 4e-5 - 0.5, 0, 0, 0}); // 0.02 N m s in inertial space
    // -0.375 rad/s without the wheel; its momentum turns the rates the other way.
    let_pass(top, 1);
    EXPECT_NEAR(phase(top), -0.375 + 0.02 / 0.04, 1e-8);
}

TEST(Rigid_Body_Test, a_wheel_that_spins_up_turns_the_body_back)
{
    Rigid_Body::Wheels wheels;
    wheels[0] = {Vector3d::UnitX(), 3e-5};
    Rigid_Body body = body_of({0.04, 0.04, 0.01}, Vector3d::Zero(), wheels);
    let_pass(body, 5, no_torque, {1e-3});
    EXPECT_NEAR(body.angular_velocity_radps().x(), -7.161972 * degree, 1e-8);
    EXPECT_NEAR(body.wheel_speeds_radps()[0], 1592.743 * 2 * std::numbers::pi / 60, 1e-4);
    EXPECT_LT(body.angular_momentum_nms().norm(), 1e-15);
}

TEST(Rigid_Body_Test, a_constant_torque_speeds_it_up)
{
    Rigid_Body body = body_of({0.04, 0.03, 0.01}, Vector3d::Zero());
    let_pass(body, 100, [](const Eigen::Quaterniond&) { return Vector3d(1e-5, 0, 0); });
    EXPECT_NEAR(body.angular_velocity_radps().x(), 1.4323944878 * degree, 1e-12);
    EXPECT_NEAR(body.attitude().angularDistance(Eigen::Quaterniond::Identity()), 71.61972 * degree, 1e-7);
}

/// A body in a circular orbit of 500 km in the x-z plane, and its small angles to the local vertical.
class Gravity_Gradient_Test : public testing::Test
{
protected:
    static constexpr double distance_km = 6878.137;
    const double mean_motion = std::sqrt(398600.4418 / std::pow(distance_km, 3));

    Gravity_Gradient_Test() { body.set_angular_velocity({0, mean_motion, 0}); }

    /// Away from the Earth: z at the start, then towards x.
    Vector3d up(double when) const { return {std::sin(mean_motion * when), 0, std::cos(mean_motion * when)}; }

    /// From the frame of the orbit to the body.
    Eigen::Matrix3d from_orbit() const
    {
        return body_from_inertial(body.attitude()) *
               Eigen::AngleAxisd(mean_motion * time, Vector3d::UnitY()).toRotationMatrix();
    }
    double roll() const { return from_orbit()(1, 2); }
    double pitch() const { return -from_orbit()(0, 2); }

    void turn_by(const Vector3d& rotation)
    {
        body.set_attitude(turned(body.attitude(), rotation));
        body.set_angular_velocity(body_from_inertial(body.attitude()) * Vector3d(0, mean_motion, 0));
    }

    void step()
    {
        const double middle = time + tick_s / 2;
        body.advance(tick_s, [&](const Eigen::Quaterniond& attitude) {
            return gravity_gradient_nm(inertia, body_from_inertial(attitude) * up(middle), distance_km);
        });
        time += tick_s;
    }

    /// Mean time between rises through 0.
    template <class Angle>
    double period(Angle angle, int periods)
    {
        std::vector<double> rises;
        for (double before = angle(); rises.size() <= static_cast<std::size_t>(periods);) {
            step();
            const double now = angle();
            if (before < 0 && now >= 0)
                rises.push_back(time - tick_s * now / (now - before));
            before = now;
        }
        return (rises.back() - rises.front()) / periods;
    }

    const Eigen::Matrix3d inertia = Vector3d(0.045, 0.05, 0.012).asDiagonal();
    Rigid_Body body{inertia, {}};
    double time = 0;
};

TEST_F(Gravity_Gradient_Test, pitch_librates)
{
    turn_by({0, 0.01 * degree, 0});
    EXPECT_NEAR(period([this] { return pitch(); }, 1) / 4034.453, 1, 1e-5);
}

TEST_F(Gravity_Gradient_Test, pitch_librates_slower_with_a_larger_amplitude)
{
    turn_by({0, 2 * degree, 0});
    EXPECT_NEAR(period([this] { return pitch(); }, 1) / 4035.682, 1, 1e-5);
}

TEST_F(Gravity_Gradient_Test, roll_and_yaw_couple_with_two_periods)
{
    // In the linear equations both angles are sums of the two oscillations, and so is their response to any start: what
    // is left of roll once two periods' worth of one is combined away obeys the other.
    turn_by({0.01 * degree, 0, 0});
    const double slow = 2 * std::numbers::pi / 8927.923;
    const double fast = 2 * std::numbers::pi / 3042.805;
    constexpr int spacing = 3000; // ticks: x(t + h) + x(t - h) = 2 cos(w h) x(t) for each oscillation
    std::vector<double> rolls;
    for (int i = 0; i < 5 * spacing; ++i) {
        rolls.push_back(roll());
        step();
    }
    const double h = spacing * tick_s;
    const auto without = [&](double frequency, std::size_t i) {
        return rolls[i + spacing] + rolls[i - spacing] - 2 * std::cos(frequency * h) * rolls[i];
    };
    const auto kept = [&](double removed, double other) {
        const double middle = without(removed, 2 * spacing);
        return without(removed, spacing) + without(removed, 3 * spacing) - 2 * std::cos(other * h) * middle;
    };
    const double left = std::abs(kept(slow, fast));
    EXPECT_LT(left, 0.3 * std::abs(kept(slow, 1.001 * fast)));
    EXPECT_LT(left, 0.3 * std::abs(kept(1.001 * slow, fast)));
}

TEST(Rigid_Body_Test, momentum_changes_by_external_torque_alone)
{
    Rigid_Body::Wheels wheels;
    for (std::size_t i = 0; i < 4; ++i)
        wheels[i] = {Vector3d(i % 2 == 0 ? 1 : -1, i < 2 ? 1 : -1, 1).normalized(), 2e-6};
    Rigid_Body body = body_of({0.05, 0.042, 0.0085}, {0.01, -0.02, 0.015}, wheels);
    const auto momentum = [&] {
        return Vector3d(body_from_inertial(body.attitude()).transpose() * body.angular_momentum_nms());
    };
    const Vector3d at_start = momentum();
    const auto spin = [&](double seconds, double torque, const auto& external) {
        let_pass(body, seconds, external, {torque, -torque / 2, torque / 3, torque});
    };
    for (int i = 0; i < 18; ++i) {
        spin(100, 2e-6, no_torque);
        spin(100, -2e-6, no_torque);
        EXPECT_LT((momentum() - at_start).norm(), 1e-9 * at_start.norm()) << i;
    }
    // A torque that is constant in inertial space.
    const Vector3d torque{1e-6, -2e-6, 3e-6};
    const Vector3d before = momentum();
    spin(100, 2e-6, [&](const Eigen::Quaterniond& q) { return Vector3d(body_from_inertial(q) * torque); });
    EXPECT_LT((momentum() - before - 100 * torque).norm(), 1e-9 * torque.norm() * 100);
}

}
