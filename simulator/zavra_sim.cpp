#include "bus_server.h"
#include "simulated_unit.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <unistd.h>

using namespace zavra;

namespace
{

/// Where applications look already, or else a directory of the user's own.
std::string default_bus_directory()
{
    if (const char* directory = std::getenv("VELM_I2C_BUS_DIR"))
        return directory;
    if (const char* directory = std::getenv("XDG_RUNTIME_DIR"))
        return std::string(directory) + "/zavra";
    return "/tmp/zavra-" + std::to_string(::getuid());
}

struct Options
{
    std::string directory = default_bus_directory();
    std::string bus = "i2c-0";
    unsigned int address = 10;
    unsigned int latency_msec = 20;
};

void run(const Options& options, const sigset_t& stop_signals)
{
    std::filesystem::create_directories(options.directory);
    const std::filesystem::path directory = std::filesystem::canonical(options.directory);

    Canned_World world;
    Steady_Clock clock;
    Simulated_Unit unit{world, clock, {.latency = Clock::Time(options.latency_msec)}};
    Bus_Server server{directory, options.bus, {{options.address, &unit}}};

    std::cout << "Simulated ZAVRA-100 at address " << options.address << " on " << server.path().string()
              << "\nPoint an application at it with: export VELM_I2C_BUS_DIR=" << directory.string()
              << "\nStop it with Ctrl-C." << std::endl;
    int signal = 0;
    sigwait(&stop_signals, &signal);
}

}

int main(int argc, char** argv)
try {
    Options options;
    CLI::App app{"A simulated ZAVRA-100 on a simulated I2C bus", "zavra-sim"};
    app.add_option("--bus-dir", options.directory, "Directory of simulated buses (VELM_I2C_BUS_DIR)")
        ->capture_default_str();
    app.add_option("--bus", options.bus, "Name of the bus")->capture_default_str();
    app.add_option("--address", options.address, "I2C address of the unit")
        ->check(CLI::Range(0U, 0x7FU))
        ->capture_default_str();
    app.add_option("--latency", options.latency_msec, "Time to prepare a reply, in ms")
        ->check(CLI::Range(0U, 60'000U))
        ->capture_default_str();
    CLI11_PARSE(app, argc, argv);

    // Blocked before the server's thread starts, so that it inherits the mask and only sigwait() takes the signals.
    sigset_t stop_signals;
    sigemptyset(&stop_signals);
    sigaddset(&stop_signals, SIGINT);
    sigaddset(&stop_signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stop_signals, nullptr);

    run(options, stop_signals);
    return 0;
} catch (const std::exception& error) {
    std::cerr << "zavra-sim: " << error.what() << std::endl;
    return 1;
}
