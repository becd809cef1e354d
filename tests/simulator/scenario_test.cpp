#include "simulator/scenario.h"
#include "tests/support/bytes.h"
#include "tests/support/simulated_bus.h"

#include <fstream>
#include <gmock/gmock.h>

namespace zavra::test
{

class Scenario_Test : public Bus_Test
{
protected:
    Scenario scenario(const std::string& text)
    {
        std::ofstream(directory / "scenario.toml") << text;
        return Scenario(directory / "scenario.toml");
    }

    Manual_Clock time;
    Test_Bench bench{time, {.addresses = {10, 11}}};
};

TEST_F(Scenario_Test, what_is_written_happens_when_it_is_written)
{
    scenario(R"(
        [[event]]
        world = { temperature_degc = 40, angular_velocity_radps = { y = 0.5 } }
        [[event]]
        at = 1.5
        startracker_events = [[120, -40], [7, 311]]
        command = "Set_System_Scheduler_Register"
        arguments = { scheduler_register = 0xCAFE }
        [[event]]
        at = 2
        address = 11
        fault = "hang"
        for = 0.5
        [[event]]
        at = 3
        fault = "nak-write"
        probability = 1
        [[event]]
        at = 4
        fault = "nak-write"
        probability = 0
    )")
        .play(bench, {10, 11});
    auto& first = bench.unit(10);
    const auto written = [&](unsigned int address) {
        return bench.unit(address).faults.write(with_crc(octets("02300000")));
    };
    EXPECT_EQ(written(10), 0);
    EXPECT_EQ(first.world.temperature, 40);
    EXPECT_EQ(first.world.angular_velocity.y, 0.5F);
    EXPECT_EQ(first.world.angular_velocity.x, 0.002F) << "what is not named stays";
    EXPECT_EQ(first.unit.parts.system.settings.scheduler_register, 0U);

    time.advance(Clock::Time(1500));
    EXPECT_EQ(written(10), 0);
    EXPECT_EQ(first.unit.parts.system.settings.scheduler_register, 0xCAFEU);
    EXPECT_EQ(first.unit.parts.system.counters.received_commands, 2U) << "a command of the scenario is not counted";
    EXPECT_EQ(first.unit.parts.startracker_orbit.event_list.num_event, 2);
    EXPECT_EQ(first.unit.parts.startracker_orbit.event_list.yisf[0], -40);
    time.advance(Clock::Time(999));
    EXPECT_EQ(written(10), 0);
    EXPECT_EQ(written(11), ETIMEDOUT);
    time.advance(Clock::Time(501));
    EXPECT_EQ(written(10), ENXIO);
    EXPECT_EQ(written(11), ENXIO);
    time.advance(Clock::Time(1000));
    EXPECT_EQ(written(10), 0);
}

TEST_F(Scenario_Test, what_makes_no_sense_is_refused_with_its_line)
{
    const std::pair<const char*, const char*> cases[] = {
        {"[[event]\n", "scenario.toml:1: "},
        {"[[episode]]\n", "scenario.toml:1: expected only tables [[event]], found \"episode\""},
        {"event = 3\n", "scenario.toml:1: expected only tables [[event]]"},
        {"\n[[event]]\nat = -1\n", "scenario.toml:2: at: expected a number of seconds, got -1"},
        {"[[event]]\nat = 1979-05-27\n", "scenario.toml:1: dates and times have no meaning here"},
        {"[[event]]\nwhen = 1\n", "scenario.toml:1: event: has keys that have no meaning"},
        {"[[event]]\nfor = 1\n", "scenario.toml:1: event: has keys that have no meaning, or none without another"},
        {"[[event]]\nfault = \"flood\"\n", "scenario.toml:1: There is no fault \"flood\""},
        {"[[event]]\nfault = \"crc\"\nprobability = 2\n", "a number from 0 to 1"},
        {"[[event]]\nworld = { humidity = 1 }\n", "scenario.toml:1: world: has members that are none of its fields"},
        {"[[event]]\nworld = { temperature_degc = \"warm\" }\n", "world.temperature_degc: expected a number"},
        {"[[event]]\nstartracker_events = [[1, 2, 3]]\n", "startracker_events[0]: expected an array of 2"},
        {"[[event]]\ncommand = \"Set_Everything\"\n", "there is no command \"Set_Everything\""},
        {"[[event]]\ncommand = \"Set_Epoch_Time\"\n", "Set_Epoch_Time: \"epoch_time_msec\" is missing"},
    };
    for (const auto& each : cases)
        EXPECT_THAT(message_of<std::runtime_error>([&] { scenario(each.first); }), testing::HasSubstr(each.second));
    EXPECT_THAT(message_of<std::runtime_error>([&] { Scenario(directory / "none.toml"); }),
                testing::HasSubstr("none.toml: File could not be opened"));
}

TEST_F(Scenario_Test, the_examples_make_sense)
{
    unsigned int examples = 0;
    for (const auto& file : std::filesystem::directory_iterator(ZAVRA_SCENARIOS)) {
        SCOPED_TRACE(file.path());
        ++examples;
        Scenario(file.path()).play(bench, {10, 11});
    }
    EXPECT_GE(examples, 2U);
    time.advance(Clock::Time(24 * 3'600'000));
    testing::internal::CaptureStderr();
    bench.time.run_due();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "nothing is refused";
}

}
