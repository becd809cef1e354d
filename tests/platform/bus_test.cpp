#include "tests/support/interval_timer.h"
#include "tests/support/temporary_directory.h"

#include <VELM_I2C_DEV.h>

#include <cstdarg>
#include <system_error>
#include <tuple>

#include <linux/i2c-dev.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

static unsigned long chosen_slave;

// Stands before the system's: lets the null device and its like pass for I2C buses.
extern "C" int ioctl(int, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    chosen_slave = va_arg(arguments, unsigned long);
    va_end(arguments);
    errno = ENOTTY;
    return request == I2C_SLAVE && chosen_slave != 0x7F ? 0 : -1;
}

using namespace zavra::test;

using namespace std::chrono_literals;

struct Answer
{
    Octets reply; // none: the connection is closed instead
    std::chrono::milliseconds delay = 0ms;
};

/// A simulated bus that answers the requests of one client after the other as the script says.
struct Scripted_Bus
{
    std::vector<Octets> requests; // to be read after finish()

    Scripted_Bus(const std::string& path, std::vector<Answer> script) : script_(std::move(script))
    {
        sockaddr_un name = {AF_UNIX, {}};
        path.copy(name.sun_path, sizeof(name.sun_path) - 1);
        ::unlink(path.c_str());
        EXPECT_EQ(::bind(listener_, reinterpret_cast<sockaddr*>(&name), sizeof(name)), 0);
        EXPECT_EQ(::listen(listener_, 5), 0);
        thread_ = std::jthread([this] { serve(); });
    }
    ~Scripted_Bus()
    {
        finish();
        ::close(listener_);
    }

    /// Waits until every client is gone.
    void finish()
    {
        ::shutdown(listener_, SHUT_RDWR);
        thread_ = {};
    }

    std::vector<Answer> script_;
    int listener_ = ::socket(AF_UNIX, SOCK_SEQPACKET, 0);
    std::jthread thread_;

    void serve()
    {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
        auto answer = script_.begin();
        for (int client; (client = ::accept(listener_, nullptr, nullptr)) >= 0; ::close(client)) {
            unsigned char request[64];
            ssize_t size;
            while (answer != script_.end() && (size = ::recv(client, request, sizeof(request), 0)) > 0) {
                requests.emplace_back(request, request + size);
                const auto& [reply, delay] = *answer++;
                std::this_thread::sleep_for(delay);
                if (reply.empty())
                    ::shutdown(client, SHUT_RDWR);
                ::send(client, reply.data(), reply.size(), MSG_NOSIGNAL);
            }
        }
    }
};

struct Bus : testing::Test
{
    Bus() { ::setenv("VELM_I2C_BUS_DIR", directory.path.c_str(), 1); }
    ~Bus() override { ::unsetenv("VELM_I2C_BUS_DIR"); }

    template <class Action>
    std::string failure(Action action)
    {
        error_number = 0;
        return message_of<VELM_I2C_DEV_Exception>([&] {
            try {
                action();
            } catch (const VELM_I2C_DEV_Exception& error) {
                find_error_number(error);
                throw;
            }
        });
    }
    /// The code in the innermost exception.
    void find_error_number(const std::exception& error)
    {
        if (const auto* system = dynamic_cast<const std::system_error*>(&error))
            error_number = system->code().value();
        try {
            std::rethrow_if_nested(error);
        } catch (const std::exception& inner) {
            find_error_number(inner);
        }
    }
    std::string write(Octets bytes)
    {
        return failure([&] { device.I2CWriteByteArray(bytes.data(), static_cast<int>(bytes.size())); });
    }
    std::string read(int length)
    {
        received.assign(static_cast<std::size_t>(length), 0xEE);
        return failure([&] { device.I2CReadByteArray(received.data(), length); });
    }
    std::string connect(unsigned int address, const std::string& name)
    {
        return failure([&] { device.Connect(address, name); });
    }

    const std::string fine = "nothing was thrown";
    Temporary_Directory directory;
    std::string path = directory.path + "/i2c-0";
    VELM_I2C_DEV device;
    Octets received;
    int error_number = 0;
};

TEST_F(Bus, Carries_Transactions_To_A_Simulated_Unit)
{
    Scripted_Bus bus(path, {{{0}}, {Octets(301)}});
    testing::internal::CaptureStdout();
    device.PrintInfo();
    device.SetDeviceDescription("Fine ADCS module");
    device.Connect(0x28, "i2c-0");
    device.PrintInfo();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Bus:         not connected\nAddress:     none\nDescription: \nBus:         " + path +
                  "\nAddress:     40 (0x28)\nDescription: Fine ADCS module\n");
    EXPECT_EQ(write({0x01, 0x02}), fine);
    EXPECT_EQ(read(300), fine);
    EXPECT_EQ(received, Octets(300));
    device.Disconnect();
    bus.finish();
    EXPECT_THAT(bus.requests, ElementsAre(Octets{0x50, 0x01, 0x02}, Octets{0x51, 0x01, 0x2C}));
}

TEST_F(Bus, Reports_What_A_Simulated_Unit_Answers_And_Goes_On)
{
    const std::tuple<Octets, std::string, int> cases[] = {
        {{ENXIO}, "(not acknowledged: No such device or address)", ENXIO},
        {{EREMOTEIO}, "(not acknowledged: Remote I/O error)", EREMOTEIO},
        {{EIO, 1, 2}, "(Input/output error)", EIO},
        {{0, 1}, "(the simulated bus answered with 1 data bytes instead of 2)", 0},
        {{0, 1, 2, 3}, "(the simulated bus answered with 3 data bytes instead of 2)", 0},
        {{}, "(the simulated bus has gone away)", 0},
    };
    for (const auto& [reply, reason, code] : cases) {
        SCOPED_TRACE(reason);
        Scripted_Bus bus(path, {{reply}, {{0, 7, 8}}});
        device.Connect(0x28, "i2c-0");
        EXPECT_EQ(read(2), "Cannot read 2 bytes from address 40 (0x28) on " + path + " " + reason);
        EXPECT_EQ(error_number, code);
        EXPECT_EQ(read(2), fine);
        EXPECT_THAT(received, ElementsAre(7, 8));
        device.Disconnect();
    }
}

TEST_F(Bus, Times_Out_Despite_Signals_And_Drops_The_Late_Answer)
{
    const Interval_Timer timer;

    Scripted_Bus bus(path, {{{0, 0x11}, 100ms}, {{0, 0x22}, 2100ms}, {{0, 0x33}}});
    device.Connect(0x28, "i2c-0");
    EXPECT_EQ(read(1), fine);
    EXPECT_THAT(received, ElementsAre(0x11));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(read(1), HasSubstr("(the simulated bus does not answer)"));
    EXPECT_EQ(error_number, ETIMEDOUT);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 2000ms);
    EXPECT_EQ(read(1), fine);
    EXPECT_THAT(received, ElementsAre(0x33));
    device.Disconnect();
}

TEST_F(Bus, Uses_Character_Devices_As_The_Kernels_Buses)
{
    const std::array<std::string, 3> cases[] = {
        {"/dev/null", "nothing was thrown", "(only 0 bytes were transferred)"},
        {"/dev/full", "(No space left on device)", "nothing was thrown"},
    };
    for (const auto& [target, write_failure, read_failure] : cases) {
        SCOPED_TRACE(target);
        std::filesystem::remove(path);
        std::filesystem::create_symlink(target, path);
        device.Connect(0x28, "i2c-0");
        EXPECT_EQ(chosen_slave, 0x28u);
        EXPECT_THAT(write({1, 2, 3}), HasSubstr(write_failure));
        EXPECT_THAT(read(3), HasSubstr(read_failure));
        device.Disconnect();
    }
    EXPECT_THAT(connect(0x7F, "i2c-0"), HasSubstr("(Inappropriate ioctl for device)"));
    EXPECT_EQ(error_number, ENOTTY);
}

TEST_F(Bus, Reserves_A_Kernels_Bus_Whatever_It_Is_Called)
{
    std::filesystem::create_symlink("/dev/null", path);
    std::filesystem::create_symlink("/dev/null", directory.path + "/i2c-1");
    VELM_I2C_DEV other;
    other.Connect(0x28, "i2c-0");
    device.Connect(0x28, "i2c-1");
    Octets byte{1};
    other.I2CWriteByteArray(byte.data(), 1);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(write({1}), fine);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 100ms);
}

TEST_F(Bus, Gives_A_Transfer_Up_That_Signals_Interrupt_Again_And_Again)
{
    std::filesystem::create_symlink("/dev/ptmx", path); // a terminal at which nobody sits
    device.Connect(0x28, "i2c-0");
    const Interval_Timer timer;
    const int before = timer.count;
    EXPECT_THAT(read(3), HasSubstr("(Interrupted system call)"));
    EXPECT_GE(timer.count - before, 10) << "it is not given up at the first";
    device.Disconnect();
}

TEST_F(Bus, Refuses_What_Cannot_Be_Connected)
{
    directory.file("plain", "");
    const std::tuple<unsigned int, std::string, std::string> cases[] = {
        {0x80, "i2c-0", "(an address has 7 bits)"},
        {0x28, "missing", "/missing (No such file or directory): zavra-sim"},
        {0x28, "plain", "/plain (not an I2C bus)"},
        {0x28, "", "(a bus is named without its directory"},
        {0x28, "/dev/i2c-0", "(a bus is named without"},
        {0x28, std::string(150, 'x'), "(File name too long)"},
    };
    Scripted_Bus bus(path, {});
    std::filesystem::create_symlink(path, directory.path + "/" + std::string(150, 'x'));
    for (const auto& [address, name, reason] : cases) {
        SCOPED_TRACE(name);
        EXPECT_THAT(connect(address, name), AllOf(HasSubstr("Cannot connect to address"), HasSubstr(reason)));
        EXPECT_EQ(write({1}), "Cannot write 1 bytes (not connected)");
    }
    EXPECT_EQ(failure([&] { device.Disconnect(); }), "Cannot disconnect (not connected)");
    ::unsetenv("VELM_I2C_BUS_DIR");
    EXPECT_THAT(connect(0x28, "i2c-none"),
                HasSubstr("/dev/i2c-none (No such file or directory): buses are there when"));
    ::setenv("VELM_I2C_BUS_DIR", directory.path.c_str(), 1);

    device.Connect(0x7F, "i2c-0");
    EXPECT_THAT(connect(0x28, "i2c-0"), HasSubstr("(already connected to address 127 (0x7F) on " + path + ")"));
    unsigned char byte = 0;
    EXPECT_THAT(failure([&] { device.I2CReadByteArray(&byte, -1); }), HasSubstr("(length exceeds limits)"));
    EXPECT_THAT(failure([&] { device.I2CWriteByteArray(nullptr, 1); }), HasSubstr("(data is null)"));
    device.Disconnect();
}
