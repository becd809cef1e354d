// How well the simulated unit's software knows the attitude of the satellites of the examples: the table of
// docs/satellite.md. `zavra_attitude_knowledge [SEEDS]`, from the top of the source tree.

#include "tests/simulator/onboard/attitude_knowledge.h"
#include "simulator/bench/satellite_file.h"

#include <cstdio>
#include <cstdlib>

namespace
{

using namespace zavra::simulator;
using namespace zavra::test;

/// 1 sigma of all seeds together, and of the worst of them.
struct Column
{
    Error_Statistics all;
    double worst_sigma = 0;

    void add(const Error_Statistics& one)
    {
        if (one.number == 0)
            return;
        all.squares += one.squares;
        all.number += one.number;
        worst_sigma = std::max(worst_sigma, one.sigma());
    }

    void print() const
    {
        constexpr double degrees = 180 / 3.14159265358979;
        if (all.number == 0)
            std::printf(" - |");
        else
            std::printf(" %.2g (%.2g) |", all.sigma() * degrees, worst_sigma * degrees);
    }
};

void print_row(const char* satellite, Observed_Satellite::Motion motion, Determination_Method method, int seeds)
{
    auto settings = Satellite_File(std::string("examples/satellites/") + satellite + ".toml").settings;
    Column light, eclipse, star_tracker;
    for (int seed = 1; seed <= seeds; ++seed) {
        const auto knowledge = attitude_knowledge(settings, motion, method, static_cast<unsigned long long>(seed));
        light.add(knowledge.light);
        eclipse.add(knowledge.eclipse);
        star_tracker.add(knowledge.star_tracker);
    }
    constexpr const char* motions[] = {"tumbling, no control", "nadir", "inertial"};
    constexpr const char* methods[] = {"0, filter", "1, filter without star tracker", "2, TRIAD", "3, star tracker"};
    std::printf("| %s | %s | %s |", satellite, motions[static_cast<int>(motion)], methods[static_cast<int>(method)]);
    light.print();
    eclipse.print();
    star_tracker.print();
    std::printf("\n");
    std::fflush(stdout);
}

}

int main(int argc, char** argv)
{
    using Motion = Observed_Satellite::Motion;
    using Method = Determination_Method;
    const int seeds = argc > 1 ? std::atoi(argv[1]) : 20;
    std::printf("| Satellite | Motion | Method | Light | Eclipse | Star tracker |\n"
                "|---|---|---|---|---|---|\n");
    for (const char* satellite : {"1u", "3u", "12u"}) {
        for (const Motion motion : {Motion::nadir, Motion::inertial, Motion::free})
            print_row(satellite, motion, Method::filter_without_star_tracker, seeds);
        if (satellite != std::string_view("1u"))
            print_row(satellite, Motion::nadir, Method::filter, seeds);
    }
    print_row("3u", Motion::nadir, Method::triad, seeds);
    print_row("3u", Motion::nadir, Method::star_tracker, seeds);
}
