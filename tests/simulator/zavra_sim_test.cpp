#include "tests/support/simulated_bus.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <list>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace zavra::test;

/// The program zavra-sim, with its standard output in a pipe.
struct Zavra_Sim_Test : Bus_Test
{
    void start(const std::string& options, const std::string& limit = "true")
    {
        const std::string command = limit + "; echo $$; exec " ZAVRA_SIM " --latency 0 ";
        output = ::popen((command + options).c_str(), "r");
        ASSERT_EQ(std::fscanf(output, "%d%*c", &process), 1);
    }

    void wait_for_bus() const
    {
        for (int tries = 0; tries < 500 && !std::filesystem::is_socket(directory / "i2c-0"); ++tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }

    /// What it writes until it ends; its status is in `status`.
    std::string finish()
    {
        std::string text;
        for (int c; (c = std::fgetc(output)) != EOF;)
            text += static_cast<char>(c);
        status = WEXITSTATUS(::pclose(output));
        return text;
    }

    std::string stop(int signal = SIGTERM)
    {
        ::kill(process, signal);
        return finish();
    }

    std::FILE* output = nullptr;
    int process = -1, status = -1;
};

TEST_F(Zavra_Sim_Test, says_where_it_listens_and_removes_its_socket)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        start("");
        wait_for_bus();
        EXPECT_NO_THROW(ZAVRA_100(10, "i2c-0").Clear_System_Error_Register());
        EXPECT_THAT(stop(signal), AllOf(HasSubstr("at address 10 on " + (directory / "i2c-0").string()),
                                        HasSubstr("export VELM_I2C_BUS_DIR=" + directory.string())));
        EXPECT_EQ(status, 0);
        EXPECT_FALSE(std::filesystem::exists(directory / "i2c-0"));
    }
}

TEST_F(Zavra_Sim_Test, writes_a_journal_of_what_its_options_let_happen)
{
    std::ofstream(directory / "scenario.toml") << "[[event]]\naddress = 11\nfault = \"nak-write\"\n";
    start("--address 10 11 --journal - --fault hang=1 --time-factor 100000 --seed 3 --scenario " +
          (directory / "scenario.toml").string() + " 2>/dev/null");
    wait_for_bus();
    std::this_thread::sleep_for(std::chrono::milliseconds(2)); // one tick of the clock at least
    EXPECT_THAT(message_of<Device_Failure>([] { ZAVRA_100(10, "i2c-0").Set_Epoch_Time(1); }),
                HasSubstr("Connection timed out"));
    const auto line = nlohmann::json::parse(stop()); // standard output is the journal's alone
    EXPECT_EQ(status, 0);
    EXPECT_EQ(line["command"], "Set_Epoch_Time");
    EXPECT_EQ(line["fields"]["epoch_time_msec"], 1);
    EXPECT_EQ(line["fault"], "hang");
    EXPECT_GT(line["time_msec"], 0);
}

TEST_F(Zavra_Sim_Test, a_closed_pipe_ends_the_journal_and_not_the_unit)
{
    start("--journal - 2>" + (directory / "errors").string());
    wait_for_bus();
    ::dup2(zavra::File_Descriptor(::open("/dev/null", O_RDONLY)).get(), ::fileno(output));
    ZAVRA_100 device(10, "i2c-0");
    for (int i = 0; i < 3; ++i)
        EXPECT_NO_THROW(device.Set_Epoch_Time(1));
    stop();
    EXPECT_EQ(status, 0);
    std::stringstream errors;
    errors << std::ifstream(directory / "errors").rdbuf();
    EXPECT_THAT(errors.str(),
                AllOf(HasSubstr("at address 10 on "), HasSubstr("The journal - ends here: Broken pipe\n")));
    EXPECT_EQ(errors.str().find("ends here"), errors.str().rfind("ends here")) << "it is said once";
}

TEST_F(Zavra_Sim_Test, a_journal_that_nobody_reads_or_that_must_not_grow_stops_nothing)
{
    const auto work = [this](int times) {
        wait_for_bus();
        ZAVRA_100 device(10, "i2c-0");
        for (int i = 0; i < times; ++i)
            EXPECT_NO_THROW(device.Set_Epoch_Time(1));
        const std::string text = stop();
        EXPECT_EQ(status, 0);
        return text;
    };
    start("--journal - 2>/dev/null");
    const std::string lines = work(1000); // some 200 KB, of which a pipe takes 64
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 1000) << "late, and all of them";

    ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
    start("--journal " + (directory / "pipe").string() + " 2>&1");
    EXPECT_THAT(work(1), Not(HasSubstr("ends here")));

    start("--journal " + (directory / "file").string() + " 2>&1", "ulimit -f 1");
    EXPECT_THAT(work(20), HasSubstr("file ends here: File too large"));
}

TEST_F(Zavra_Sim_Test, without_descriptors_for_more_programs_it_rests)
{
    start("", "ulimit -n 32");
    wait_for_bus();
    clockid_t its_time{};
    ASSERT_EQ(::clock_getcpuclockid(process, &its_time), 0);
    const auto used_msec = [&] {
        timespec time{};
        ::clock_gettime(its_time, &time);
        return time.tv_sec * 1000 + time.tv_nsec / 1'000'000;
    };
    std::list<VELM_I2C_DEV> programs(40);
    for (VELM_I2C_DEV& program : programs)
        program.Connect(10, "i2c-0");
    const auto before = used_msec();
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_LT(used_msec() - before, 50);
    unsigned char request[]{0x02, 0x30, 0, 0, 0};
    while (programs.size() > 1)
        programs.pop_front();
    EXPECT_NO_THROW(programs.back().I2CWriteByteArray(request, sizeof request)) << "its turn has come";
    stop();
    EXPECT_EQ(status, 0);
}

TEST_F(Zavra_Sim_Test, flies_a_satellite_and_records_it_the_same_each_time)
{
    const auto record = [&](const std::string& name) {
        std::stringstream text;
        text << std::ifstream(directory / name).rdbuf();
        return text.str();
    };
    const std::string satellite = "--satellite " ZAVRA_SCENARIOS "/../satellites/3u.toml --run 2min --record ";
    for (const char* name : {"first.csv", "second.csv"}) {
        start(satellite + (directory / name).string() + " --seed 4 --record-interval 500ms");
        EXPECT_THAT(finish(), testing::AllOf(HasSubstr("Simulated 2 min in "), HasSubstr("241 lines recorded.")));
        EXPECT_EQ(status, 0);
    }
    const std::string first = record("first.csv");
    EXPECT_EQ(first, record("second.csv"));
    EXPECT_THAT(first, testing::StartsWith("time_s,epoch_time_msec,position_x_km,"));
    EXPECT_THAT(first, HasSubstr("\n0.5,1516485600500,"));
    EXPECT_EQ(std::ranges::count(first, ','), 39 * 242);

    start("--satellite " ZAVRA_SCENARIOS "/../satellites/1u.toml --run 9999d --record " +
          (directory / "cut.csv").string());
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_THAT(stop(SIGINT), HasSubstr("Stopped after "));
    EXPECT_EQ(status, 0);
    EXPECT_THAT(record("cut.csv"), testing::EndsWith(",,,,,,,\n"));

    start(satellite + "/dev/full 2>&1");
    EXPECT_THAT(finish(), testing::AllOf(HasSubstr("The record /dev/full ends here: No space left on device"),
                                         HasSubstr("not all of them written")));
    EXPECT_EQ(status, 0);
}

TEST_F(Zavra_Sim_Test, reports_a_flight_on_a_page_that_repeats_it)
{
    const auto data = [&] {
        std::stringstream text;
        text << std::ifstream(directory / "run.html").rdbuf();
        const std::string page = text.str(), mark = "id=\"data\">";
        EXPECT_THAT(page, Not(testing::ContainsRegex("<(script|img|link)[^>]*(src|href)=\"[^d]")))
            << "it needs no other file";
        const auto begin = page.find(mark) + mark.size();
        return nlohmann::json::parse(page.substr(begin, page.find("</script>", begin) - begin));
    };
    const std::string options =
        "--satellite " ZAVRA_SCENARIOS "/../satellites/3u.toml --report " + (directory / "run.html").string();
    std::ofstream(directory / "events.toml") << R"(# </script>
[[event]]
at = 60
satellite = { angular_velocity_radps = [0.5, 0, 0] }
[[event]]
at = 61
command = "Set_ReactionWheel_Speed"
arguments = { index = 9, speed_radps = 1 })";
    start(options + " --run 2min --scenario " + (directory / "events.toml").string() + " 2>/dev/null");
    finish();
    EXPECT_EQ(status, 0);
    const nlohmann::json alone = data();
    EXPECT_THAT(alone["command_line"], HasSubstr("zavra-sim --latency 0 --satellite "));
    EXPECT_THAT(alone["files"][1]["text"], testing::StartsWith("# </script>\n[[event]]"));
    EXPECT_EQ(
        alone["events"][0],
        nlohmann::json::parse(R"({"time_s": 60, "kind": "event", "text": "{\"angular_velocity_radps\":[0.5,0,0]}"})"));
    EXPECT_EQ(alone["events"][1]["kind"], "refused");
    EXPECT_EQ(alone["time_s"].size(), 1201U);
    EXPECT_EQ(alone["curves"]["angular_velocity_x_radps"][600], 0.5);
    EXPECT_FALSE(alone["curves"].contains("pointing_error_rad"));

    start(options + " --time-factor 100");
    wait_for_bus();
    ZAVRA_100(10, "i2c-0").Set_Epoch_Time(1);
    stop();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(data()["events"][0]["text"], "Set_Epoch_Time {\"epoch_time_msec\":1}");

    start("--satellite " ZAVRA_SCENARIOS "/../satellites/3u.toml --run 1s --report /dev/full 2>&1");
    EXPECT_THAT(finish(), HasSubstr("Report /dev/full: No space left on device"));
    EXPECT_EQ(status, 1);
}

TEST_F(Zavra_Sim_Test, a_run_of_a_campaign_ends_with_its_result)
{
    const std::string options =
        "--satellite " ZAVRA_SCENARIOS "/../satellites/3u.toml --vary " ZAVRA_SCENARIOS
        "/../campaigns/detumbling_3u.toml --scenario " ZAVRA_SCENARIOS "/../flights/detumbling.toml ";
    const auto result = [&](const std::string& seed) {
        start(options + "--run 2min --seed " + seed + " 2>/dev/null");
        return nlohmann::json::parse(finish());
    };
    const nlohmann::json first = result("1");
    EXPECT_EQ(first["seed"], 1);
    EXPECT_EQ(first, result("1"));
    EXPECT_NE(first["results"]["end_rate_radps"], result("2")["results"]["end_rate_radps"]);
    EXPECT_GT(first["results"]["greatest_rate_radps"], 0);
    EXPECT_THAT(first["command_line"], testing::EndsWith("--run 2min --seed 1"));

    start(options + "--run 9999d 2>/dev/null");
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_EQ(stop(SIGINT), "") << "half a run has no result";
    EXPECT_EQ(status, 1);
}

TEST_F(Zavra_Sim_Test, flights_of_the_examples_point_to_nadir)
{
    for (const char* flight : {"first_orbits.toml --run 4h", "failures.toml --run 3590s", "failures.toml --run 10700s",
                               "failures.toml --run 5h"}) {
        SCOPED_TRACE(flight);
        start("--satellite " ZAVRA_SCENARIOS "/../satellites/3u.toml --scenario " ZAVRA_SCENARIOS "/../flights/" +
              std::string(flight) + " 2>&1");
        // Nothing was refused, and it turns once per orbit.
        EXPECT_THAT(
            finish(),
            MatchesRegex("Simulated [^\n]*\nThe satellite turns with 0\\.001[0-3][0-9]* rad/s in the end\\.\n"));
        EXPECT_EQ(status, 0);
    }
}

TEST_F(Zavra_Sim_Test, records_a_satellite_on_the_bus_too)
{
    start("--satellite " ZAVRA_SCENARIOS "/../satellites/1u.toml --time-factor 100 --record " +
          (directory / "run.csv").string());
    wait_for_bus();
    ZAVRA_100(10, "i2c-0").Set_Magnettorquer_All_Dipole_Moments({0.1F, 0, 0});
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    stop();
    EXPECT_EQ(status, 0);
    std::stringstream text;
    text << std::ifstream(directory / "run.csv").rdbuf();
    EXPECT_THAT(text.str(), HasSubstr(",0.080000001")) << "commanded, for four fifths of each tick";
}

TEST_F(Zavra_Sim_Test, options_that_make_no_sense_are_refused)
{
    for (const char* options :
         {"--fault flood=1", "--fault crc=0.1:500", "--scenario /nowhere.toml", "--address 10 10", "--time-factor 0",
          "--time-factor nan", "--address 128", "--seed 'tomorrow morning'", "--bus a/b", "--run 6h", "--record x.csv",
          "--report x.html", "--satellite " ZAVRA_SCENARIOS "/../satellites/1u.toml --vary x.toml",
          "--satellite /nowhere.toml", "--satellite " ZAVRA_SCENARIOS "/../satellites/1u.toml --run 6x", "--bus ''",
          "--flood", "--bus-dir /tmp/no/such/directory"}) {
        SCOPED_TRACE(options);
        start(std::string(options) + " 2>&1");
        EXPECT_THAT(finish(), MatchesRegex("zavra-sim: [^\n]+\n"));
        EXPECT_EQ(status, 2);
        EXPECT_FALSE(std::filesystem::exists(directory / "i2c-0"));
    }
    start("--journal /nowhere/journal 2>&1");
    finish();
    EXPECT_EQ(status, 1);
    start("--create --bus-dir " + (directory / "new/one").string());
    for (int tries = 0; tries < 500 && !std::filesystem::is_socket(directory / "new/one/i2c-0.control"); ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    stop();
    EXPECT_EQ(status, 0);
}
