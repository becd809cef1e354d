#pragma once

#include <Eigen/Core>

#include <cmath>
#include <random>
#include <utility>

namespace zavra::simulator
{

/// A stream of normally distributed numbers (mean 0, standard deviation 1). Streams of different numbers are
/// independent; the same seed and stream give the same numbers everywhere, which the standard library's distributions
/// do not.
class Random
{
public:
    Random(unsigned long long seed, unsigned long long stream) : bits_(mixed(mixed(seed) + stream)) {}

    /// Uniform in [0, 1).
    double uniform() { return static_cast<double>(bits_() >> 11U) * 0x1p-53; }

    /// Marsaglia's polar method.
    double normal()
    {
        if (std::exchange(spare_is_good_, false))
            return spare_;
        double u = 0;
        double v = 0;
        double s = 0;
        do {
            u = 2 * uniform() - 1;
            v = 2 * uniform() - 1;
            s = u * u + v * v;
        } while (s >= 1 || s == 0);
        const double factor = std::sqrt(-2 * std::log(s) / s);
        spare_ = v * factor;
        spare_is_good_ = true;
        return u * factor;
    }

    Eigen::Vector3d normal_vector()
    {
        const double x = normal();
        const double y = normal();
        return {x, y, normal()};
    }

private:
    /// The output function of SplitMix64: neighbouring seeds give unrelated generators.
    static unsigned long long mixed(unsigned long long x)
    {
        x += 0x9E3779B97F4A7C15U;
        x = (x ^ x >> 30U) * 0xBF58476D1CE4E5B9U;
        x = (x ^ x >> 27U) * 0x94D049BB133111EBU;
        return x ^ x >> 31U;
    }

    std::mt19937_64 bits_;
    double spare_ = 0;
    bool spare_is_good_ = false;
};

}
