#include "simulator/unit/unit_parts.h"

#include <gmock/gmock.h>

namespace zavra::test
{

using namespace simulator;
using Eigen::Vector3d;
using testing::ElementsAre;
using testing::FloatNear;

/// The sensors of a unit in a satellite, which measures what the test says.
class Sensor_Processing_Test : public testing::Test
{
protected:
    /// A control tick; gives what the software gets of the first gyroscope and of the magnetometer, along x.
    std::pair<double, double> tick(double rate, double field = 1)
    {
        clock.advance(Clock::Time(100));
        sensed.time += Clock::Time(100);
        for (auto& gyroscope : sensed.angular_velocity_radps)
            gyroscope = {Vector3d(rate, 0, 0), sensed.time, true};
        sensed.magnetic_field_t = {Vector3d(field, 0, 0), sensed.time, true};
        seen = parts.measurements(sensed);
        return {seen.angular_velocity_radps[0].value.x(), seen.magnetic_field_t.value.x()};
    }

    std::vector<double> rates(std::initializer_list<double> measured)
    {
        std::vector<double> got;
        for (const double rate : measured)
            got.push_back(tick(rate).first);
        return got;
    }

    Canned_World world;
    Manual_Clock clock;
    Command_Table commands;
    Unit_Parts parts{commands, clock, world};
    Measurements sensed, seen;
    ZAVRA_100_Gyroscope_Parameters& gyro = parts.sensors.gyroscopes[0].parameters;
    ZAVRA_100_Magnetometer_Parameters& magnetometer = parts.sensors.magnetometers[0].parameters;
};

TEST_F(Sensor_Processing_Test, readings_are_scaled_turned_and_corrected_in_this_order_whether_measured_or_injected)
{
    gyro.sensor_sensitivity = {2, 1, 1};
    gyro.quaternion = {0, 0, std::sqrt(0.5F), std::sqrt(0.5F)}; // the sensor's x is the body's -y
    gyro.correction_scale = {1, 0, 0, 0, 10, 0, 0, 1, 1};
    gyro.correction_offset = {0.5F, 0, 0};
    const auto rate = [&] { return parts.sensors.angular_velocity_radps(0).vector; };
    tick(1);
    EXPECT_THAT(rate().y, FloatNear(-2, 1e-6F));
    gyro.sensor_correction_enable = 1;
    tick(1);
    const auto corrected = rate();
    EXPECT_THAT((std::array{corrected.x, corrected.y, corrected.z}),
                ElementsAre(FloatNear(0.5F, 1e-6F), FloatNear(-20, 1e-5F), FloatNear(-2, 1e-6F)));
    parts.sensors.gyroscopes[0].injected = Sensors::Measurement{{1, 0, 0}, 0};
    EXPECT_THAT(rate().y, FloatNear(-20, 1e-5F));
    parts.sensors.gyroscopes[0].bias = {0, -15, 0};
    parts.sensors.gyroscopes[0].bias_removal = true;
    EXPECT_THAT(rate().y, FloatNear(-5, 1e-5F));
    tick(7);
    EXPECT_NEAR(seen.angular_velocity_radps[0].value.y(), -5, 1e-5);
    EXPECT_EQ(seen.angular_velocity_radps[1].value.x(), 7);
    gyro.quaternion = {0, 0, 0, 0};
    EXPECT_THAT(rate().x, FloatNear(2.5F, 1e-6F)) << "no orientation: aligned";
}

TEST_F(Sensor_Processing_Test, measurements_stand_for_the_update_interval)
{
    gyro.update_interval_msec = 250;
    EXPECT_THAT(rates({1, 2, 3, 4, 5, 6, 7}), ElementsAre(1, 1, 1, 4, 4, 4, 7));
    EXPECT_EQ(tick(8).first, 7);
    EXPECT_EQ(seen.angular_velocity_radps[0].time, sensed.time - Clock::Time(100));
    clock.advance(Clock::Time(30));
    EXPECT_EQ(parts.sensors.angular_velocity_radps(0).epoch_msec, parts.time.epoch_msec() - 130);
    gyro.update_interval_msec = 0;
    EXPECT_EQ(tick(9).first, 9);
}

TEST_F(Sensor_Processing_Test, the_averaging_filter_gives_the_mean_of_so_many_until_the_rate_changes)
{
    gyro.avg_filter_enable = 1;
    gyro.avg_filter_counter = 3;
    gyro.avg_filter_criterion = 0.5F;
    EXPECT_THAT(rates({10, 12, 11, 14, 14, 11}), ElementsAre(10, 11, 11, 11, 11, 13));
    EXPECT_THAT(rates({30, 32}), ElementsAre(30, 31)) << "anew";
    EXPECT_THAT(rates({std::nan(""), 1, 3}), ElementsAre(testing::NanSensitiveDoubleEq(std::nan("")), 1, 3));
}

TEST_F(Sensor_Processing_Test, the_moving_average_goes_a_part_of_the_way)
{
    magnetometer.update_interval_msec = 100;
    magnetometer.moving_avg_filter_enable = 1;
    magnetometer.moving_avg_filter_gain = 0.25F;
    magnetometer.moving_avg_filter_criterion = 0.5F;
    EXPECT_EQ(tick(0, 8).second, 8);
    EXPECT_EQ(tick(0, 12).second, 9);
    EXPECT_EQ(tick(0, 9).second, 9);
    EXPECT_EQ(tick(0, 20).second, 20) << "anew";
    magnetometer.moving_avg_filter_gain = 2;
    EXPECT_EQ(tick(0, 21).second, 21) << "no gain";
}

TEST_F(Sensor_Processing_Test, the_bias_is_the_mean_of_so_many_measurements)
{
    gyro.bias_counter = 4;
    tick(1);
    commands.execute(protocol::start_gyro_bias_calculation.identifier, std::array<unsigned char, 1>{0});
    rates({1, 2, 3});
    EXPECT_EQ(parts.sensors.gyroscopes[0].bias.x, 0);
    rates({6, 100});
    EXPECT_EQ(parts.sensors.gyroscopes[0].bias.x, 3);
}

TEST_F(Sensor_Processing_Test, what_is_not_there_gives_nothing)
{
    tick(1, 5);
    EXPECT_TRUE(seen.magnetic_field_t.valid);
    parts.system.settings.active_magnetometer = 1;
    tick(1, 5);
    EXPECT_FALSE(seen.magnetic_field_t.valid);
}

}
