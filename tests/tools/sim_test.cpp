#include "program.h"

#include "simulator/bench/control_server.h"
#include "simulator/bench/satellite_file.h"
#include "tests/support/bytes.h"

using namespace zavra::simulator;
using namespace zavra::test;

TEST(Sim_Test, the_surroundings_of_a_running_unit_are_shown_and_changed)
{
    const Temporary_Directory directory;
    const Manual_Clock clock;
    Test_Bench bench{clock};
    const Bus_Server bus{directory.path, "i2c-0", bench.devices()};
    const Control_Server control{bench, bus.path()};
    const auto sim = [&](const std::string& words) {
        return zavractl("--bus-dir " + directory.path + " sim " + words);
    };

    EXPECT_EQ(sim("world magnetic_field_t.x=-2e-5 temperature_degc=-5").out, "");
    EXPECT_EQ(bench.unit().world.magnetic_field.x, -2e-5F);
    EXPECT_THAT(sim("world").out,
                AllOf(HasSubstr("\nmagnetic_field_t.x        -2e-05\n"), EndsWith("temperature_degc          -5.0\n")));
    EXPECT_EQ(sim("fault crc=0.1 hang=0.01:2500 nak-read dead-bus:300").out, "");
    EXPECT_EQ(sim("fault").out, "hang  0.01\ncrc   0.1\n");
    std::vector<unsigned char> bytes(5);
    EXPECT_EQ(bench.unit().faults.read(bytes), EIO) << "the bus is dead for 300 ms";
    EXPECT_EQ(sim("time advance=0.3 factor=2").out, "");
    EXPECT_EQ(sim("time").out, "time_msec    300\ntime_factor  2.0\n");
    EXPECT_EQ(bench.unit().faults.read(bytes), ENXIO) << "and then a read is not acknowledged";

    const std::pair<const char*, const char*> refused[] = {
        {"world humidity=1", "world: there is no \"humidity\""},
        {"world temperature_degc=nan", "expected a finite number"},
        {"world temperature_degc=warm", "\"temperature_degc=warm\" is not NAME=NUMBER"},
        {"world sun_vector.x=1 sun_vector.x=2", "stands beside another value of the same name"},
        {"fault crc=0.1 flood=1", "There is no fault \"flood\""},
        {"fault crc:100", "The fault crc has no duration"},
        {"time factor=0", "A time factor is a number from 0.001 to 1000000"},
        {"--address 11 time", "address: there is no unit at 11"},
        {"--simulate time", "sim is for a simulated unit that is running"},
    };
    for (const auto& [words, reason] : refused) {
        const Ran ran = sim(words);
        EXPECT_EQ(ran.status, 2) << words;
        EXPECT_THAT(ran.errors, HasSubstr(reason));
    }
    const Ran ran = sim("--bus i2c-1 time");
    EXPECT_EQ(ran.status, 1);
    EXPECT_THAT(ran.errors, HasSubstr("/i2c-1.control (No such file or directory)"));
}

TEST(Sim_Test, a_satellite_shows_what_its_sensors_give_and_keeps_up_with_its_time)
{
    const Temporary_Directory directory;
    const Manual_Clock clock;
    Satellite_Settings satellite = Satellite_File(ZAVRA_EXAMPLES_DIR "/satellites/3u.toml").settings;
    satellite.sensors = {};
    Test_Bench bench{clock, {.satellite = satellite}};
    const Bus_Server bus{directory.path, "i2c-0", bench.devices()};
    const Control_Server control{bench, bus.path()};
    const auto sim = [&](const std::string& words) {
        return zavractl("--bus-dir " + directory.path + " sim " + words);
    };
    EXPECT_THAT(sim("world").out, HasSubstr("angular_velocity_radps.x  0.17"));
    EXPECT_THAT(sim("world temperature_degc=-5").errors, HasSubstr("has no meaning in a satellite"));
    EXPECT_EQ(sim("time factor=1000").status, 0);
    EXPECT_THAT(sim("time factor=1001").errors, HasSubstr("A satellite keeps up with a time factor of at most 1000"));
}

TEST(Sim_Test, init_tells_a_sensor_that_was_not_configured)
{
    const Temporary_Directory directory;
    const Manual_Clock clock;
    Test_Bench bench{clock, {.unit = {.latency = Clock::Time(0)}}};
    const Bus_Server bus{directory.path, "i2c-0", bench.devices()};
    const std::string init = "--bus-dir " + directory.path + " init " ZAVRA_EXAMPLES_DIR "/velm_zavra_dev_init.ini";
    EXPECT_THAT(zavractl(init).out, EndsWith("  configured\n"));

    bench.unit().faults.set_rate({Fault::request, 0.4});
    const Ran damaged = zavractl(init);
    EXPECT_EQ(damaged.status, 1);
    EXPECT_THAT(damaged.errors, HasSubstr("the unit did not take the configuration of zavra_dev_init_"));
}
