#include "device/protocol/json.h"
#include "tests/support/simulated_bus.h"

#include <ZAVRA_100.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace zavra::test
{

/// The program zavra-sim, with its standard output in a pipe and its standard error in a file.
class Program_Test : public Bus_Test
{
protected:
    void start(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {ZAVRA_SIM, "--bus-dir", directory, "--latency", "0"});
        std::vector<char*> argv;
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        int ends[2];
        ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        process = ::fork();
        if (process == 0) {
            ::dup2(ends[1], STDOUT_FILENO);
            ::dup2(::open(errors().c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
            ::execvp(argv.front(), argv.data());
            ::_exit(127);
        }
        ::close(ends[1]);
        output = Descriptor(ends[0]);
    }

    void wait_for_bus() const
    {
        for (int tries = 0; tries < 500 && !std::filesystem::is_socket(directory / "i2c-0"); ++tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }

    int stop(int signal = SIGTERM)
    {
        ::kill(process, signal);
        return exit_status();
    }

    int exit_status() const
    {
        int status = -1;
        ::waitpid(process, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// What it wrote; ends when it has ended.
    std::string text() const
    {
        std::string all;
        char piece[4096];
        for (ssize_t size = 0; (size = ::read(output.get(), piece, sizeof piece)) > 0;)
            all.append(piece, static_cast<std::size_t>(size));
        return all;
    }

    std::string errors() const { return directory / "errors"; }

    std::string error_text() const
    {
        std::ifstream file(errors());
        return {std::istreambuf_iterator<char>(file), {}};
    }

    pid_t process = -1;
    Descriptor output;
};

TEST_F(Program_Test, says_where_it_listens_and_removes_its_socket)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        start({});
        wait_for_bus();
        EXPECT_NO_THROW(ZAVRA_100(10, "i2c-0").Clear_System_Error_Register());
        EXPECT_EQ(stop(signal), 0);
        EXPECT_FALSE(std::filesystem::exists(directory / "i2c-0"));
        EXPECT_THAT(text(), testing::AllOf(testing::HasSubstr("at address 10 on " + (directory / "i2c-0").string()),
                                           testing::HasSubstr("export VELM_I2C_BUS_DIR=" + directory.string())));
    }
}

TEST_F(Program_Test, writes_a_journal_of_what_its_options_let_happen)
{
    std::ofstream(directory / "scenario.toml") << "[[event]]\naddress = 11\nfault = \"nak-write\"\n";
    start({"--address", "10", "11", "--journal", "-", "--fault", "hang=1", "--scenario", directory / "scenario.toml",
           "--time-factor", "100000", "--seed", "3"});
    wait_for_bus();
    std::this_thread::sleep_for(std::chrono::milliseconds(2)); // one tick of the clock at least
    EXPECT_THAT(message_of<ZAVRA_100_Exception>([] { ZAVRA_100(10, "i2c-0").Set_Epoch_Time(1); }),
                testing::HasSubstr("Connection timed out"));
    EXPECT_EQ(stop(), 0);

    const std::string journal = text();
    const Json line = Json::parse(journal.substr(0, journal.find('\n')));
    EXPECT_EQ(line["command"], "Set_Epoch_Time");
    EXPECT_EQ(line["fields"]["epoch_time_msec"], 1);
    EXPECT_EQ(line["fault"], "hang");
    EXPECT_GT(line["time_msec"], 0);
    EXPECT_THAT(error_text(), testing::HasSubstr("at address 11 on")) << "standard output is the journal's";
}

TEST_F(Program_Test, a_closed_pipe_ends_the_journal_and_not_the_unit)
{
    start({"--journal", "-"});
    wait_for_bus();
    output = Descriptor();
    ZAVRA_100 device(10, "i2c-0");
    for (int i = 0; i < 3; ++i)
        EXPECT_NO_THROW(device.Set_Epoch_Time(1));
    EXPECT_EQ(stop(), 0);
    EXPECT_THAT(error_text(), testing::HasSubstr("The journal - ends here: Broken pipe\n"));
}

TEST_F(Program_Test, options_that_make_no_sense_are_refused)
{
    const std::vector<std::string> cases[] = {
        {"--fault", "flood=1"},         {"--scenario", "/nowhere.toml"}, {"--journal", "/nowhere/journal"},
        {"--address", "10", "10"},      {"--time-factor", "0"},          {"--address", "128"},
        {"--seed", "tomorrow morning"},
    };
    for (const auto& arguments : cases) {
        SCOPED_TRACE(arguments[0] + ' ' + arguments[1]);
        start(arguments);
        EXPECT_NE(exit_status(), 0);
        EXPECT_FALSE(error_text().empty());
        EXPECT_FALSE(std::filesystem::exists(directory / "i2c-0"));
    }
}

}
