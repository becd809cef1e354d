#include "simulator/bench/bus_server.h"
#include "tests/support/bytes.h"
#include "tests/support/temporary_directory.h"

#include <VELM_I2C_DEV.h>

#include <atomic>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace zavra::test;
using namespace std::chrono_literals;
using testing::Ge, testing::Lt;

/// Gives back what was written last, as the unit does.
struct Echo : zavra::simulator::Bus_Device
{
    int write(std::span<const unsigned char> bytes) override
    {
        last.assign(bytes.begin(), bytes.end());
        return last[0] == 0xEE ? ENXIO : 0;
    }
    int read(std::vector<unsigned char>& bytes) override
    {
        bytes = last;
        ++reads;
        return 0;
    }
    std::vector<unsigned char> last{0};
    std::atomic<int> reads = 0;
};

struct Connected : VELM_I2C_DEV
{
    Connected() { Connect(10, "i2c-0"); }

    void write(unsigned char value) { I2CWriteByteArray(&value, 1); }
    unsigned char read()
    {
        unsigned char value = 0;
        I2CReadByteArray(&value, 1);
        return value;
    }
    /// How often of so many times the reply was somebody else's.
    int wrong_replies(unsigned char value, int times)
    {
        int wrong = 0;
        int late = 0;
        for (int i = 0; i < times; ++i) {
            try {
                write(value);
                std::this_thread::sleep_for(2ms);
                wrong += read() == value ? 0 : 1;
            } catch (const VELM_I2C_DEV_Exception&) {
                if (++late > times / 10) // a busy computer lets more than 150 ms pass now and then
                    throw;
            }
        }
        return wrong;
    }
};

/// A program of its own that does something with the unit; its status is that of the action.
class Program
{
public:
    template <class Action>
    explicit Program(Action action) : process(::fork())
    {
        if (process != 0)
            return;
        int status = 99;
        try {
            status = action();
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
        }
        ::_exit(status);
    }
    int wait(int options = 0) const
    {
        int status = -1;
        ::waitpid(process, &status, options);
        return WIFEXITED(status) ? WEXITSTATUS(status) : status;
    }
    const pid_t process;
};

class Reservation_Test : public ::testing::Test
{
protected:
    Reservation_Test() { ::setenv("VELM_I2C_BUS_DIR", directory.path.c_str(), 1); }
    ~Reservation_Test() override { ::unsetenv("VELM_I2C_BUS_DIR"); }

    template <class Action>
    static std::chrono::milliseconds time_of(Action action)
    {
        const auto start = std::chrono::steady_clock::now();
        action();
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    }

    Temporary_Directory directory;
    const std::string lock = directory.path + "/i2c-0.10.lock";
    Echo echo;
    zavra::simulator::Bus_Server server{echo, directory.path, "i2c-0"};
};

TEST_F(Reservation_Test, every_program_and_every_object_gets_its_own_replies)
{
    std::vector<Program> programs;
    for (unsigned char value = 1; value <= 6; ++value)
        programs.emplace_back([=] { return Connected().wrong_replies(value, 50); });
    int wrong_here = -1;
    {
        std::jthread other([&] { wrong_here = Connected().wrong_replies(7, 50); });
        EXPECT_EQ(Connected().wrong_replies(8, 50), 0);
    }
    EXPECT_EQ(wrong_here, 0);
    for (const Program& program : programs)
        EXPECT_EQ(program.wait(), 0);
    EXPECT_EQ(std::filesystem::status(lock).permissions(), std::filesystem::perms(0666));
}

TEST_F(Reservation_Test, a_reservation_ends_with_its_read_a_failure_or_150_ms)
{
    Connected first;
    Connected second;
    first.write(1);
    first.read();
    EXPECT_LT(time_of([&] { second.write(2); }), 140ms);
    EXPECT_THAT(time_of([&] { first.write(1); }), AllOf(Ge(149ms), Lt(1000ms)));
    first.read();
    EXPECT_ANY_THROW(second.write(0xEE));
    EXPECT_LT(time_of([&] { first.write(1); }), 140ms);
    EXPECT_LT(time_of([&] { first.write(1); }), 140ms) << "for its owner it holds nothing up";
}

TEST_F(Reservation_Test, who_is_killed_or_stopped_holds_nobody_up_and_reads_no_reply_of_others)
{
    Connected here;
    for (const int signal : {SIGKILL, SIGSTOP}) {
        SCOPED_TRACE(signal);
        const Program holder([=] {
            Connected unit;
            unit.write(1);
            ::raise(signal);
            const std::string failure = message_of<VELM_I2C_DEV_Exception>([&] { unit.read(); });
            const std::string reason =
                ", reserved by process " + std::to_string(::getppid()) + " (in use by another program)";
            return failure.ends_with(reason) && unit.wrong_replies(1, 1) == 0 ? 0 : 1;
        });
        holder.wait(WUNTRACED);
        EXPECT_LT(time_of([&] { here.write(2); }), 1000ms);
        EXPECT_EQ(here.read(), 2);
        if (signal == SIGSTOP) {
            const int reads = echo.reads;
            ::kill(holder.process, SIGCONT);
            EXPECT_EQ(holder.wait(), 0);
            EXPECT_EQ(echo.reads, reads + 1) << "the reply of others stays where it is";
        }
    }
    // The same while they wait for their turn, ahead of us.
    for (const int signal : {SIGKILL, SIGSTOP}) {
        SCOPED_TRACE(signal);
        Connected before;
        before.write(1);
        const Program waiting([] { return Connected().wrong_replies(3, 1); });
        std::this_thread::sleep_for(50ms);
        ::kill(waiting.process, signal);
        EXPECT_LT(time_of([&] { EXPECT_EQ(here.wrong_replies(4, 20), 0); }), 1000ms);
        ::kill(waiting.process, SIGCONT);
        EXPECT_EQ(waiting.wait(), signal == SIGKILL ? SIGKILL : 0);
    }
}

TEST_F(Reservation_Test, who_waits_5_s_in_vain_fails_and_names_the_other_program)
{
    Connected here;
    const auto msec = [] {
        return static_cast<unsigned int>(std::chrono::steady_clock::now().time_since_epoch() / 1ms);
    };
    // Nobody who keeps to the rules takes so long: the file is written as by somebody who does not.
    std::jthread other([&](const std::stop_token& stop) {
        const int file = ::open(lock.c_str(), O_WRONLY);
        while (!stop.stop_requested()) {
            const unsigned int holder[]{msec() + 100, 4321U << 10U};
            EXPECT_EQ(::pwrite(file, holder, sizeof holder, 8), 8);
            std::this_thread::sleep_for(20ms);
        }
        ::close(file);
    });
    std::this_thread::sleep_for(50ms);
    std::string failure;
    const auto waited = time_of([&] { failure = message_of<VELM_I2C_DEV_Exception>([&] { here.write(1); }); });
    EXPECT_THAT(waited, AllOf(Ge(4999ms), Lt(6000ms)));
    EXPECT_EQ(failure, "Cannot write 1 bytes to address 10 (0xA) on " + directory.path +
                           "/i2c-0, reserved by process 4321 (in use by another program)");
}

TEST_F(Reservation_Test, without_a_place_for_it_everybody_goes_ahead_and_is_told_once)
{
    std::filesystem::create_directory(lock);
    testing::internal::CaptureStderr();
    Connected first;
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Cannot keep other programs from using the unit at the same time: " + lock + " (Is a directory)\n");
    testing::internal::CaptureStderr();
    first.write(1);
    EXPECT_EQ(first.read(), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");

    // A file that somebody removes or cuts is made anew.
    std::filesystem::remove(lock);
    Connected second;
    std::filesystem::resize_file(lock, 0);
    second.write(2);
    std::filesystem::remove(lock);
    second.write(2);
    Connected third;
    EXPECT_GE(time_of([&] { third.write(3); }), 149ms);
}
