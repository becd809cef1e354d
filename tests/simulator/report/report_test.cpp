#include "simulator/report/report.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace zavra::simulator;

constexpr double nan_value = std::numeric_limits<double>::quiet_NaN();

TEST(Thinned_Curves_Test, keeps_every_extreme_of_a_long_flight_in_its_place)
{
    Thinned_Curves curves(2, 64);
    for (int i = 0; i < 10'000; ++i) {
        const double spike = i == 7000 ? 50 : i == 7003 ? -60 : std::sin(i / 100.0);
        curves.add(i, std::array{spike, i < 5000 ? nan_value : 1.0});
    }
    const auto times = curves.times();
    const auto values = curves.values(0);
    EXPECT_EQ(values.size(), times.size());
    EXPECT_LE(values.size(), 128U);
    EXPECT_TRUE(std::ranges::is_sorted(times));
    EXPECT_EQ(times.front(), 0);
    EXPECT_EQ(times.back(), 9999);
    const auto spike = std::ranges::find(values, 50);
    ASSERT_NE(spike, values.end());
    EXPECT_EQ(*(spike + 1), -60) << "came after it";
    EXPECT_NEAR(times[static_cast<std::size_t>(spike - values.begin())], 7000, 200);
    const auto half = curves.values(1);
    EXPECT_NEAR(static_cast<double>(std::ranges::count(half, 1.0)) / static_cast<double>(half.size()), 0.5, 0.05);
    EXPECT_TRUE(std::isnan(half.front()));
}

TEST(Thinned_Curves_Test, a_short_flight_is_told_as_it_was)
{
    Thinned_Curves curves(2, 64);
    for (int i = 0; i < 5; ++i)
        curves.add(i, std::array{10.0 * i, nan_value});
    EXPECT_THAT(curves.times(), testing::ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(curves.values(0), testing::ElementsAre(0, 10, 20, 30, 40));
    EXPECT_THAT(curves.values(1), testing::IsEmpty());
}

TEST(Thinned_Poses_Test, stay_evenly_spaced)
{
    Thinned_Poses poses(8);
    for (double i = 0; i < 37; ++i)
        if (poses.wants())
            poses.add({i});
    std::vector<double> kept;
    for (const auto& row : poses.rows())
        kept.push_back(row[0]);
    EXPECT_THAT(kept, testing::ElementsAre(0, 8, 16, 24, 32));
}

/// Detumbling for 500 s, then pointing: the rate falls below 1 deg/s at 200 s, for a moment at 100 s before, the error
/// below 1 deg at 600 s; a wheel is at its limit for 50 s; the last quarter is in shadow.
TEST(Summary_Test, tells_when_what_was_reached)
{
    Actuator_Limits limits;
    limits.wheel_speeds_radps = {100, 0, 0, 0, 0, 0};
    limits.dipole_moments_am2 = {0, 0, Actuator_Limits::unknown};
    Summary summary(limits);
    for (int t = 0; t <= 1000; ++t) {
        Sample sample{};
        sample[column("time_s")] = t;
        sample[column("q_4")] = sample[column("estimated_q_4")] = 1;
        sample[column("estimated_q_1")] = t < 900 ? 0.005 : nan_value; // half the angle
        sample[column("angular_velocity_y_radps")] = t < 200 && t != 100 ? 0.1 : 0.001;
        sample[column("mode")] = t < 500 ? Modes::detumbling : Modes::nadir;
        sample[column("pointing_error_rad")] = t < 500 ? nan_value : t < 600 ? 0.5 : t % 2 == 0 ? 0.002 : 0.004;
        sample[column("wheel_speed_x_radps")] = t > 700 && t <= 750 ? -100 : 20;
        sample[column("sunlight")] = t > 750 ? 0 : 1;
        summary.add(sample);
    }
    const zavra::Json result = summary.to_json();
    EXPECT_EQ(result["duration_s"], 1000);
    EXPECT_EQ(result["caught_s"], 200);
    EXPECT_EQ(result["settled_s"], 100);
    EXPECT_DOUBLE_EQ(result["shadow_part"].get<double>(), 0.25);
    EXPECT_NEAR(result["estimation_error_rad"]["max"].get<double>(), 0.01, 1e-6);
    ASSERT_EQ(result["visits"].size(), 2U);
    EXPECT_EQ(result["visits"][0]["name"], "detumbling");
    EXPECT_TRUE(result["visits"][0]["pointing_error_rad"].is_null());
    const zavra::Json& pointing = result["visits"][1];
    EXPECT_EQ(pointing["from_s"], 500);
    EXPECT_EQ(pointing["settled_s"], 600);
    EXPECT_NEAR(pointing["pointing_error_rad"]["median"].get<double>(), 0.002, 2e-5) << "without the slew";
    EXPECT_NEAR(pointing["pointing_error_rad"]["p95"].get<double>(), 0.004, 4e-5);
    EXPECT_EQ(result["wheels"], zavra::Json::parse(R"([{"name": "x", "peak": 100, "limit": 100, "saturated_s": 50}])"));
    EXPECT_EQ(result["magnetorquers"].size(), 1U);
    EXPECT_TRUE(result["magnetorquers"][0]["saturated_s"].is_null());
}
