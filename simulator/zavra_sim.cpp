#include "bench/control_server.h"
#include "bench/duration.h"
#include "bench/journal.h"
#include "bench/run.h"
#include "bench/satellite_file.h"
#include "bench/scenario.h"
#include "bench/test_bench.h"
#include "bench/usb_adapter.h"
#include "bench/variation.h"
#include "report/report_file.h"

#ifdef ZAVRA_VIEW
#include "view/view_server.h"
#endif

#include "../common/bus_directory.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <csignal>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <vector>

using namespace zavra;
using namespace zavra::simulator;

namespace
{

/// What the command line says, or a file that it names, is not right: exit status 2.
class Usage_Error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

struct Options
{
    std::string directory = default_bus_directory();
    bool create = false;
    std::string bus = "i2c-0";
    std::vector<unsigned int> addresses{Bus_Server::default_address};
    unsigned int latency_msec = 20;
    double time_factor = 1;
    unsigned long long seed = 0;
    std::vector<std::string> faults;
    std::string scenario;
    std::string journal;
    std::string satellite;
    std::string run;
    std::string record;
    std::string record_interval = "1s";
    std::string usb_socket;
    std::string report;
    std::string vary;
    std::optional<unsigned int> view;
    std::string command_line;
};

/// What is written of the only unit's flight, where that is wanted.
struct Writers
{
    std::optional<Recorder> recorder;
    std::optional<Report_File> report;
    std::optional<Summary> summary;
#ifdef ZAVRA_VIEW
    std::optional<View_Server> view;
#endif

    /// To those that show it: a sample, or a transaction as the journal has it.
    template <class What>
    void add(const What& what)
    {
        if (report)
            report->add(what);
#ifdef ZAVRA_VIEW
        if (view)
            view->add(what);
#endif
    }
};

/// What a value of the command line makes.
template <class Make>
auto given(const Make& make)
try {
    return make();
} catch (const std::invalid_argument& error) {
    throw Usage_Error(error.what());
}

/// The directory of the bus. One that somebody named is there already, unless it is to be made; it might be a slip.
std::filesystem::path bus_directory(const Options& options, bool named)
{
    std::error_code error;
    if (options.create)
        std::filesystem::create_directories(options.directory);
    else if (!named && ::mkdir(options.directory.c_str(), 0700) != 0 && errno != EEXIST)
        throw std::filesystem::filesystem_error("cannot make the bus directory", options.directory,
                                                {errno, std::generic_category()});
    if (!std::filesystem::is_directory(options.directory, error))
        throw Usage_Error("There is no directory " + options.directory + " for the bus; --create makes it");
    return std::filesystem::canonical(options.directory);
}

/// Sets the bench up as the options say.
void prepare(Test_Bench& bench, const Options& options, Writers& writers, const Variation* variation = nullptr)
try {
    for (const std::string& fault : options.faults)
        for (const unsigned int address : options.addresses)
            bench.unit(address).faults.set_rate(parse_fault_rate(fault));
    const auto tell = [&](const Json& event, const std::string& refusal) {
        if (writers.report)
            writers.report->add(bench.time.now(), event, refusal);
    };
    if (!options.scenario.empty())
        Scenario(options.scenario).play(bench, options.addresses, tell);
    if (variation != nullptr)
        Scenario(variation->events()).play(bench, options.addresses, tell);
} catch (const std::exception& error) {
    throw Usage_Error(error.what());
}

std::optional<Variation> variation_of(const Options& options)
try {
    return options.vary.empty() ? std::nullopt : std::optional<Variation>(std::in_place, options.vary, options.seed);
} catch (const std::runtime_error& error) {
    throw Usage_Error(error.what());
}

std::optional<Satellite_Settings> satellite_of(const Options& options, Variation* variation = nullptr)
try {
    if (options.satellite.empty())
        return std::nullopt;
    checked_time_factor(options.time_factor, true);
    if (options.addresses.size() > 1 && !(options.record.empty() && options.report.empty() && !options.view))
        throw Usage_Error("A record, a report or a view is of one unit");
    const Satellite_File file{options.satellite, variation};
    for (const std::string& warning : file.warnings)
        std::cerr << "Warning: " << warning << "\n";
    return file.settings;
} catch (const std::exception& error) {
    throw Usage_Error(error.what());
}

void write_flight(Writers& writers, Test_Bench& bench, const Options& options)
{
    if (options.record.empty() && options.report.empty() && options.vary.empty() && !options.view)
        return;
    Test_Bench::Unit& unit = bench.unit(options.addresses.front());
    if (!options.record.empty())
        given([&] { writers.recorder.emplace(options.record, parse_duration(options.record_interval)); });
    if (!options.report.empty() || options.view)
        writers.report.emplace(options.report, unit, options.command_line,
                               std::vector{options.satellite, options.scenario, options.vary});
    if (!options.vary.empty())
        writers.summary.emplace(limits_of(unit));
    unit.satellite->observe([&] {
        const Sample sample = sample_of(unit);
        if (writers.recorder)
            writers.recorder->record(sample);
        if (writers.summary)
            writers.summary->add(sample);
        writers.add(sample);
    });
}

/// Without a bus, as fast as the computer can.
void run_alone(const Options& options, const sigset_t& stop_signals)
{
    const Clock::Time duration = given([&] { return parse_duration(options.run); });
    Manual_Clock clock;
    std::optional<Variation> variation = variation_of(options);
    Variation* const varied = variation ? &*variation : nullptr;
    Test_Bench bench{
        clock, {.addresses = options.addresses, .seed = options.seed, .satellite = satellite_of(options, varied)}};
    Writers writers;
    prepare(bench, options, writers, varied);
    write_flight(writers, bench, options);
    const bool finished =
        simulator::run(clock, bench, bench.unit(options.addresses.front()), duration, stop_signals, writers.recorder,
                       options.record == "-" || varied != nullptr ? std::cerr : std::cout);
    if (writers.report)
        writers.report->write();
    if (varied == nullptr)
        return;
    if (!finished)
        throw std::runtime_error("Stopped before there was a result");
    std::cout << json::shown({{"seed", options.seed},
                              {"drawn", variation->drawn()},
                              {"results", writers.summary->results()},
                              {"command_line", options.command_line}})
              << std::endl;
}

void run(const Options& options, bool directory_is_named, const sigset_t& stop_signals)
{
    if (std::set(options.addresses.begin(), options.addresses.end()).size() != options.addresses.size())
        throw Usage_Error("There can be only one unit at an address");
    if (options.bus.empty() || options.bus.find('/') != std::string::npos || options.bus.front() == '.')
        throw Usage_Error("\"" + options.bus +
                          "\" is no name of a bus; a bus is named without its directory, like i2c-0");
    const Steady_Clock clock;
    Test_Bench bench{clock,
                     {.addresses = options.addresses,
                      .seed = options.seed,
                      .time_factor = options.time_factor,
                      .unit = {.latency = Clock::Time(options.latency_msec)},
                      .satellite = satellite_of(options)}};
    Writers writers;
    prepare(bench, options, writers);
    write_flight(writers, bench, options);
    std::optional<Journal> journal;
    if (!options.journal.empty())
        journal.emplace(options.journal);
    if (journal || writers.report)
        for (const unsigned int address : options.addresses)
            bench.unit(address).faults.observe([&, address](const Transaction& transaction) {
                const Json entry = journal_entry(options.bus, address, transaction);
                if (journal)
                    journal->write(entry.dump());
                writers.add(entry);
            });

    const std::filesystem::path directory = bus_directory(options, directory_is_named);
    const Control_Server control{bench, directory / options.bus};
    const Bus_Server server{directory, options.bus, bench.devices()};
#if ZAVRA_USB_ADAPTER
    std::optional<Usb_Adapter> adapter;
    if (!options.usb_socket.empty())
        adapter.emplace(options.usb_socket, bench.devices());
#endif
#ifdef ZAVRA_VIEW
    if (options.view) {
        bench.time.run_due(); // a first moment to show
        writers.view.emplace(bench, bench.unit(options.addresses.front()), writers.report->report(), *options.view);
    }
#endif

    // Standard output is the journal's where it goes there.
    std::ostream& out = options.journal == "-" || options.record == "-" ? std::cerr : std::cout;
    for (const unsigned int address : options.addresses)
        out << "Simulated ZAVRA-100 at address " << address << " on " << server.path().string() << "\n";
#ifdef ZAVRA_VIEW
    if (writers.view)
        out << "See it in a browser: " << writers.view->address() << "\n";
#endif
    out << "Point an application at it with: export VELM_I2C_BUS_DIR=" << directory.string() << "\nStop it with Ctrl-C."
        << std::endl;
    if (options.satellite.empty()) {
        int signal = 0;
        sigwait(&stop_signals, &signal);
    } else {
        keep_time(bench, stop_signals);
    }
    if (writers.report) {
        bench.time.run_due(); // its first moment at least
        writers.report->write();
    }
}

}

int main(int argc, char** argv)
try {
    Options options;
    CLI::App app{"A simulated ZAVRA-100 on a simulated I2C bus", "zavra-sim"};
    const CLI::Option* const directory =
        app.add_option("--bus-dir", options.directory, "Directory of simulated buses (VELM_I2C_BUS_DIR)")
            ->capture_default_str();
    app.add_flag("--create", options.create, "Make the directory if it is missing");
    app.add_option("--bus", options.bus, "Name of the bus")->capture_default_str();
    app.add_option("--address", options.addresses, "I2C address of a unit; may be given again for more units")
        ->check(CLI::Range(0U, 0x7FU))
        ->capture_default_str();
    app.add_option("--latency", options.latency_msec, "Time to prepare a reply, in ms")
        ->check(CLI::Range(0U, 60'000U))
        ->capture_default_str();
    app.add_option("--time-factor", options.time_factor, "How many times as fast as the clock on the wall time runs")
        ->check([](const std::string& text) -> std::string {
            try {
                checked_time_factor(std::stod(text));
            } catch (const std::exception&) {
                return "a number from 0.001 to 1000000 is expected, not " + text;
            }
            return {};
        })
        ->capture_default_str();
    app.add_option("--fault", options.faults,
                   "KIND=PROBABILITY[:MSEC] in each transaction; may be given again. KIND is " + known_faults());
    app.add_option("--seed", options.seed, "What the faults are drawn from: the same seed gives the same faults")
        ->capture_default_str();
    app.add_option("--scenario", options.scenario, "TOML file of what happens when");
    app.add_option("--journal", options.journal, "File for a JSON line per transaction, - for standard output");
    CLI::Option* satellite =
        app.add_option("--satellite", options.satellite, "TOML file of a satellite behind the unit");
    CLI::Option* record =
        app.add_option("--record", options.record, "CSV file of what the satellite does, - for standard output");
    record->needs(satellite);
    app.add_option("--record-interval", options.record_interval, "Time between the lines of the record")
        ->needs(record)
        ->capture_default_str();
    app.add_option("--report", options.report, "HTML page of what the satellite did, written in the end")
        ->needs(satellite);
    CLI::Option* const vary =
        app.add_option("--vary", options.vary, "TOML file of what is drawn from the seed; the result is a JSON line");
    app.add_option("--run", options.run, "Let the satellite fly for a time, like 90s or 6h, without a bus")
        ->needs(satellite)
        ->excludes("--journal")
        ->excludes("--fault")
        ->excludes("--time-factor");
#if ZAVRA_USB_ADAPTER
    app.add_option("--usb-redir", options.usb_socket,
                   "Unix socket at which virtual machines have the bus behind a USB-to-I2C adapter")
        ->excludes("--run");
#endif
    vary->needs("--run");
#ifdef ZAVRA_VIEW
    app.add_option_function<unsigned int>(
           "--view", [&](unsigned int port) { options.view = port; },
           "Show the satellite in browsers of this computer, at this port")
        ->needs(satellite)
        ->excludes("--run")
        ->check(CLI::Range(0U, 65535U))
        ->expected(0, 1)
        ->default_str("8080");
#endif
    options.command_line = command_line(argc, argv);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0)
            return app.exit(error);
        throw Usage_Error(error.what());
    }

    // Blocked before the server's thread starts, so that it inherits the mask and only sigwait() takes the signals.
    sigset_t stop_signals;
    sigemptyset(&stop_signals);
    sigaddset(&stop_signals, SIGINT);
    sigaddset(&stop_signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stop_signals, nullptr);

    // A closed pipe or a file that must not grow ends the journal, not the unit.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    if (!options.run.empty())
        run_alone(options, stop_signals);
    else
        run(options, directory->count() != 0 || std::getenv("VELM_I2C_BUS_DIR") != nullptr, stop_signals);
    return 0;
} catch (const Usage_Error& error) {
    std::cerr << "zavra-sim: " << error.what() << std::endl;
    return 2;
} catch (const std::exception& error) {
    std::cerr << "zavra-sim: " << error.what() << std::endl;
    return 1;
}
