#include "simulator/bench/duration.h"
#include "simulator/bench/satellite_file.h"
#include "tests/support/simulated_bus.h"

#include <fstream>
#include <gmock/gmock.h>

namespace zavra::test
{

using namespace simulator;
using testing::HasSubstr;

class Satellite_File_Test : public Bus_Test
{
protected:
    /// The smallest file that makes sense, with a line replaced and lines added.
    Satellite_File file(const std::string& key = "", const std::string& replaced = "", const std::string& added = "")
    {
        std::ofstream stream(directory / "satellite.toml");
        for (const std::string& line :
             {std::string("[start]"), std::string("time = 2018-01-20T23:00:00.5+01:00"),
              std::string("tle = [\"1 25544U 98067A   18020.89808844  .00002078  00000-0  38550-4 0  9992\", "
                          "\"2 25544  51.6424  32.9776 0003646  28.7227  39.5332 15.54190080 95614\"]"),
              std::string("[body]"), std::string("inertia_kgm2 = [0.05, 0.042, 0.0085]")})
            stream << (!key.empty() && line.starts_with(key) ? replaced : line) << '\n';
        stream << added << '\n';
        stream.close();
        return Satellite_File(directory / "satellite.toml");
    }
};

TEST_F(Satellite_File_Test, the_smallest_one_is_a_body_at_rest_that_measures_without_error)
{
    const Satellite_File smallest = file();
    EXPECT_TRUE(smallest.warnings.empty());
    EXPECT_EQ(smallest.settings.start_epoch_msec, 1'516'485'600'500U);
    EXPECT_EQ(smallest.settings.angular_velocity_radps, Eigen::Vector3d::Zero());
    EXPECT_FALSE(smallest.settings.wheels[0] || smallest.settings.magnetorquers);
    EXPECT_EQ(smallest.settings.sensors.gyroscopes[0].noise, 0);
    EXPECT_EQ(file("inertia", "inertia_kgm2 = [2, 0.1, 0, 0.1, 2, 0, 0, 0, 1]").settings.inertia_kgm2(0, 1), 0.1);
    EXPECT_EQ(file("", "", "[wheels.u]\naxis = [0, 3, 4]").settings.wheels[3]->axis, Eigen::Vector3d(0, 0.6, 0.8));
    EXPECT_THAT(file("time", "time = 2026-11-21T12:00:00Z").warnings,
                testing::ElementsAre(HasSubstr("satellite.toml:2: start.time is 3227 days from the epoch")));
}

TEST_F(Satellite_File_Test, what_is_no_satellite_is_refused_with_its_line)
{
    const struct
    {
        const char *key, *replaced, *added, *message;
    } cases[] = {
        {"time", "", "", "satellite.toml:1: start.time is missing"},
        {"time", "time = 12", "", "satellite.toml:2: start.time is not a time"},
        {"time", "time = 2018-01-20T23:00:00", "", "satellite.toml:2: start.time is not a time with its zone"},
        {"tle", "tle = [\"1\", \"2\"]", "", "satellite.toml:3: start.tle: "},
        {"tle", "tle = [\"1\"]", "", "satellite.toml:3: start.tle has not 2 lines"},
        {"inertia", "", "", "body.inertia_kgm2 has not 3 or 9 numbers"},
        {"inertia", "inertia_kgm2 = [1, 1, 0]", "",
         "satellite.toml:5: body.inertia_kgm2 has a principal moment that is not"},
        {"inertia", "inertia_kgm2 = [1, 1, 2.1]", "",
         "satellite.toml:5: body.inertia_kgm2 has a principal moment that exceeds"},
        {"inertia", "inertia_kgm2 = [2, 0.1, 0, 0, 2, 0, 0, 0, 1]", "", "is not symmetric"},
        {"inertia", "inertia_kgm2 = [1, 1, inf]", "", "is not a list of finite numbers"},
        {"[body]", "attitude = [0, 0, 0, 0]\n[body]", "",
         "satellite.toml:4: start.attitude is a quaternion of length 0"},
        {"", "", "colour = \"red\"", "satellite.toml:6: there is no key body.colour"},
        {"", "", "[environment]\ngravity_gradient = 1",
         "satellite.toml:7: environment.gravity_gradient is not true or false"},
        {"", "", "[wheels.q]", "satellite.toml:6: there is no key wheels.q"},
        {"", "", "[wheels.x]\naxis = [0, 0, 0]", "satellite.toml:7: wheels.x.axis is not a direction"},
        {"", "", "[wheels.x]\ninertia_kgm2 = 0", "satellite.toml:7: wheels.x.inertia_kgm2 is not a number above 0"},
        {"", "", "[sensors.gyroscopes]\nnoise_radps = -1", "satellite.toml:7: sensors.gyroscopes.noise_radps is not"},
        {"", "", "[sensors]\nmagnetometer = 3", "satellite.toml:7: sensors.magnetometer is not a table"},
        {"", "", "[[body", "satellite.toml:6: "},
    };
    for (const auto& [key, replaced, added, message] : cases) {
        SCOPED_TRACE(message);
        EXPECT_THAT(message_of<std::runtime_error>([&, k = key, r = replaced, a = added] { file(k, r, a); }),
                    HasSubstr(message));
    }
    EXPECT_THAT(message_of<std::runtime_error>([] { Satellite_File("/nowhere.toml"); }), HasSubstr("/nowhere.toml"));
}

TEST_F(Satellite_File_Test, the_examples_are_satellites)
{
    for (const char* name : {"1u", "3u", "12u"})
        EXPECT_TRUE(Satellite_File(std::string(ZAVRA_SCENARIOS "/../satellites/") + name + ".toml").warnings.empty());
}

TEST(Duration_Test, is_a_number_with_a_unit)
{
    const std::pair<const char*, long> durations[] = {{"500ms", 500},     {"90s", 90'000},     {"30min", 1'800'000},
                                                      {"6h", 21'600'000}, {"2d", 172'800'000}, {"1.5s", 1500}};
    for (const auto& [text, msec] : durations)
        EXPECT_EQ(parse_duration(text), Clock::Time(msec));
    for (const char* text : {"", "6", "h", "6 h", "-1s", "0s", "1.5ms", "1e99d", "6hours"})
        EXPECT_THROW(parse_duration(text), std::invalid_argument) << text;
    EXPECT_EQ(to_string(Clock::Time(90'000)), "90 s");
}

}
