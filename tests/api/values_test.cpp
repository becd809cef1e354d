#include "tests/support/cases.h"
#include "tests/support/temporary_directory.h"

#include "protocol/actuators.h"
#include "protocol/frame.h"
#include "protocol/registers.h"
#include "protocol/sensor_ini.h"
#include "protocol/sensors.h"

#include <VELM_ZAVRA_VALUES.h>

#include <limits>
#include <sstream>

namespace zavra::test
{

using namespace velm_zavra;
using namespace std::chrono_literals;

static_assert(VELM_ZAVRA_VERSION >= 11800 && VELM_ZAVRA_VERSION < 20000);
static_assert(velm_zavra::number_of_gyroscopes == protocol::number_of_gyroscopes &&
              velm_zavra::number_of_magnetometers == protocol::number_of_magnetometers &&
              number_of_reactionwheels * sizeof(float) == sizeof(VELM_ZAVRA_API_REACTIONWHEEL_SPEEDS) &&
              velm_zavra::bits_per_register == zavra::bits_per_register &&
              max_startracker_events * sizeof(int) == sizeof(VELM_ZAVRA_API_STARTRACKER_EVENT_LIST::xisf) &&
              velm_zavra::max_payload_bytes == zavra::max_payload_bytes &&
              max_native_reply_bytes == zavra::max_native_response_bytes);

namespace
{

template <class T>
std::string printed(const T& value)
{
    std::ostringstream text;
    text << value;
    return text.str();
}

template <class Record>
unsigned int ini_keys()
{
    unsigned int count = 0;
    Record record{};
    for_each_key(fields(record), "", [&](const std::string&, auto&) { ++count; });
    return count;
}

MATCHER_P3(Is_Vector, x, y, z, "")
{
    const double error[] = {arg.x - static_cast<double>(x), arg.y - static_cast<double>(y),
                            arg.z - static_cast<double>(z)};
    return std::abs(error[0]) < 2e-7 && std::abs(error[1]) < 2e-7 && std::abs(error[2]) < 2e-7;
}

}

TEST_F(Operation_Test, constants_are_what_the_library_does)
{
    EXPECT_EQ(platform.events_of("connect "), Lines{std::to_string(default_address) + ' ' + default_bus});
    EXPECT_EQ(ini_keys<ZAVRA_100_Gyroscope_Parameters>(), gyroscope_ini_keys);
    EXPECT_EQ(ini_keys<ZAVRA_100_Magnetometer_Parameters>(), magnetometer_ini_keys);
    platform = {};
    EXPECT_THROW(api.Get_Epoch_Time(), VELM_ZAVRA_API_Exception);
    const auto sleep = [](std::chrono::microseconds time) { return std::to_string(time.count()); };
    Lines sleeps;
    for (unsigned int i = 0; i < max_attempts; ++i)
        sleeps.insert(sleeps.end(), {sleep(execution_wait), sleep(retry_wait)});
    EXPECT_EQ(platform.events_of("sleep "), sleeps);
    testing::internal::CaptureStdout();
    VELM_ZAVRA_API{};
    EXPECT_THAT(testing::internal::GetCapturedStdout(), testing::HasSubstr(default_ini_file));
}

TEST(Values, times_are_milliseconds)
{
    EXPECT_EQ(to_msec(90s), 90'000U);
    EXPECT_EQ(to_msec(1999us), 1U);
    EXPECT_EQ(to_msec(std::chrono::duration<double>(0.25)), 250U);
    EXPECT_EQ(to_msec(epoch(1'542'612'345'678)), 1'542'612'345'678U);
    EXPECT_EQ(to_msec(std::chrono::system_clock::time_point(2h)), 7'200'000U);
    EXPECT_EQ(interval(1500), 1500ms);
    EXPECT_THROW(to_msec(-1ns), std::invalid_argument);
    EXPECT_THROW(to_msec(std::chrono::duration<double>(NAN)), std::invalid_argument);
    EXPECT_THROW(to_msec(std::chrono::duration<double>(1e17)), std::invalid_argument);
    EXPECT_THROW(epoch(0x8000000000000000), std::out_of_range);
}

TEST_F(Operation_Test, a_tle_file_is_the_record_that_the_orbit_module_takes)
{
    const Temporary_Directory directory;
    const std::string line_1 = "1" + std::string(67, 'a') + "7", line_2 = "2" + std::string(67, 'b') + "8";
    const auto elements = [&](const std::string& content) {
        return read_orbit_elements(api, directory.file("orbit.tle", content), 30s);
    };
    const auto read = elements("NAME\n" + line_1 + "\r\n" + line_2 + "\n");
    EXPECT_EQ(read.tle_1, line_1);
    EXPECT_EQ(read.tle_2, line_2);
    EXPECT_EQ(read.update_interval_msec, 30'000U);
    const std::pair<std::string, std::string> cases[] = {
        {"", "(status 0)"}, {line_1, "(status 1)"}, {line_2, "(status 2)"}, {"1 short\n" + line_2, "(status -3)"}};
    for (const auto& [content, status] : cases)
        EXPECT_THAT(message_of<std::invalid_argument>([&] { elements(content); }),
                    testing::EndsWith("orbit.tle: no complete element set, line 1 before line 2 " + status));
    EXPECT_THROW(read_orbit_elements(api, "/none", 1s), VELM_ZAVRA_API_Exception);
    EXPECT_THROW(orbit_elements(line_2, line_2, 1s), std::invalid_argument);
    EXPECT_THROW(orbit_elements(line_1, line_2 + ' ', 1s), std::invalid_argument);
    EXPECT_THROW(orbit_elements(line_1, line_2, -1s), std::invalid_argument);
}

TEST(Values, attitudes_turn_inertial_into_body_coordinates)
{
    const auto x = vector(1, 0, 0), y = vector(0, 1, 0), z = vector(0, 0, 1);
    // A body that has turned a quarter to the left has what was ahead of it at its right.
    const auto left = turned(vector(0, 0, 5), pi / 2);
    EXPECT_FLOAT_EQ(left.q_3, 0.70710678F);
    EXPECT_FLOAT_EQ(left.q_4, 0.70710678F);
    EXPECT_EQ(left.q_1, 0);
    EXPECT_EQ(left.q_2, 0);
    EXPECT_THAT(rotate(left, x), Is_Vector(0, -1, 0));
    EXPECT_THAT(rotate(left, y), Is_Vector(1, 0, 0));
    EXPECT_THAT(rotate(inverse(left), x), Is_Vector(0, 1, 0));
    // Then it raises its nose by a quarter (about its own y, downwards): up is ahead of it or behind.
    const auto both = compose(left, turned(y, pi / 2));
    EXPECT_THAT(rotate(both, z), Is_Vector(-1, 0, 0));
    EXPECT_THAT(rotate(both, x), Is_Vector(0, -1, 0));
    EXPECT_THAT(rotate(both, y), Is_Vector(0, 0, 1));
    EXPECT_NEAR(angle_between(left, both), pi / 2, 1e-6);
    EXPECT_NEAR(angle_between(left, quaternion(0, 0, -0.70710678, -0.70710678)), 0, 1e-6) << "the same attitude";
    EXPECT_NEAR(angle_between(vector(2, 0, 0), vector(-1, 1, 0)), radians(135), 1e-6);
    EXPECT_EQ(angle_between(x, x), 0);
    EXPECT_FLOAT_EQ(normalized(quaternion(0, 3, 0, 4)).q_2, 0.6F);
    EXPECT_THROW(normalized(quaternion(0, 0, 0, 0)), std::invalid_argument);
    EXPECT_THROW(normalized(quaternion(0, NAN, 0, 1)), std::invalid_argument);
    EXPECT_THROW(turned(vector(0, 0, 0), 1), std::invalid_argument);
    EXPECT_DOUBLE_EQ(degrees(radians(12)), 12);
}

TEST(Values, euler_angles_turn_about_z_then_y_then_x)
{
    const auto q = quaternion(Euler_Angles{radians(30), radians(20), radians(10)});
    // The direction cosines of 3-2-1 angles: the first row is (cos p cos y, cos p sin y, -sin p).
    EXPECT_THAT(rotate(inverse(q), vector(1, 0, 0)), Is_Vector(0.8137977F, 0.4698463F, -0.3420201F));
    for (const Euler_Angles& angles : {Euler_Angles{0.5, 0.4, 0.3}, {-3, -1.5, 3}, {1, 0, -2}, {2, 1.57, 0}}) {
        const Euler_Angles back = euler_angles(quaternion(angles));
        EXPECT_NEAR(angle_between(quaternion(back), quaternion(angles)), 0, 2e-3);
        EXPECT_NEAR(back.yaw, angles.yaw, 1e-3);
        EXPECT_NEAR(back.pitch, angles.pitch, 1e-3);
        EXPECT_NEAR(back.roll, angles.roll, 1e-3);
    }
    const Euler_Angles up = euler_angles(quaternion(Euler_Angles{1.0, pi / 2, 0.25}));
    EXPECT_NEAR(up.yaw, 0.75, 1e-3);
    EXPECT_NEAR(up.pitch, pi / 2, 1e-3);
    EXPECT_EQ(up.roll, 0);
}

TEST(Values, records_print_and_compare_member_by_member)
{
    VELM_ZAVRA_API_SENSOR_TELEMETRY telemetry = {};
    telemetry.index_of_active_gyro = 65;
    telemetry.quaternion_attitude_bf = quaternion(1, 2, 3, 4);
    telemetry.measured_magnetic_field_magnetometer_t[1].z = -2.5e-5F;
    EXPECT_THAT(
        printed(telemetry),
        testing::MatchesRegex("\\{epoch_time_msec: 0, index_of_active_startracker: 0, quaternion_attitude_bf: "
                              "\\{q_1: 1, q_3: 3, q_2: 2, q_4: 4\\}, index_of_active_gyro: 65, .*magnetometer_t: "
                              "\\[\\{x: 0, y: 0, z: 0\\}, \\{x: 0, y: 0, z: -2.5e-05\\}\\].*temperature_degc: 0\\}"));
    EXPECT_EQ(printed(ZAVRA_100_Orbit_TLE_Data{"1 x", "", 7}),
              "{tle_1: \"1 x\", tle_2: \"\", update_interval_msec: 7}");
    EXPECT_EQ(printed(VELM_ZAVRA_API_REGISTER_FLAG{"alive", true}), "{name: \"alive\", state: 1}");

    auto other = telemetry;
    EXPECT_TRUE(telemetry == other);
    other.measured_sun_vector_sunsensor[5].y = 1;
    EXPECT_TRUE(telemetry != other);
    VELM_ZAVRA_API_REACTIONWHEEL_ARRAY_PARAMETERS one = {}, two = {};
    EXPECT_TRUE(one == two);
    two.torque_distribution_matrix[5][2] = 1;
    EXPECT_FALSE(one == two);
    one.torque_distribution_matrix[5][2] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(one == one) << "as its members compare";
}

}
