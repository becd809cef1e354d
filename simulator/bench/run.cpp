#include "run.h"

#include "duration.h"

#include <cstdio>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

namespace zavra::simulator
{

namespace
{

using Steady = std::chrono::steady_clock;

/// Waits for one of the signals, for a time that may be 0.
bool stopped(const sigset_t& signals, std::chrono::milliseconds wait)
{
    const timespec time{static_cast<std::time_t>(wait.count() / 1000),
                        static_cast<long>(wait.count() % 1000 * 1'000'000)};
    return ::sigtimedwait(&signals, nullptr, &time) > 0;
}

/// A line on a terminal that says how far something is.
class Progress_Bar
{
public:
    ~Progress_Bar()
    {
        if (shown_)
            std::cerr << "\r\033[K" << std::flush;
    }

    void show(double part)
    {
        constexpr int width = 50;
        if (!terminal_ || Steady::now() < next_)
            return;
        next_ = Steady::now() + std::chrono::milliseconds(100);
        const int full = static_cast<int>(part * width);
        const double seconds = std::chrono::duration<double>(Steady::now() - start_).count();
        std::ostringstream line;
        line << "\r[" << std::string(static_cast<std::size_t>(full), '=')
             << std::string(static_cast<std::size_t>(width - full), ' ') << "] " << static_cast<int>(100 * part)
             << " %, " << std::fixed << std::setprecision(0) << seconds / part - seconds << " s to go\033[K";
        std::cerr << line.str() << std::flush;
        shown_ = true;
    }

private:
    const bool terminal_ = ::isatty(STDERR_FILENO) == 1;
    const Steady::time_point start_ = Steady::now();
    Steady::time_point next_ = start_ + std::chrono::milliseconds(200);
    bool shown_ = false;
};

}

bool run(Manual_Clock& clock, Test_Bench& bench, const Test_Bench::Unit& unit, Clock::Time duration,
         const sigset_t& stop_signals, std::optional<Recorder>& recorder, std::ostream& summary)
{
    constexpr Clock::Time stretch{10'000};
    const auto start = Steady::now();
    const Satellite& satellite = unit.satellite->satellite;
    Clock::Time done{0};
    bool stop = false;
    {
        Progress_Bar bar;
        bench.time.run_due();
        while (done < duration && satellite.orbit_error() == Tle_Error::none &&
               !(stop = stopped(stop_signals, Clock::Time(0)))) {
            const Clock::Time next = std::min(stretch, duration - done);
            clock.advance(next);
            done += next;
            bench.time.run_due();
            bar.show(static_cast<double>(done.count()) / static_cast<double>(duration.count()));
        }
    }
    const double wall = std::chrono::duration<double>(Steady::now() - start).count();
    std::ostringstream text;
    text << std::setprecision(3) << (stop ? "Stopped after " : "Simulated ") << to_string(done) << " in " << wall
         << " s, " << std::round(static_cast<double>(done.count()) / 1000 / wall) << " times as fast as real time.\n";
    const auto& rate = satellite.angular_velocity_radps();
    text << "The satellite turns with " << rate.norm() << " rad/s in the end.\n";
    if (recorder) {
        recorder->flush();
        text << recorder->lines() << " lines recorded" << (recorder->ended() ? ", not all of them written" : "")
             << ".\n";
    }
    summary << text.str() << std::flush;
    if (satellite.orbit_error() != Tle_Error::none)
        throw std::runtime_error(std::string("The orbit ends here: ") + simulator::to_string(satellite.orbit_error()));
    return !stop;
}

void keep_time(Test_Bench& bench, const sigset_t& stop_signals)
{
    constexpr std::chrono::milliseconds nap{10}; // so that no transaction waits for a backlog of control ticks
    while (!stopped(stop_signals, nap))
        bench.time.run_due();
}

}
