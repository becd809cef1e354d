// How good the unit's own software is: the accuracy table of docs/satellite.md, measured with twenty seeds.
// Usage: mission_table [SEEDS]

#include "tests/simulator/onboard/rehearsal.h"

#include <cstdio>
#include <cstdlib>

namespace
{

using namespace zavra::test;

unsigned long long seeds = 20;

/// A line with the smallest, the middle and the largest number of all seeds.
template <class Measure>
void measure(const char* what, const char* unit, const Measure& measured)
{
    std::vector<double> numbers;
    for (unsigned long long seed = 1; seed <= seeds; ++seed)
        numbers.push_back(measured(seed));
    std::ranges::sort(numbers);
    std::printf("| %s | %.3g | %.3g | %.3g %s |\n", what, numbers.front(), numbers[numbers.size() / 2], numbers.back(),
                unit);
    std::fflush(stdout);
}

}

int main(int argc, char** argv)
{
    if (argc > 1)
        seeds = std::max(std::strtoull(argv[1], nullptr, 10), 1ULL);
    std::puts("| case | best | median | worst |\n|------|------|--------|-------|");
    for (const char* name : {"1u", "3u", "12u"})
        measure((std::string(name) + ", 10 deg/s about each axis, after two orbits").c_str(), "deg/s",
                [&](auto seed) { return detumbled_dps(name, seed); });
    measure("sun pointing with +x, after three orbits", "deg", [](auto seed) { return from_sun_deg(seed); });
    measure("sun pointing with -x", "deg", [](auto seed) { return from_sun_deg(seed, {-1, 0, 0}); });
    measure("sun pointing with +z, the axis of the smallest moment", "deg", [](auto seed) {
        return from_sun_deg(seed, {0, 0, 1});
    });
    measure("nadir with star tracker, 95 % of an orbit", "deg",
            [](auto seed) { return nadir(seed, true, 1200, orbit_s).percentile_95_deg; });
    measure("nadir without star tracker, 95 % of an orbit", "deg",
            [](auto seed) { return nadir(seed, false, 1200, orbit_s).percentile_95_deg; });
    measure("pass over a ground station, largest error above 10 degrees", "deg",
            [](auto seed) { return pass_over_station_deg(seed); });
    measure("slew of 90 degrees, within 1 degree from", "s",
            [](auto seed) { return static_cast<double>(slew_s(seed)); });
    measure("a day of nadir, residual dipole of 0.005 A m^2, fastest wheel", "% of its maximum", [](auto seed) {
        return 100 * nadir(seed, true, 1200, 86400, {0.002, -0.001, 0.00447}).wheel_use;
    });
}
