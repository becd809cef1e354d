#include "simulator/bench/scenario.h"
#include "tests/support/simulated_bus.h"

using namespace zavra::test;

struct Scenario_Test : Bus_Test
{
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
    const auto written = [&] {
        const auto request = with_crc(octets("02300000"));
        return std::pair(bench.unit(10).faults.write(request), bench.unit(11).faults.write(request));
    };
    EXPECT_EQ(written(), std::pair(0, 0));
    EXPECT_EQ(first.world.temperature, 40);
    EXPECT_EQ(first.world.angular_velocity.y, 0.5F);
    EXPECT_EQ(first.world.angular_velocity.x, 0.002F) << "what is not named stays";
    EXPECT_EQ(first.unit.parts.system.settings.scheduler_register, 0U);

    time.advance(Clock::Time(1500));
    EXPECT_EQ(written(), std::pair(0, 0));
    EXPECT_EQ(first.unit.parts.system.settings.scheduler_register, 0xCAFEU);
    EXPECT_EQ(first.unit.parts.system.counters.received_commands, 2U) << "a command of the scenario is not counted";
    EXPECT_EQ(first.unit.parts.startracker_orbit.event_list.num_event, 2);
    EXPECT_EQ(first.unit.parts.startracker_orbit.event_list.yisf[0], -40);
    time.advance(Clock::Time(999));
    EXPECT_EQ(written(), std::pair(0, ETIMEDOUT));
    time.advance(Clock::Time(501));
    EXPECT_EQ(written(), std::pair(ENXIO, ENXIO));
    time.advance(Clock::Time(1000));
    EXPECT_EQ(written(), std::pair(0, 0));
}

TEST_F(Scenario_Test, what_makes_no_sense_is_refused_with_its_line)
{
    const std::pair<const char*, const char*> cases[] = {
        {"[[event]\n", "scenario.toml:1: "},
        {"[[episode]]\n", "scenario.toml:1: expected only tables [[event]], found \"episode\""},
        {"event = 3\n", "scenario.toml:1: expected only tables [[event]]"},
        {"\n[[event]]\nat = -1\n", "scenario.toml:2: at: expected a number of seconds, got -1"},
        {"[[event]]\nat = 1979-05-27\n", "scenario.toml:1: dates and times have no meaning here"},
        {"[[event]]\nfor = 1\n", "scenario.toml:1: event: \"for\" has no meaning without \"fault\""},
        {"[[event]]\nfault = \"crc\"\nfualt = 1\n", "scenario.toml:1: event: there is no key \"fualt\""},
        {"[[event]]\nfault = \"reset\"\nfor = 1\n", "The fault reset has no duration"},
        {"[[event]]\nfault = \"hang\"\nfor = 0\n", "The fault hang lasts 1 ms at least"},
        {"[[event]]\nat = 3\n", "scenario.toml:1: event: nothing happens in it"},
        {"[[event]]\nworld = {}\n", "scenario.toml:1: world: is empty"},
        {"[[event]]\nworld = { temperature_degc = nan }\n", "temperature_degc: expected a finite number, got \"nan\""},
        {"[[event]]\nworld = { sun_vector = { w = 1 } }\n", "scenario.toml:1: world.sun_vector: there is no \"w\""},
        {"\n[[event]]\naddress = 12\nfault = \"crc\"\n", "scenario.toml:2: address: there is no unit at 12"},
        {"[[event]]\nfault = \"flood\"\n", "scenario.toml:1: There is no fault \"flood\""},
        {"[[event]]\nfault = \"crc\"\nprobability = 2\n", "a number from 0 to 1"},
        {"[[event]]\nworld = { humidity = 1 }\n", "scenario.toml:1: world: there is no \"humidity\""},
        {"[[event]]\nworld = { temperature_degc = \"warm\" }\n", "world.temperature_degc: expected a number"},
        {"[[event]]\nstartracker_events = [[1, 2, 3]]\n", "startracker_events[0]: expected an array of 2"},
        {"[[event]]\ncommand = \"Set_Everything\"\n", "there is no command \"Set_Everything\""},
        {"[[event]]\ncommand = \"Set_Epoch_Time\"\n", "Set_Epoch_Time: \"epoch_time_msec\" is missing"},
        {"[[event]]\ncommand = \"Set_Epoch_Time\"\narguments = { epoch_time_msec = 1, time = 2 }\n",
         "Set_Epoch_Time: has arguments that it does not know: {\"time\":2}"},
    };
    for (const auto& each : cases)
        EXPECT_THAT(message_of<std::runtime_error>([&] {
                        scenario(each.first).play(bench, {10, 11});
                    }),
                    HasSubstr(each.second));
    EXPECT_THAT(message_of<std::runtime_error>([&] { Scenario(directory / "none.toml"); }),
                HasSubstr("none.toml: File could not be opened"));
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
