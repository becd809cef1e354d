#include "program.h"

#include "device/protocol/json.h"
#include "tests/support/simulated_bus.h"
#include "tools/failure.h"
#include "tools/stop.h"

#include <fstream>

namespace zavra::test
{

using testing::AllOf;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

TEST(Program_Test, says_on_one_line_what_is_wrong_and_ends_with_the_right_status)
{
    const std::tuple<const char*, int, const char*> cases[] = {
        {"", 2, "after \"zavractl ...\" a command is missing; there is: info, "},
        {"nonsense", 2, "there is no command \"nonsense\"; there is: info, "},
        {"telemetry", 2, "after \"zavractl telemetry ...\" a command is missing; there is: standard, sensor, "},
        {"telemetry attitude --color", 2, "The following argument was not expected: --color"},
        {"--simulate call Get_Epoch", 2, "there is no method \"Get_Epoch\"; there is: Get_Epoch_Time"},
        {"--simulate call Set_Epoch_Time", 2, "no value for epoch_time_msec"},
        {"--simulate call Set_Epoch_Time abc", 2, "epoch_time_msec: expected uint64, got \"abc\""},
        {"--simulate call Set_Epoch_Time 1 2", 2, "\"2\" is one value too many"},
        {"--simulate call Set_Epoch_Time time=1", 2, "\"time\" is no argument"},
        {"--simulate call Set_Epoch_Time --json /nowhere.json", 2, "/nowhere.json: No such file or directory"},
        {"--simulate call Set_Active_Gyroscope 256", 2, "gyro_index: expected a whole number up to 255, got 256"},
        {"--simulate call Set_Active_Gyroscope 3", 2, "Failed to Set Gyro Index (index exceeds limits)"},
        {"--simulate call Set_Active_Gyroscope -1", 2, "gyro_index: expected a whole number up to 255, got -1"},
        {"--simulate call Set_Gyro_Values 0 1e39 0 0", 2, "angular_velocity.x: 1e39 is out of range"},
        {"--simulate time set yesterday", 2, "time: expected milliseconds since 1970 or a date like "},
        {"--simulate info --interval 0s --count 1", 2,
         "--interval: expected a time like 1s, 500ms or 2min, got \"0s\""},
        {"--simulate info --json --csv", 2, "--json and --csv exclude each other"},
        {"--simulate --follow system scheduler 1", 2, "--follow is for commands that read"},
        {"--simulate registers --map /nowhere", 2, "Failed to load register map (/nowhere: No such file or directory)"},
        {"check tle /nowhere", 2, "/nowhere: No such file or directory"},
        {"check ini /tmp", 2, "/tmp: Is a directory"},
        {"decode /nowhere", 2, "/nowhere: No such file or directory"},
        {"--bus-dir /nowhere info", 1,
         "Failed to instantiate ZAVRA I2C Device (Cannot connect to address 10 (0xA) on /nowhere/i2c-0 (No such file "
         "or "
         "directory))"},
    };
    for (const auto& [command_line, status, message] : cases) {
        SCOPED_TRACE(command_line);
        const Ran ran = zavractl(command_line);
        EXPECT_EQ(ran.status, status);
        EXPECT_EQ(ran.out, "");
        EXPECT_THAT(ran.errors, StartsWith(std::string("zavractl: ") + message));
        EXPECT_EQ(std::count(ran.errors.begin(), ran.errors.end(), '\n'), 1);
    }
}

TEST_F(Connected_Test, failures_name_the_command_and_the_innermost_reason)
{
    const std::string elsewhere = "11 (0xB) on " + (directory / "i2c-0").string();
    const Ran ran = zavractl("--address 0x0b info");
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.errors, "zavractl: Failed to get info telemetry (Cannot write 5 bytes to address " + elsewhere +
                              " (not acknowledged: No such device or address))\n");

    using tools::in_short;
    EXPECT_EQ(in_short("Failed to A (Failed to B (Bad response CRC, Retry failed))"),
              "Failed to A (Bad response CRC, Retry failed)");
    EXPECT_EQ(in_short("Failed to A (index exceeds limits)"), "Failed to A (index exceeds limits)");
    EXPECT_EQ(in_short("Failed to A (Failed to B: too many)"), "Failed to A (Failed to B: too many)");
}

TEST_F(Connected_Test, reads_and_sets_a_unit)
{
    EXPECT_EQ(zavractl("system scheduler 0xcafe").out, "");
    EXPECT_EQ(zavractl("system scheduler").out, "scheduler_register  51966\n");
    EXPECT_EQ(zavractl("system scheduler --json").out, "{\n  \"scheduler_register\": 51966\n}\n");
    EXPECT_THAT(zavractl("telemetry standard").out, HasSubstr("\nsystem_scheduler_register     0x0000cafe\n"));
    EXPECT_THAT(zavractl("telemetry attitude").out, HasSubstr("\nangular_velocity_y_radps                         "
                                                              "-0.0011 rad/s\n"));

    EXPECT_EQ(zavractl("time set 2026-11-21T12:00:00.250Z").status, 0);
    EXPECT_THAT(zavractl("time get").out,
                StartsWith("epoch_time_msec     1795262400250 ms  (2026-11-21T12:00:00.250Z)\n"));
    EXPECT_EQ(zavractl("time sync").status, 0);
    const Json time = Json::parse(zavractl("time get --json").out);
    EXPECT_LE(std::abs(time.at("ahead_of_host_msec").get<long long>()), 100);

    unit.parts.system.error_register = 1;
    EXPECT_THAT(zavractl("registers").out, HasSubstr("system_error            0x00000001\n"
                                                     "system_error.flags      command_error_0\n"));
}

TEST_F(Connected_Test, parameters_that_are_not_given_stay_as_the_unit_has_them)
{
    EXPECT_EQ(zavractl("wheel parameters 2 max_speed=750").status, 0);
    EXPECT_THAT(zavractl("wheel parameters 2").out, AllOf(HasSubstr("max_speed                       750.0 rad/s\n"),
                                                          HasSubstr("max_time_for_speed_measurement  500\n")));
    EXPECT_THAT(zavractl("wheel speeds v=1").errors, HasSubstr("no value for speed_radps.x, speed_radps.y"))
        << "measured speeds are no settings";
    EXPECT_THAT(zavractl("--dry-run kalman disable_bias=on").errors, HasSubstr("no value for parameters.bias_process"));

    const std::string file = directory / "kalman.json";
    std::ofstream(file) << zavractl("kalman --json").out;
    EXPECT_EQ(zavractl("kalman disable_bias=on bias_process_variance=2.5").status, 0);
    EXPECT_THAT(zavractl("kalman").out, AllOf(HasSubstr("bias_process_variance         2.5\n"),
                                              HasSubstr("disable_bias                  1\n")));
    EXPECT_EQ(zavractl("call Set_KalmanFilter_Parameters --json " + file).status, 0);
    EXPECT_EQ(zavractl("kalman --json").out, (std::ostringstream() << std::ifstream(file).rdbuf()).str());
    EXPECT_THAT(zavractl("call Set_Gyro_Parameters 0 x=1").errors,
                HasSubstr("\"x\" may be parameters.sensor_stddev.x or parameters.sensor_sensitivity.x"));
    EXPECT_THAT(zavractl("call Set_Gyro_Parameters 0 sensor_stddev=1,2").errors,
                HasSubstr("sensor_stddev: expected 3 values with commas between them, got \"1,2\""));
}

TEST_F(Connected_Test, following_survives_single_failures_and_says_when_nothing_came_through)
{
    const Ran lines = zavractl("telemetry power --json --count 2 --interval 1ms");
    EXPECT_THAT(lines.out,
                MatchesRegex("(\\{\"time\":\"....-..-..T..:..:..\\....Z\",\"epoch_time_msec\":[^\n]*\\}\n){2}"));
    const Ran table = zavractl("system scheduler --csv --count 2 --interval 1ms");
    EXPECT_THAT(table.out, MatchesRegex("time,scheduler_register\n(....-..-..T..:..:..\\....Z,0\n){2}"));

    const Ran dead = zavractl("--address 11 info --count 2 --interval 1ms");
    EXPECT_EQ(dead.status, 1);
    EXPECT_EQ(dead.out, "");
    EXPECT_EQ(std::count(dead.errors.begin(), dead.errors.end(), '\n'), 2);
}

TEST(Program_Test, beats_are_absolute_and_a_late_reading_skips_some)
{
    using namespace std::chrono_literals;
    const tools::Steady::time_point start{};
    tools::Rhythm rhythm(100ms, start);
    EXPECT_EQ(rhythm.next(start + 30ms), start + 100ms);
    EXPECT_EQ(rhythm.next(start + 199ms), start + 200ms);
    EXPECT_EQ(rhythm.next(start + 555ms), start + 600ms);
    EXPECT_EQ(rhythm.next(start + 700ms), start + 700ms);
}

TEST(Program_Test, a_dry_run_prints_the_frames_and_sends_nothing)
{
    EXPECT_EQ(zavractl("--dry-run system scheduler 0x12345678").out, "02290400123456780a\n");
    EXPECT_EQ(zavractl("--dry-run telemetry power").out, "02250000af\n");
    EXPECT_EQ(zavractl("--dry-run call Set_Active_Gyroscope 3").status, 2);
}

TEST(Program_Test, the_list_shows_arguments_and_results)
{
    const Ran all = zavractl("list");
    EXPECT_THAT(all.out, HasSubstr("0xa102  Get_Gyro_Values(index) -> angular_velocity, timestamp\n"));
    const Ran one = zavractl("list set_gyro_VALUES");
    EXPECT_EQ(one.out, "0xa101  Set_Gyro_Values(index, angular_velocity)\n"
                       "          arguments\n"
                       "            index               uint8\n"
                       "            angular_velocity.x  float, rad/s\n"
                       "            angular_velocity.y  float, rad/s\n"
                       "            angular_velocity.z  float, rad/s\n");
    EXPECT_GT(Json::parse(zavractl("list --json").out).size(), 100U);
}

}
