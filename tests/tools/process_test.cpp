#include "shell.h"

using namespace zavra::test;

// What can only be seen from outside the program.

TEST_F(Shell_Test, standard_output_has_the_answer_alone)
{
    // This setter prints its payload to standard output.
    EXPECT_EQ(run("zavractl --simulate magnetometer parameters 0 avg_filter_counter=3 2>/dev/null"), "");
    EXPECT_EQ(status, 0);
    EXPECT_THAT(run("VELM_DEBUG=1234 zavractl --simulate system scheduler 2>/dev/null"),
                "scheduler_register  0x00000000\n");
    EXPECT_TRUE(nothing_left_behind());
}

TEST_F(Shell_Test, ends_quietly_when_its_reader_goes_and_loudly_when_the_disk_is_full)
{
    EXPECT_EQ(run("zavractl --simulate info --csv --follow --interval 1ms | head -n 2 | wc -l; echo ${PIPESTATUS[0]}"),
              "2\n141\n");
    EXPECT_EQ(run("zavractl --simulate info > /dev/full"),
              "zavractl: cannot write the answer: No space left on device\n");
    EXPECT_EQ(status, 1);
    EXPECT_TRUE(nothing_left_behind());
}

TEST_F(Shell_Test, signals_end_following_cleanly_and_other_commands_tidily)
{
    EXPECT_EQ(
        run("zavractl --simulate --follow --csv system scheduler --interval 10s > out & sleep 0.5; kill -TERM $!; "
            "wait $!; echo $?; wc -l < out"),
        "0\n2\n");
    EXPECT_EQ(run("zavractl --simulate time get > out & sleep 0.05; kill -TERM $!; wait $! 2>/dev/null; echo $?"),
              "143\n");
    EXPECT_TRUE(nothing_left_behind());
}

TEST_F(Shell_Test, a_debug_dump_of_a_session_is_explained_frame_by_frame)
{
    const std::string explained = run(
        "export VELM_DEBUG=3; { zavractl --simulate telemetry sensor; zavractl --simulate magnetometer parameters 0 "
        "avg_filter_counter=3; zavractl --simulate startracker native send 0102; } 2>&1 >/dev/null | zavractl decode; "
        "echo ${PIPESTATUS[1]}");
    EXPECT_THAT(explained, AllOf(HasSubstr("response to Get_Sensor_Telemetry, CRC right\n"),
                                 HasSubstr("request 0xa203 Set_Magnetometer_Parameters, CRC right\n"),
                                 HasSubstr("    parameters.avg_filter_counter           3\n"),
                                 HasSubstr("request 0xab20 Send_Startracker_Native_Command with 0102, CRC right\n"),
                                 EndsWith("\n0\n")));
}

TEST_F(Shell_Test, the_monitor_needs_a_terminal_and_draws_on_one)
{
    EXPECT_EQ(run("setsid zavractl --simulate monitor"), "zavractl: monitor: there is no terminal to draw on\n");
    EXPECT_EQ(status, 1);
    const std::string screen =
        run("TERM=xterm script -qec \"stty rows 60 cols 250; zavractl --simulate monitor --count 2 --interval 100ms\" "
            "/dev/null");
    EXPECT_EQ(status, 0);
    EXPECT_THAT(screen, AllOf(HasSubstr("attitude"), HasSubstr("angular_velocity_x_radps"), HasSubstr("ZAVRA-SIM")));
}

TEST_F(Shell_Test, bash_completes_commands_options_methods_fields_and_values)
{
    const auto completed = [&](const std::string& words) {
        return run("source " ZAVRA_COMPLETION "; COMP_WORDS=(" + words +
                   "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _zavractl; echo ${COMPREPLY[*]}");
    };
    const std::pair<const char*, const char*> cases[] = {
        {"zavractl tele", "telemetry"},
        {"zavractl --simulate telemetry a", "actuator attitude all"},
        {"zavractl telemetry power.zavra_s", "power.zavra_supply_voltage_v"},
        {"zavractl call get_ep", "Get_Epoch_Time"},
        {"zavractl call Set_Epoch_Time e", "epoch_time_msec="},
        {"zavractl wheel speed s", "speed_radps="},
        {"zavractl info --sim", "--simulate"},
        {"zavractl --json info --js", ""},
        {"zavractl info --js", "--json"},
        {"zavractl check ini ''", ""}, // files, by the shell
    };
    for (const auto& [words, expected] : cases)
        EXPECT_EQ(completed(words), std::string(expected) + '\n') << words;
}

TEST_F(Shell_Test, colours_are_for_terminals_and_what_the_library_prints_ends_its_line)
{
    EXPECT_THAT(run("VELM_DEBUG=3 zavractl --simulate time get 2>&1 >/dev/null"),
                testing::Not(testing::HasSubstr("\033")));
    EXPECT_THAT(run("zavractl --simulate magnetometer parameters 0 avg_filter_counter=3"),
                testing::MatchesRegex("[0-9a-f]+\n"));
}
