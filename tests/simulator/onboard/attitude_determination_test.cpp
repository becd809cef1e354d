#include "attitude_knowledge.h"
#include "simulator/bench/satellite_file.h"
#include "simulator/onboard/triad.h"
#include "simulator/satellite/attitude.h"

#include <gmock/gmock.h>

namespace zavra::test
{

using namespace simulator;
using Eigen::Vector3d;
using Motion = Observed_Satellite::Motion;
using Method = Determination_Method;

constexpr double degree = 3.14159265358979 / 180;

Satellite_Settings three_unit()
{
    auto settings = Satellite_File(ZAVRA_SCENARIOS "/../satellites/3u.toml").settings;
    settings.angular_velocity_radps = {0, 0, 0};
    return settings;
}

class Attitude_Determination_Test : public testing::Test
{
protected:
    /// Lets time pass, and tells of the bits that were set in each tick of it, and in some.
    void pass(int seconds)
    {
        always = ~0U, errors = 0;
        for (int i = 0; i < 10 * seconds; ++i) {
            observed.tick();
            always &= now().status;
            errors |= now().errors;
        }
    }

    const Attitude_Estimate& now() const { return observed.determination.estimate(); }
    static bool has(unsigned int word, auto bit) { return (word & static_cast<unsigned int>(bit)) != 0; }
    double error_degrees() const { return observed.attitude_error_rad() / degree; }

    Observed_Satellite observed{three_unit(), 1};
    unsigned int always = 0, errors = 0;
};

TEST(Triad_Test, gives_the_attitude_where_two_directions_fit)
{
    const Eigen::Quaterniond attitude = Eigen::Quaterniond(0.1, -0.7, 0.3, 0.5).normalized();
    const auto direction = [&](const Vector3d& inertial) {
        return Direction{body_from_inertial(attitude) * inertial.normalized(), inertial.normalized()};
    };
    const Direction first = direction({1, 2, 3}), second = direction({-2, 0, 1});
    ASSERT_TRUE(triad(first, second, 0.01));
    EXPECT_LT(triad(first, second, 0.01)->angularDistance(attitude), 1e-12);
    EXPECT_FALSE(triad(first, direction({-1, -2, -3.1}), 0.01)) << "nearly one line";
    EXPECT_FALSE(triad(first, {second.body, Vector3d(0, 0, 1)}, 0.1)) << "another angle";
}

TEST(Attitude_Filter_Test, finds_the_bias_and_tells_how_well_it_knows)
{
    const Vector3d bias(3e-3, -2e-3, 1e-3), rate(0.02, -0.01, 0.03);
    constexpr double sigma = 1e-3;
    Random random{3, 0};
    Attitude_Filter filter;
    filter.doubt_bias();
    Eigen::Quaterniond truth = Eigen::Quaterniond::Identity();
    filter.start(turned(truth, {0.05, -0.05, 0.05}), 0.01);
    double normalised = 0;
    for (int i = 0; i < 20000; ++i) {
        truth = turned(truth, 0.1 * rate);
        filter.propagate(rate + bias + 1e-4 * random.normal_vector(), 0.1, {1e-9, 1e-16});
        ASSERT_TRUE(filter.update(turned(truth, sigma * random.normal_vector()), {sigma * sigma, sigma * sigma}));
        const Vector3d error = 2 * (filter.attitude().conjugate() * truth).vec();
        if (i >= 2000)
            normalised += error.cwiseQuotient(filter.attitude_sigma_rad()).squaredNorm() / 3 / 18000;
    }
    EXPECT_LT((filter.bias_radps() - bias).norm(), 2e-5);
    EXPECT_NEAR(std::sqrt(normalised), 1, 0.3);
    EXPECT_FALSE(filter.update(turned(truth, {0.01, 0, 0}), {sigma * sigma, sigma * sigma})) << "cannot be";
}

/// docs/satellite.md has these for 20 seeds.
TEST(Attitude_Knowledge_Test, is_as_good_as_documented)
{
    const auto turning = attitude_knowledge(three_unit(), Motion::nadir, Method::filter_without_star_tracker, 1);
    EXPECT_LT(turning.light.sigma(), 0.5 * degree);
    EXPECT_LT(turning.eclipse.sigma(), 2 * degree);
    EXPECT_GT(turning.eclipse.number, 15000) << "half an hour";
    const auto tracked = attitude_knowledge(three_unit(), Motion::nadir, Method::filter, 1);
    EXPECT_LT(tracked.star_tracker.sigma(), 0.02 * degree);
    EXPECT_GT(tracked.star_tracker.number, 30000);
}

TEST_F(Attitude_Determination_Test, starts_from_any_attitude_and_rate)
{
    for (unsigned long long seed = 0; seed < 10; ++seed) {
        Random random{seed, 99};
        Observed_Satellite tumbling{three_unit(), seed};
        tumbling.satellite.set_attitude(
            Eigen::Quaterniond(random.normal(), random.normal(), random.normal(), random.normal()));
        tumbling.satellite.set_angular_velocity(0.3 * random.normal_vector());
        for (int i = 0; i < 600; ++i)
            tumbling.tick();
        EXPECT_LT(tumbling.attitude_error_rad(), 1.5 * degree) << seed;
        EXPECT_LT(tumbling.rate_error_radps(), 4e-3) << seed;
    }
}

TEST_F(Attitude_Determination_Test, without_an_orbit_there_is_no_inertial_attitude)
{
    const auto elements = std::exchange(observed.settings.elements, std::nullopt);
    pass(10);
    EXPECT_FALSE(now().inertial);
    EXPECT_FALSE(now().orbit);
    EXPECT_TRUE(has(now().errors, Determination_Error::no_elements));
    EXPECT_LT(observed.rate_error_radps(), 1e-3) << "the gyroscope needs none";

    observed.settings.elements = elements;
    pass(10);
    EXPECT_TRUE(now().inertial);
    EXPECT_EQ(now().errors, 0U);
    EXPECT_EQ(now().epoch_time_msec, observed.satellite.epoch_time_msec());
    ASSERT_TRUE(now().orbit);
    EXPECT_LT((now().orbit->position_km - observed.satellite.surroundings().position_km).norm(), 1e-6);
    const double field_error =
        (now().orbit->magnetic_field_t - observed.satellite.surroundings().magnetic_field_t).norm();
    EXPECT_GT(field_error, 1e-8) << "a model of its own";
    EXPECT_LT(field_error, 5e-7);

    observed.settings.elements->mean_motion = 0.08; // below the ground
    pass(1);
    EXPECT_FALSE(now().inertial);
    EXPECT_TRUE(has(now().errors, Determination_Error::elements_out_of_reach));
}

TEST_F(Attitude_Determination_Test, the_method_says_what_is_used)
{
    const auto used = [&](Method method) {
        observed.settings.method = method;
        pass(20);
        EXPECT_TRUE(now().inertial);
        return std::tuple(has(always, Determination_Status::star_tracker_used),
                          has(always, Determination_Status::sun_used),
                          has(always, Determination_Status::magnetic_field_used));
    };
    observed.motion = Motion::nadir; // the star tracker looks up
    pass(1);
    EXPECT_EQ(used(Method::filter), std::tuple(true, true, true));
    EXPECT_LT(error_degrees(), 0.05);
    EXPECT_EQ(used(Method::filter_without_star_tracker), std::tuple(false, true, true));
    EXPECT_EQ(used(Method::triad), std::tuple(false, true, true));
    EXPECT_LT(error_degrees(), 3);
    EXPECT_EQ(used(Method::star_tracker), std::tuple(true, false, false));
    EXPECT_LT(error_degrees(), 0.1);
    EXPECT_EQ(used(static_cast<Method>(77)), std::tuple(true, true, true));
}

TEST_F(Attitude_Determination_Test, rejects_what_cannot_be)
{
    const auto wrong = [&](auto meddle, Determination_Error error) {
        observed.meddle = meddle;
        pass(60);
        EXPECT_TRUE(has(errors, error));
        EXPECT_FALSE(has(errors, Determination_Error::started_anew));
        EXPECT_LT(error_degrees(), 0.6);
        observed.meddle = [](Measurements&) {};
        pass(2);
        EXPECT_EQ(now().errors, 0U);
    };
    observed.settings.method = Method::filter_without_star_tracker;
    observed.motion = Motion::nadir;
    pass(300);
    wrong([](Measurements& m) { m.magnetic_field_t.value *= 1.5; }, Determination_Error::magnetic_field_rejected);
    wrong([](Measurements& m) { m.magnetic_field_t.value.setConstant(std::nan("")); },
          Determination_Error::magnetic_field_rejected);
    wrong([](Measurements& m) { m.sun_vector.value = m.magnetic_field_t.value; }, Determination_Error::sun_rejected);
    observed.settings.method = Method::filter;
    wrong([](Measurements& m) { m.attitude.value = Eigen::Quaterniond(0, 1, 0, 0); },
          Determination_Error::star_tracker_rejected);
}

TEST_F(Attitude_Determination_Test, starts_anew_when_all_else_contradicts_it)
{
    observed.settings.method = Method::filter_without_star_tracker;
    pass(60);
    observed.satellite.set_attitude(turned(observed.satellite.attitude(), {0, 1, 0})); // unseen by gyroscopes
    pass(60);
    EXPECT_TRUE(has(now().errors, Determination_Error::started_anew));
    EXPECT_LT(error_degrees(), 1);
    observed.determination.reset();
    EXPECT_FALSE(now().inertial);
}

TEST_F(Attitude_Determination_Test, without_a_gyroscope_the_star_tracker_gives_the_rate)
{
    observed.motion = Motion::nadir;
    pass(60);
    observed.sensors.settings.gyroscopes[0].failed = true;
    observed.motion = Motion::free;
    observed.satellite.set_angular_velocity({2e-3, 1e-3, -1e-3});
    pass(120);
    EXPECT_TRUE(has(now().errors, Determination_Error::no_gyroscope));
    EXPECT_LT(error_degrees(), 0.1);
    EXPECT_LT(observed.rate_error_radps(), 5e-4);
    observed.settings.active_gyroscope = 1;
    pass(60);
    EXPECT_EQ(now().errors & ~static_cast<unsigned int>(Determination_Error::started_anew), 0U);
    EXPECT_LT((now().gyroscope_bias_radps - Vector3d(2e-4, -1e-4, 1.5e-4)).norm(), 5e-5);
    observed.settings.filter.disable_bias = 1;
    pass(1);
    EXPECT_TRUE(now().gyroscope_bias_radps.isZero());
}

TEST_F(Attitude_Determination_Test, parameters_that_are_no_numbers_leave_numbers)
{
    for (const double value : {0.0, -1.0, 1e300, std::nan("")}) {
        observed.settings.filter = {value, value, value, value, 0};
        observed.meddle = [&](Measurements& m) { m.angular_velocity_radps[0].value.x() = value; };
        pass(5);
        EXPECT_TRUE(now().attitude.coeffs().allFinite()) << value;
        EXPECT_TRUE(now().angular_velocity_radps.allFinite()) << value;
        EXPECT_TRUE(now().attitude_sigma_rad.allFinite()) << value;
    }
    observed.meddle = [](Measurements&) {};
    observed.settings.filter = {1e-13, 1e-8, 1e-4, 1e-7, 0};
    pass(120);
    EXPECT_TRUE(now().inertial);
    EXPECT_LT(error_degrees(), 1);
}

}
