#pragma once

#include "../../catalogue/json.h"
#include "../bench/sample.h"

#include <limits>
#include <map>
#include <optional>
#include <vector>

namespace zavra::simulator
{

/// How values are spread, in bins 1 % wide, so that memory stays small. Values from 1e-9 to 1e4.
class Distribution
{
public:
    void add(double value);

    /// The value below which that part lies, from 0 to 1, to 1 %; null when there are no values.
    Json percentile(double part) const;

    /// Median, 95 and 99 %, and the greatest.
    Json to_json() const;

    bool empty() const { return count_ == 0; }

private:
    std::map<int, unsigned long long> bins_;
    unsigned long long count_ = 0;
    double greatest_ = 0;
};

/// Since when a value has been below a limit, once it has been that for a minute.
class Settling
{
public:
    static constexpr double hold_s = 60;

    /// @return whether it has settled, now or before
    bool add(double time_s, bool below);

    /// In seconds since the start; nothing when it never did.
    std::optional<double> time_s() const { return settled_ ? since_ : std::nullopt; }

private:
    std::optional<double> since_;
    bool settled_ = false;
};

/// How far actuators can go, in rad/s and A m^2: NaN where it is not known, 0 where there is none.
struct Actuator_Limits
{
    static constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

    std::array<double, max_wheels> wheel_speeds_radps{unknown, unknown, unknown, unknown, unknown, unknown};
    std::array<double, 3> dipole_moments_am2{unknown, unknown, unknown};
};

/// As the satellite and the unit's parameters have them now.
Actuator_Limits limits_of(Test_Bench::Unit& unit);

/// What came of a flight, from all of its samples.
class Summary
{
public:
    static constexpr double caught_radps = 0.017453292519943295; ///< 1 deg/s
    static constexpr double settled_rad = 0.017453292519943295;  ///< 1 deg
    static constexpr std::size_t most_visits = 200;              ///< Of modes; what comes after is not told

    explicit Summary(const Actuator_Limits& limits = {});

    void add(const Sample& sample);

    /// Times in seconds since the start, rates in rad/s, errors in rad; null for what never came or is not known:
    ///
    ///     {"duration_s", "start_rate_radps", "end_rate_radps", "greatest_rate_radps", "caught_s", "shadow_part",
    ///      "estimation_error_rad": {"median", "p95", "p99", "max"}, "pointing_error_rad": the same,
    ///      "settled_s": after the beginning of the last mode that points,
    ///      "visits": [{"mode", "name", "from_s", "until_s", "settled_s", "pointing_error_rad",
    ///      "estimation_error_rad"}], "wheels": [{"name", "peak", "limit", "saturated_s"}], "magnetorquers": the same}
    ///
    /// A visit is a stay in a mode; its errors are those since it has settled, and where it has not, of all of it.
    Json to_json() const;

    /// The numbers of it that runs are compared by; null for what never came:
    ///
    ///     {"caught_s", "settled_s", "end_rate_radps", "greatest_rate_radps", "pointing_error_rad": 95 % in the last
    ///     mode
    ///      that points, "estimation_error_rad": 95 %, "greatest_wheel_speed_radps", "wheel_saturated_s": the worst
    ///      one}
    Json results() const;

private:
    struct Visit
    {
        unsigned int mode;
        double from_s;
        double until_s;
        Settling settling{};
        Distribution pointing_error{}, pointing_error_settled{}, estimation_error{};

        Json to_json() const;
    };

    struct Actuator
    {
        std::size_t column;
        const char* name;
        double limit; ///< NaN where it is not known
        double peak = 0;
        double saturated_s = 0;
    };

    static Json to_json(const std::vector<Actuator>& actuators);
    void add_to_visit(const Sample& sample);

    std::optional<Sample> first_, last_;
    Settling catching_;
    double greatest_rate_ = 0;
    double shadow_s_ = 0;
    Distribution pointing_error_, estimation_error_;
    std::vector<Visit> visits_;
    std::vector<Actuator> wheels_, magnetorquers_;
};

/// The angle between what the unit believes its attitude to be and the truth, in rad; NaN while it believes nothing.
double estimation_error_rad(const Sample& sample);

}
