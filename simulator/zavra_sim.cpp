#include "journal.h"
#include "scenario.h"
#include "test_bench.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

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
    std::vector<unsigned int> addresses{Bus_Server::default_address};
    unsigned int latency_msec = 20;
    double time_factor = 1;
    unsigned long long seed = 0;
    std::vector<std::string> faults;
    std::string scenario;
    std::string journal;
};

void run(const Options& options, const sigset_t& stop_signals)
{
    if (std::set(options.addresses.begin(), options.addresses.end()).size() != options.addresses.size())
        throw std::invalid_argument("There can be only one unit at an address");
    const Steady_Clock clock;
    Test_Bench bench{clock,
                     {.addresses = options.addresses,
                      .seed = options.seed,
                      .time_factor = options.time_factor,
                      .unit = {.latency = Clock::Time(options.latency_msec)}}};
    for (const std::string& fault : options.faults)
        for (const unsigned int address : options.addresses)
            bench.unit(address).faults.set_rate(parse_fault_rate(fault));
    if (!options.scenario.empty())
        Scenario(options.scenario).play(bench, options.addresses);
    std::optional<Journal> journal;
    if (!options.journal.empty()) {
        journal.emplace(options.journal);
        for (const unsigned int address : options.addresses)
            bench.unit(address).faults.observe([&journal, &options, address](const Transaction& transaction) {
                journal->write(journal_line(options.bus, address, transaction));
            });
    }

    std::filesystem::create_directories(options.directory);
    const std::filesystem::path directory = std::filesystem::canonical(options.directory);
    const Bus_Server server{directory, options.bus, bench.devices()};

    // Standard output is the journal's where it goes there.
    std::ostream& out = options.journal == "-" ? std::cerr : std::cout;
    for (const unsigned int address : options.addresses)
        out << "Simulated ZAVRA-100 at address " << address << " on " << server.path().string() << "\n";
    out << "Point an application at it with: export VELM_I2C_BUS_DIR=" << directory.string() << "\nStop it with Ctrl-C."
        << std::endl;
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
    app.add_option("--address", options.addresses, "I2C address of a unit; may be given again for more units")
        ->check(CLI::Range(0U, 0x7FU))
        ->capture_default_str();
    app.add_option("--latency", options.latency_msec, "Time to prepare a reply, in ms")
        ->check(CLI::Range(0U, 60'000U))
        ->capture_default_str();
    app.add_option("--time-factor", options.time_factor, "How many times as fast as the clock on the wall time runs")
        ->check(CLI::Range(0.001, 1e6))
        ->capture_default_str();
    app.add_option("--fault", options.faults,
                   "KIND=PROBABILITY[:MSEC] in each transaction; may be given again. KIND is " + known_faults());
    app.add_option("--seed", options.seed, "What the faults are drawn from: the same seed gives the same faults")
        ->capture_default_str();
    app.add_option("--scenario", options.scenario, "TOML file of what happens when");
    app.add_option("--journal", options.journal, "File for a JSON line per transaction, - for standard output");
    CLI11_PARSE(app, argc, argv);

    // Blocked before the server's thread starts, so that it inherits the mask and only sigwait() takes the signals.
    sigset_t stop_signals;
    sigemptyset(&stop_signals);
    sigaddset(&stop_signals, SIGINT);
    sigaddset(&stop_signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stop_signals, nullptr);

    std::signal(SIGPIPE, SIG_IGN); // a closed pipe ends the journal, not the unit
    run(options, stop_signals);
    return 0;
} catch (const std::exception& error) {
    std::cerr << "zavra-sim: " << error.what() << std::endl;
    return 1;
}
