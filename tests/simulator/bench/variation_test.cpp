#include "simulator/bench/satellite_file.h"
#include "simulator/bench/variation.h"
#include "tests/support/bytes.h"
#include "tests/support/temporary_directory.h"

#include <fstream>

using namespace zavra::simulator;
using namespace zavra::test;

struct Variation_Test : testing::Test
{
    /// The 3U varied, and what was drawn.
    std::pair<Satellite_Settings, zavra::Json> varied(const std::string& text, unsigned long long seed)
    {
        std::ofstream(file) << text;
        Variation variation(file, seed);
        const Satellite_File satellite(ZAVRA_SCENARIOS "/../satellites/3u.toml", &variation);
        events = variation.events();
        return {satellite.settings, variation.drawn()};
    }

    const Temporary_Directory directory;
    const std::string file = directory.path + "/vary.toml";
    std::vector<zavra::Json> events;
};

TEST_F(Variation_Test, spreads_what_it_names_as_it_says)
{
    const std::string text = R"([start]
time = { within = "2h" }
attitude = { any = true }
angular_velocity_radps = { uniform = [-0.2, 0.1] }
[body]
inertia_kgm2 = { scale = 0.05 }
residual_dipole_am2 = { factor = 0.1 }
[sensors.gyroscopes]
bias_radps = { normal = 1e-3 }
noise_radps = { uniform = [1e-4, 2e-4] }
)";
    const Satellite_Settings before = Satellite_File(ZAVRA_SCENARIOS "/../satellites/3u.toml").settings;
    constexpr int runs = 400;
    double bias_sum = 0, bias_squares = 0, scale_squares = 0, factor_squares = 0, latest = 0, q_sum = 0, least_rate = 1,
           greatest_rate = -1;
    for (int seed = 0; seed < runs; ++seed) {
        const auto [after, drawn] = varied(text, static_cast<unsigned long long>(seed));
        const double bias = after.sensors.gyroscopes[0].bias.y() - before.sensors.gyroscopes[0].bias.y();
        bias_sum += bias;
        bias_squares += bias * bias;
        const double scale = after.inertia_kgm2(2, 2) / before.inertia_kgm2(2, 2) - 1;
        scale_squares += scale * scale;
        EXPECT_NEAR(after.inertia_kgm2(0, 0) / before.inertia_kgm2(0, 0) - 1, scale, 1e-9);
        const Eigen::Vector3d factors = after.residual_dipole_am2.cwiseQuotient(before.residual_dipole_am2);
        EXPECT_NE(factors.x(), factors.y());
        factor_squares += (factors.x() - 1) * (factors.x() - 1);
        const double later = static_cast<double>(after.start_epoch_msec - before.start_epoch_msec) / 1000;
        EXPECT_NEAR(later, drawn["start.time_later_s"].get<double>(), 1e-3);
        latest = std::max(latest, later);
        q_sum += after.attitude.w();
        EXPECT_NEAR(after.attitude.norm(), 1, 1e-9);
        least_rate = std::min(least_rate, after.angular_velocity_radps.minCoeff());
        greatest_rate = std::max(greatest_rate, after.angular_velocity_radps.maxCoeff());
        EXPECT_EQ(drawn["start.angular_velocity_radps"][1], after.angular_velocity_radps.y());
        EXPECT_EQ(drawn["sensors.gyroscopes.noise_radps"], after.sensors.gyroscopes[0].noise);
    }
    EXPECT_NEAR(bias_sum / runs, 0, 2e-4);
    EXPECT_NEAR(std::sqrt(bias_squares / runs), 1e-3, 1e-4);
    EXPECT_NEAR(std::sqrt(scale_squares / runs), 0.05, 0.005);
    EXPECT_NEAR(std::sqrt(factor_squares / runs), 0.1, 0.01);
    EXPECT_NEAR(q_sum / runs, 0, 0.1);
    EXPECT_NEAR(latest, 7100, 100);
    EXPECT_NEAR(least_rate, -0.2, 0.005);
    EXPECT_NEAR(greatest_rate, 0.1, 0.005);
    EXPECT_LE(greatest_rate, 0.1);
}

TEST_F(Variation_Test, each_key_draws_on_its_own)
{
    const auto alone = varied("[body]\nresidual_dipole_am2 = { normal = 1 }\n", 5).first;
    const auto beside =
        varied("[start]\nattitude = { any = true }\n[body]\nresidual_dipole_am2 = { normal = 1 }\n", 5).first;
    EXPECT_EQ(alone.residual_dipole_am2, beside.residual_dipole_am2);
    EXPECT_NE(alone.residual_dipole_am2,
              varied("[body]\nresidual_dipole_am2 = { normal = 1 }\n", 6).first.residual_dipole_am2);
}

TEST_F(Variation_Test, events_happen_by_chance_and_in_their_time)
{
    int happened = 0;
    for (unsigned long long seed = 0; seed < 400; ++seed) {
        const auto drawn =
            varied("[[event]]\nchance = 0.25\nat = [100, 200]\nsatellite = { wheel = \"x\", sticks = true }\n"
                   "[[event]]\nat = 7\nfault = \"crc\"\n",
                   seed)
                .second;
        ASSERT_EQ(events.back(), zavra::Json::parse(R"({"at": 7, "fault": "crc"})"));
        EXPECT_EQ(drawn["event_2_at_s"], 7);
        EXPECT_EQ(drawn["event_1_at_s"].is_null(), events.size() == 1);
        if (events.size() == 1)
            continue;
        ++happened;
        EXPECT_EQ(events[0]["at"], drawn["event_1_at_s"]);
        EXPECT_GE(events[0]["at"], 100);
        EXPECT_LE(events[0]["at"], 200);
        EXPECT_FALSE(events[0].contains("chance"));
    }
    EXPECT_NEAR(happened, 100, 30);
}

TEST_F(Variation_Test, what_makes_no_sense_is_refused_with_its_line)
{
    const std::pair<const char*, const char*> wrong[] = {
        {"[body\n", "vary.toml:1: "},
        {"\n[body]\nmass_kg = { factor = 1 }\n", "vary.toml:3: body.mass_kg is not in the satellite's file"},
        {"[body]\ninertia_kgm2 = 3\n", "vary.toml:2: body.inertia_kgm2 is not a way to spread a value"},
        {"[body]\ninertia_kgm2 = { gauss = 3 }\n", "there is no way \"gauss\" to spread body.inertia_kgm2"},
        {"[body]\ninertia_kgm2 = { normal = 3, factor = 1 }\n", "has not one way to spread it"},
        {"[body]\ninertia_kgm2 = { normal = nan }\n", "expected a finite number"},
        {"[body]\ninertia_kgm2 = { uniform = 1 }\n", "expected a list of two numbers"},
        {"[body]\ninertia_kgm2 = { uniform = [2, 1] }\n", "the first number is above the second"},
        {"[body]\ninertia_kgm2 = { uniform = [-2, -1] }\n", "principal moment that is not positive"},
        {"[environment]\ngravity_gradient = { factor = 1 }\n", "is no floating-point number"},
        {"[start]\ntime = { within = \"soon\" }\n", "vary.toml:2: "},
        {"[[event]]\nat = [1]\nfault = \"crc\"\n", "vary.toml:2: expected a list of two numbers"},
        {"event = 3\n", "event is not a list of tables [[event]]"},
    };
    for (const auto& [text, reason] : wrong)
        EXPECT_THAT(message_of<std::runtime_error>([&, text = text] { varied(text, 1); }), HasSubstr(reason)) << text;
}
