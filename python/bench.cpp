#include "module.h"
#include "waits.h"

#include "../common/temporary_directory.h"
#include "../simulator/bench/control_server.h"
#include "../simulator/bench/duration.h"
#include "../simulator/bench/event.h"
#include "../simulator/bench/journal.h"
#include "../simulator/bench/recorder.h"
#include "../simulator/bench/satellite_file.h"
#include "../simulator/bench/scenario.h"
#include "../simulator/bench/test_bench.h"

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <algorithm>
#include <charconv>
#include <deque>
#include <fstream>
#include <limits>
#include <mutex>
#include <optional>
#include <sstream>

namespace py = pybind11;

namespace zavra::python
{

namespace
{

using namespace simulator;

Clock::Time from_seconds(double seconds)
{
    return simulator::seconds_of(Json(seconds), "time");
}

/// The bench's clock: it stands still but where a unit's driver waits, or somebody lets time pass.
class Bench_Time final : public Simulated_Time, public Manual_Clock
{
public:
    void pass(std::chrono::microseconds time) override { advance(std::chrono::ceil<Clock::Time>(time)); }
};

/// The lines of a record as columns of numbers.
std::pair<std::vector<std::string>, std::vector<double>> columns_of(std::istream& lines)
{
    std::vector<std::string> names;
    std::string line;
    std::getline(lines, line);
    std::istringstream head(line);
    for (std::string name; std::getline(head, name, ',');)
        names.push_back(name);
    std::vector<double> values;
    while (std::getline(lines, line)) {
        const char* next = line.data();
        const char* const end = next + line.size();
        for (std::size_t column = 0; column < names.size(); ++column) {
            double value = std::numeric_limits<double>::quiet_NaN(); // of what is left empty
            next = std::from_chars(next, end, value).ptr;
            next = std::find(next, end, ',');
            next += next != end ? 1 : 0;
            values.push_back(value);
        }
    }
    return {std::move(names), std::move(values)};
}

/// Units on a bus of this process.
class Bench
{
public:
    Bench(const std::vector<unsigned int>& addresses, const std::optional<std::filesystem::path>& satellite,
          unsigned long long seed, const std::string& bus)
        : bus_(bus),
          addresses_(addresses),
          bench_(*time_, options(addresses, satellite, seed)),
          server_(directory_.path(), bus, bench_.devices())
    {
        Simulated_Time::add_bus(server_.path(), time_);
        for (const unsigned int address : addresses) {
            Test_Bench::Unit& unit = bench_.unit(address);
            unit.faults.observe([this, address](const Transaction& transaction) {
                const std::lock_guard guard(journal_mutex_);
                journal_.emplace_back(address, transaction);
                if (journal_.size() > max_journal)
                    journal_.pop_front();
            });
            if (unit.satellite)
                unit.satellite->observe([this, &unit] { record(unit); });
        }
    }

    const std::filesystem::path& directory() const { return directory_.path(); }
    double time() const { return static_cast<double>(bench_.time.now().count()) / 1000; }

    /// Lets time pass in stretches, so that Ctrl-C is heard.
    void advance(double seconds)
    {
        constexpr Clock::Time stretch{10'000};
        Clock::Time left = from_seconds(seconds);
        while (left > Clock::Time(0)) {
            const Clock::Time next = std::min(stretch, left);
            {
                const py::gil_scoped_release released;
                time_->advance(next);
                bench_.time.run_due();
            }
            left -= next;
            for (const unsigned int address : addresses_)
                expect_orbit(bench_.unit(address));
            if (PyErr_CheckSignals() != 0)
                throw py::error_already_set();
        }
    }

    /// One like those of scenarios.
    void happen(const std::string& event, unsigned int address)
    {
        const Event what(Json::parse(event));
        Test_Bench::Unit& unit = bench_.unit(what.address.value_or(address));
        const py::gil_scoped_release released;
        if (what.time == Clock::Time(0))
            what.happen(unit);
        else
            bench_.time.at(what.time, [what, &unit] { what.happen(unit); });
    }

    void play(const std::filesystem::path& scenario) { Scenario(scenario).play(bench_, addresses_); }

    std::string state() { return Control_Server::answer(bench_, "{}").dump(); }

    void clear_faults(unsigned int address) { bench_.unit(address).faults.clear(); }

    /// What has not been taken yet, as a journal's lines.
    std::vector<std::string> take_journal()
    {
        std::deque<std::pair<unsigned int, Transaction>> taken;
        {
            const std::lock_guard guard(journal_mutex_);
            taken.swap(journal_);
        }
        std::vector<std::string> lines;
        for (const auto& [address, transaction] : taken)
            lines.push_back(journal_line(bus_, address, transaction));
        return lines;
    }

    /// Records what a satellite does from now on.
    void start_record(double interval, unsigned int address)
    {
        if (recording_)
            throw py::value_error("one recording at a time");
        Test_Bench::Unit& unit = bench_.unit(address);
        if (!unit.satellite)
            throw py::value_error("only a satellite can be recorded");
        const std::lock_guard guard(recording_mutex_);
        recording_.emplace(record_file(), from_seconds(interval));
        recorded_ = &unit;
    }

    /// The names of its columns and, line by line, their values.
    py::tuple stop_record(bool now)
    {
        if (!recording_)
            throw py::value_error("nothing is recorded");
        {
            const std::lock_guard guard(recording_mutex_);
            if (now)
                recording_->record(sample_of(*recorded_));
            recording_.reset();
        }
        std::ifstream lines(record_file());
        const auto [names, values] = columns_of(lines);
        return py::make_tuple(names,
                              py::bytes(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(double)));
    }

private:
    /// In each control tick, which is a bus server's thread's or ours.
    void record(const Test_Bench::Unit& unit)
    {
        const std::lock_guard guard(recording_mutex_);
        if (recording_ && recorded_ == &unit)
            recording_->record(sample_of(unit));
    }

    std::filesystem::path record_file() const { return directory() / "record.csv"; }

    static void expect_orbit(const Test_Bench::Unit& unit)
    {
        if (unit.satellite && unit.satellite->satellite.orbit_error() != Tle_Error::none)
            throw std::runtime_error(std::string("The orbit ends here: ") +
                                     simulator::to_string(unit.satellite->satellite.orbit_error()));
    }

    static Test_Bench::Options options(const std::vector<unsigned int>& addresses,
                                       const std::optional<std::filesystem::path>& satellite, unsigned long long seed)
    {
        Test_Bench::Options options{.addresses = addresses, .seed = seed, .unit = {.latency = Clock::Time(0)}};
        if (satellite)
            options.satellite = Satellite_File(*satellite).settings;
        return options;
    }

    static constexpr std::size_t max_journal = 100'000; // transactions that nobody has taken

    const std::string bus_;
    const std::vector<unsigned int> addresses_;
    const Temporary_Directory directory_{"velm_zavra"};
    const std::shared_ptr<Bench_Time> time_ = std::make_shared<Bench_Time>();
    std::mutex journal_mutex_;
    std::deque<std::pair<unsigned int, Transaction>> journal_;
    std::mutex recording_mutex_;
    std::optional<Recorder> recording_;
    const Test_Bench::Unit* recorded_ = nullptr;
    Test_Bench bench_;
    Bus_Server server_; // the first to go: its thread uses all the rest
};

}

void add_bench(py::module_& module)
{
    py::class_<Bench>(module, "Bench")
        .def(py::init<const std::vector<unsigned int>&, const std::optional<std::filesystem::path>&, unsigned long long,
                      const std::string&>())
        .def_property_readonly("directory", &Bench::directory)
        .def_property_readonly("time", &Bench::time)
        .def("advance", &Bench::advance)
        .def("happen", &Bench::happen)
        .def("play", &Bench::play)
        .def("state", &Bench::state)
        .def("clear_faults", &Bench::clear_faults)
        .def("take_journal", &Bench::take_journal)
        .def("start_record", &Bench::start_record)
        .def("stop_record", &Bench::stop_record);
    module.def("parse_duration",
               [](const std::string& text) { return static_cast<double>(parse_duration(text).count()) / 1000; });
}

}
