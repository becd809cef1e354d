#include "program.h"

#include "catalogue/json.h"
#include "tests/support/simulated_bus.h"
#include "tools/failure.h"
#include "tools/stop.h"

using namespace zavra;
using namespace zavra::test;

TEST(Program_Test, says_on_one_line_what_is_wrong_and_ends_with_the_right_status)
{
    const std::tuple<const char*, int, const char*> cases[] = {
        {"", 2, "after \"zavractl ...\" a command is missing; there is: info, "},
        {"nonsense", 2, "there is no command \"nonsense\"; there is: info, "},
        {"telemetry", 2, "after \"zavractl telemetry ...\" a command is missing; there is: standard, sensor, "},
        {"telemetry attitude --color", 2, "The following argument was not expected: --color"},
        {"--simulate call Get_Epoch", 2, "there is no method \"Get_Epoch\"; there is: Get_Epoch_Time"},
        {"--simulate call Set_Epoch_Time", 2, "no value for epoch_time_msec"},
        {"telemetri", 2, "there is no command \"telemetri\"; did you mean \"telemetry\"?"},
        {"telemetry atitude", 2, "no field of telemetry is called \"atitude\"; did you mean \"attitude\"?"},
        {"call Set_Epoc_Time 1", 2, "there is no method \"Set_Epoc_Time\"; did you mean \"Set_Epoch_Time\"?"},
        {"gyro bias 0 bios.x=1", 2, "\"bios.x\" is no argument; did you mean \"bias.x\"?"},
        {"info --intervall 5s", 2,
         "The following arguments were not expected: 5s --intervall; did you mean \"--interval\"?"},
        {"info --jsen", 2, "The following argument was not expected: --jsen; did you mean \"--json\"?"},
        {"orbit load " ZAVRA_EXAMPLES_DIR "/iss.tle --update-interval 5km", 2,
         "tle_data.update_interval_msec: expected "},
        {"mode idle 5", 2, "The following argument was not expected: 5"},
        {"wheel speed index=0 index=1 3", 2, "index is given twice"},
        {"wheel speed 0 nan", 2, "speed_radps: expected a number, got \"nan\"; with --force, "},
        {"wheel speed 0 5mT", 2, "speed_radps: expected a number in rad/s (or rpm, deg/s), got \"5mT\""},
        {"gyro interval 0 1.5", 2, "interval_msec: expected a whole number from 0 to 18446744073709551615 in ms (or "},
        {"controller rate stop a", 2, "axis: expected a whole number from 0 to 255 or x, y, z, got \"a\""},
        {"call Send_Startracker_Native_Command 01 0g", 2, "data: expected bytes in hexadecimal, got \"01 0g\""},
        {"--simulate call Set_Epoch_Time abc", 2,
         "epoch_time_msec: expected milliseconds since 1970, now, +60s, a date like 2026-11-21T12:00:00Z, got \"abc\""},
        {"time set 18446744073709551616", 2, "time: 18446744073709551616 is out of range: "},
        {"time set 2026-02-30", 2, "time: expected milliseconds since 1970, "},
        {"time set +1e300s", 2, "time: expected milliseconds since 1970, "},
        {"info --count 0", 2, "--count: Value 0 not in range 1 to "},
        {"monitor --follow", 2, "monitor shows its frames until q is pressed; "},
        {"monitor altitude", 2, "there is no frame \"altitude\"; did you mean \"attitude\"?"},
        {"--simulate --bus-dir /tmp info", 2, "--simulate and --bus-dir exclude each other"},
        {"--dry-run kalman disable_bias=on", 2,
         "a dry run does not ask the unit for what is not given: parameters.bias_"},
        {"check ini /dev/zero", 2, "/dev/zero: more than 16 MB"},
        {"decode /dev/zero", 2, "a line of more than 1 MB is no captured frame"},
        {"check tle \xC2\x9B\033[2J", 2, "??[2J: No such file or directory"},
        {"--simulate call Set_Epoch_Time 1 2", 2, "\"2\" is one value too many"},
        {"--simulate call Set_Epoch_Time time=1", 2, "\"time\" is no argument"},
        {"--simulate call Set_Epoch_Time --json /nowhere.json", 2, "/nowhere.json: No such file or directory"},
        {"--simulate call Set_Active_Gyroscope 256", 2,
         "gyro_index: expected a whole number from 0 to 255 or gyro_0, gyro_1, gyro_2, got \"256\""},
        {"--simulate call Set_Active_Gyroscope 3", 2,
         "Failed to Set Gyro Index (index exceeds limits); gyro_index: 0 to 2"},
        {"--simulate call Set_Active_Gyroscope -1", 2,
         "gyro_index: expected a whole number from 0 to 255 or gyro_0, gyro_1, gyro_2, got \"-1\""},
        {"--simulate call Set_Gyro_Values 0 1e39 0 0", 2,
         "angular_velocity.x: 1e39 is out of range: a float goes up to 3.4e38"},
        {"--simulate time set yesterday", 2, "time: expected milliseconds since 1970, now, +60s, a date like "},
        {"--simulate info --interval 0s --count 1", 2,
         "--interval: expected a time up to 24h like 1s, 500ms, 2min or 1h, got \"0s\""},
        {"--simulate info --json --csv", 2, "--json and --csv exclude each other"},
        {"--simulate --follow system scheduler 1", 2, "--follow is for commands that read"},
        {"--simulate registers --map /nowhere", 2, "Failed to load register map (/nowhere: No such file or directory)"},
        {"check tle /nowhere", 2, "/nowhere: No such file or directory"},
        {"check ini /tmp", 2, "/tmp: Is a directory"},
        {"decode /nowhere", 2, "/nowhere: No such file or directory"},
        {"--bus-dir /nowhere info", 1,
         "Failed to instantiate ZAVRA I2C Device (Cannot connect to address 10 (0xA) on /nowhere/i2c-0 (No such file "
         "or directory): zavra-sim makes simulated buses)"},
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
    EXPECT_EQ(zavractl("system scheduler").out, "scheduler_register  0x0000cafe\n");
    EXPECT_EQ(zavractl("system scheduler --json").out, "{\n  \"scheduler_register\": 51966\n}\n");
    EXPECT_THAT(zavractl("telemetry standard").out, HasSubstr("\nsystem_scheduler_register     0x0000cafe\n"));
    EXPECT_THAT(zavractl("telemetry attitude").out, HasSubstr("\nangular_velocity_y_radps                         "
                                                              "-0.0011 rad/s\n"));

    EXPECT_EQ(zavractl("time set 2026-11-21T12:00:00.250Z").status, 0);
    EXPECT_THAT(zavractl("time get").out,
                StartsWith("epoch_time_msec     1795262400250 ms  (2026-11-21T12:00:00.250Z)\n"));
    EXPECT_EQ(zavractl("time sync").status, 0);
    const Json time = Json::parse(zavractl("time get --json").out);
    EXPECT_LE(std::abs(time.at("ahead_of_host_msec").get<long long>()), 1000);

    unit.parts.system.error_register = 1;
    EXPECT_EQ(zavractl("system hil 0x80000001").status, 0);
    EXPECT_THAT(zavractl("registers").out, EndsWith("hil_configuration.flags  bit_00 bit_31\n"));
    EXPECT_THAT(zavractl("registers").out, HasSubstr("system_error             0x00000001\n"
                                                     "system_error.flags       command_error_0\n"));
}

TEST_F(Connected_Test, parameters_that_are_not_given_stay_as_the_unit_has_them)
{
    EXPECT_EQ(zavractl("wheel parameters 2 max_speed=750").status, 0);
    EXPECT_THAT(zavractl("wheel parameters 2").out, AllOf(HasSubstr("max_speed                       750.0 rad/s\n"),
                                                          HasSubstr("max_time_for_speed_measurement  500\n")));
    EXPECT_THAT(zavractl("wheel speeds v=1").errors, HasSubstr("no value for speed_radps.x, speed_radps.y"))
        << "measured speeds are no settings";

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

TEST_F(Connected_Test, what_the_unit_does_not_take_fails_with_the_reason_that_can_be_told)
{
    const std::string beyond_the_pole =
        "mode earth-fixed determination_mode=1 los_vector_bf=0,0,1 flight_vector_bf=1,0,0 target_latitude=100deg "
        "target_longitude=0 offset_time=0 update_interval=1s tolerance_parameters=0,0,0,0";
    const Ran refused = zavractl(beyond_the_pole);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.errors,
              "zavractl: the unit did not take Start_TargetPointing_Earth_Fix_Mode: it refuses the values\n");
    EXPECT_EQ(zavractl(beyond_the_pole + " --no-verify").status, 0);
    EXPECT_EQ(
        zavractl("call ZAVRA_Generic_Set 0x7777 00").errors,
        "zavractl: the unit did not take ZAVRA_Generic_Set: it does not know the command, or not in this length\n");
    EXPECT_EQ(zavractl("gyro interval 0 200").status, 0) << "old errors are none of the next command";
}

TEST_F(Connected_Test, takes_values_as_people_write_them)
{
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"wheel torque 0 0 -.0005", "wheel torque",
         "torque_Nm.x  0.0 N m\ntorque_Nm.y  0.0 N m\ntorque_Nm.z  -0.0005 N m\n"},
        {"gyro bias gyro_2 180deg/s 60rpm -1", "gyro bias 2",
         "bias.x  3.1415927 rad/s\nbias.y  6.2831855 rad/s\nbias.z  -1.0 rad/s\n"},
        {"gyro interval GYRO_1 1.5s", "gyro interval 1", "interval_msec  1500 ms\n"},
        {"magnetometer values magnetometer_0 50000nT 0.01mT 0", "magnetometer values 0 --csv",
         "time,magnetic_field.x,magnetic_field.y,magnetic_field.z,timestamp\n"},
        {"startracker mode mode_2", "startracker mode", "mode  2\n"},
    };
    for (const auto& [set, get, expected] : cases) {
        SCOPED_TRACE(set);
        EXPECT_EQ(zavractl(set).errors, "");
        EXPECT_THAT(zavractl(get).out, StartsWith(expected));
    }
    EXPECT_THAT(zavractl("magnetometer values 0").out,
                StartsWith("magnetic_field.x  5e-05 T\nmagnetic_field.y  1e-05 T\n"));
    EXPECT_EQ(zavractl("wheel speed x -inf --force").status, 2) << "an option";
    EXPECT_EQ(zavractl("gyro values 0 angular_velocity=-inf,nan,1 --force").status, 0);

    const auto epoch = [&](const std::string& time) {
        EXPECT_EQ(zavractl("time set " + time).errors, "");
        return Json::parse(zavractl("time get --json").out).at("ahead_of_host_msec").get<double>();
    };
    EXPECT_NEAR(epoch("now"), 0, 1000);
    EXPECT_NEAR(epoch("+2min"), 120e3, 1000);
    EXPECT_NEAR(epoch("now-1h"), -3600e3, 1000);
    EXPECT_EQ(zavractl("time set 2026-11-21").status, 0);
    EXPECT_THAT(zavractl("time get").out,
                StartsWith("epoch_time_msec     1795219200000 ms  (2026-11-21T00:00:00.000Z)"));
}

TEST_F(Bus_Test, finds_the_simulator_that_was_not_told_a_directory_either)
{
    ::unsetenv("VELM_I2C_BUS_DIR");
    ::setenv("XDG_RUNTIME_DIR", directory.c_str(), 1);
    EXPECT_EQ(zavractl("--bus no-real-bus info").status, 1);
    std::filesystem::create_directory(directory / "zavra");
    const Bus_Server server{directory / "zavra", "no-real-bus", {{10, &unit}}};
    EXPECT_EQ(zavractl("--bus no-real-bus info").status, 0);
}

TEST_F(Connected_Test, answers_what_people_ask)
{
    EXPECT_EQ(zavractl("telemetry attitude.q_4 angular_velocity_x").out,
              "attitude.quaternion_attitude_4_bf  1.0\n"
              "attitude.angular_velocity_x_radps  0.002 rad/s\n");
    EXPECT_EQ(Json::parse(zavractl("telemetry all --json").out).size(), 6U);
    const auto received = unit.parts.system.counters.received_commands;
    EXPECT_EQ(zavractl("scan").out, "0x0a  answers (10)\n");
    EXPECT_EQ(unit.parts.system.counters.received_commands, received);
    EXPECT_EQ(zavractl("mode detumbling now +60s --no-verify").status, 0);
    EXPECT_THAT(zavractl("mode status").out, StartsWith("mode                 detumbling\nwaits_for_start      1\n"
                                                        "control_main_status  0x00000103\n"));
    EXPECT_THAT(zavractl("--version").out, MatchesRegex("zavractl [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    EXPECT_THAT(zavractl("gyro bias --help").out, HasSubstr("To set:\n  index   uint8: gyro_0, gyro_1, gyro_2\n"
                                                            "  bias.x  float, rad/s\n"));
    EXPECT_THAT(zavractl("mode idle --help").out, testing::Not(HasSubstr("alues")));
}

TEST_F(Connected_Test, a_recording_is_explained_and_not_overwritten)
{
    const std::string file = directory / "log";
    EXPECT_EQ(zavractl("record " + file + " --count 1").status, 0);
    const Ran explained = zavractl("decode " + file);
    EXPECT_EQ(explained.status, 0);
    EXPECT_THAT(explained.out, HasSubstr("Z response to Get_Attitude_Telemetry, CRC right\n"));
    EXPECT_EQ(zavractl("record " + file).errors, "zavractl: " + file + ": File exists\n");
}

TEST_F(Connected_Test, following_survives_single_failures_and_says_when_nothing_came_through)
{
    const Ran lines = zavractl("telemetry power --json --count 2 --interval 1ms");
    EXPECT_THAT(lines.out,
                MatchesRegex("(\\{\"time\":\"....-..-..T..:..:..\\....Z\",\"epoch_time_msec\":[^\n]*\\}\n){2}"));
    const Ran table = zavractl("system scheduler --csv --count 2 --interval 1ms");
    EXPECT_THAT(table.out, MatchesRegex("time,scheduler_register\n(....-..-..T..:..:..\\....Z,0x00000000\n){2}"));

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
    EXPECT_EQ(zavractl("--dry-run time get").out, "02110000e5\n0212000058\n");
    EXPECT_EQ(zavractl("--dry-run call Set_Active_Gyroscope 3").status, 2);
}

TEST(Program_Test, the_list_shows_arguments_and_results)
{
    const Ran all = zavractl("list");
    EXPECT_THAT(all.out, HasSubstr("0xa102  Get_Gyro_Values(index) -> angular_velocity, timestamp\n"));
    const Ran one = zavractl("list set_gyro_VALUES");
    EXPECT_EQ(one.out, "0xa101  Set_Gyro_Values(index, angular_velocity)\n"
                       "          arguments\n"
                       "            index               uint8: gyro_0, gyro_1, gyro_2\n"
                       "            angular_velocity.x  float, rad/s\n"
                       "            angular_velocity.y  float, rad/s\n"
                       "            angular_velocity.z  float, rad/s\n");
    EXPECT_GT(Json::parse(zavractl("list --json").out).size(), 100U);
}
