#include "summary.h"

#include <cmath>

namespace zavra::simulator
{

namespace
{

constexpr double bins_per_e = 100;

Json json_of(std::optional<double> value)
{
    return value ? Json(*value) : Json();
}

double rate(const Sample& sample)
{
    return vector_of(sample, column("angular_velocity_x_radps")).norm();
}

}

void Distribution::add(double value)
{
    if (std::isnan(value))
        return;
    ++bins_[static_cast<int>(std::floor(bins_per_e * std::log(std::clamp(value, 1e-9, 1e4))))];
    ++count_;
    greatest_ = std::max(greatest_, value);
}

Json Distribution::percentile(double part) const
{
    const double wanted = part * static_cast<double>(count_);
    unsigned long long below = 0;
    for (const auto& [bin, count] : bins_)
        if (static_cast<double>(below += count) >= wanted)
            return std::min(greatest_, std::exp((bin + 0.5) / bins_per_e));
    return nullptr;
}

Json Distribution::to_json() const
{
    if (empty())
        return nullptr;
    return {{"median", percentile(0.5)}, {"p95", percentile(0.95)}, {"p99", percentile(0.99)}, {"max", greatest_}};
}

bool Settling::add(double time_s, bool below)
{
    if (settled_)
        return true;
    if (!below)
        since_.reset();
    else if (!since_)
        since_ = time_s;
    settled_ = since_ && time_s - *since_ >= hold_s;
    return settled_;
}

Actuator_Limits limits_of(Test_Bench::Unit& unit)
{
    Actuator_Limits limits;
    const auto guard = unit.unit.lock();
    const Satellite_Settings& settings = unit.satellite->satellite.settings();
    const Actuators& actuators = unit.unit.parts.actuators;
    const Actuation actuation = actuators.actuation();
    for (std::size_t i = 0; i < max_wheels; ++i)
        limits.wheel_speeds_radps[i] =
            settings.wheels[i] ? settings.wheels[i]->max_speed_radps.value_or(actuation.wheels[i].max_speed_radps) : 0;
    limits.dipole_moments_am2.fill(0);
    if (const auto& torquers = settings.magnetorquers) {
        const auto& most = actuators.settings.magnetorquers.max_dipole_moment;
        Eigen::Vector3d moment{most.x, most.y, most.z};
        if (torquers->max_dipole_moment_am2)
            moment = moment.cwiseMin(*torquers->max_dipole_moment_am2);
        moment *= 1 - torquers->rest_msec / static_cast<double>(Satellite_World::tick_length.count());
        Eigen::Vector3d::Map(limits.dipole_moments_am2.data()) = moment;
    }
    return limits;
}

Summary::Summary(const Actuator_Limits& limits)
{
    constexpr std::array names{"x", "y", "z", "u", "v", "w"};
    const auto add = [&](std::vector<Actuator>& actuators, std::size_t first, const auto& all) {
        for (std::size_t i = 0; i < all.size(); ++i)
            if (all[i] != 0)
                actuators.push_back({first + i, names[i], all[i]});
    };
    add(wheels_, column("wheel_speed_x_radps"), limits.wheel_speeds_radps);
    add(magnetorquers_, column("dipole_moment_x_am2"), limits.dipole_moments_am2);
}

void Summary::add(const Sample& sample)
{
    constexpr double at_limit = 0.99;
    const double time = sample[column("time_s")];
    const double step = last_ ? time - (*last_)[column("time_s")] : 0;
    if (!first_)
        first_ = sample;
    last_ = sample;
    greatest_rate_ = std::max(greatest_rate_, rate(sample));
    catching_.add(time, rate(sample) < caught_radps);
    shadow_s_ += step * (1 - sample[column("sunlight")]);
    for (auto* const actuators : {&wheels_, &magnetorquers_})
        for (Actuator& actuator : *actuators) {
            const double now = std::abs(sample[actuator.column]);
            actuator.peak = std::max(actuator.peak, now);
            if (now >= at_limit * actuator.limit)
                actuator.saturated_s += step;
        }
    add_to_visit(sample);
}

void Summary::add_to_visit(const Sample& sample)
{
    const auto mode = static_cast<unsigned int>(sample[column("mode")]);
    const double time = sample[column("time_s")];
    const double error = sample[column("pointing_error_rad")];
    const double estimation_error = estimation_error_rad(sample);
    pointing_error_.add(error);
    estimation_error_.add(estimation_error);
    if (!visits_.empty())
        visits_.back().until_s = time;
    if (visits_.empty() || visits_.back().mode != mode) {
        if (visits_.size() == most_visits)
            return;
        visits_.push_back({mode, time, time});
    }
    Visit& visit = visits_.back();
    if (visit.settling.add(time, error < settled_rad))
        visit.pointing_error_settled.add(error);
    visit.pointing_error.add(error);
    visit.estimation_error.add(estimation_error);
}

Json Summary::Visit::to_json() const
{
    const bool known = mode < Modes::mode_names.size();
    return {
        {"mode", mode},
        {"name", known ? Modes::mode_names[mode] : "unknown"},
        {"from_s", from_s},
        {"until_s", until_s},
        {"settled_s", json_of(settling.time_s())},
        {"pointing_error_rad", (pointing_error_settled.empty() ? pointing_error : pointing_error_settled).to_json()},
        {"estimation_error_rad", estimation_error.to_json()}};
}

Json Summary::to_json(const std::vector<Actuator>& actuators)
{
    Json list = Json::array();
    for (const Actuator& actuator : actuators)
        list.push_back({{"name", actuator.name},
                        {"peak", actuator.peak},
                        {"limit", std::isnan(actuator.limit) ? Json() : Json(actuator.limit)},
                        {"saturated_s", std::isnan(actuator.limit) ? Json() : Json(actuator.saturated_s)}});
    return list;
}

Json Summary::to_json() const
{
    if (!last_)
        return Json::object();
    const double duration = (*last_)[column("time_s")] - (*first_)[column("time_s")];
    Json visits = Json::array();
    std::optional<double> settled;
    for (const Visit& visit : visits_) {
        visits.push_back(visit.to_json());
        if (!visit.pointing_error.empty()) {
            settled = visit.settling.time_s();
            if (settled)
                *settled -= visit.from_s;
        }
    }
    return {{"duration_s", duration},
            {"start_rate_radps", rate(*first_)},
            {"end_rate_radps", rate(*last_)},
            {"greatest_rate_radps", greatest_rate_},
            {"caught_s", json_of(catching_.time_s())},
            {"settled_s", json_of(settled)},
            {"shadow_part", duration > 0 ? shadow_s_ / duration : 0},
            {"pointing_error_rad", pointing_error_.to_json()},
            {"estimation_error_rad", estimation_error_.to_json()},
            {"visits", visits},
            {"wheels", to_json(wheels_)},
            {"magnetorquers", to_json(magnetorquers_)}};
}

Json Summary::results() const
{
    const Json all = to_json();
    const auto p95 = [](const Json& spread) { return spread.is_null() ? Json() : spread["p95"]; };
    Json pointing_error;
    for (const Json& visit : all["visits"])
        if (!visit["pointing_error_rad"].is_null())
            pointing_error = p95(visit["pointing_error_rad"]);
    double speed = 0;
    double saturated = 0;
    for (const Actuator& wheel : wheels_) {
        speed = std::max(speed, wheel.peak);
        saturated = std::max(saturated, wheel.saturated_s);
    }
    return {{"caught_s", all["caught_s"]},
            {"settled_s", all["settled_s"]},
            {"end_rate_radps", all["end_rate_radps"]},
            {"greatest_rate_radps", all["greatest_rate_radps"]},
            {"pointing_error_rad", pointing_error},
            {"estimation_error_rad", p95(all["estimation_error_rad"])},
            {"greatest_wheel_speed_radps", speed},
            {"wheel_saturated_s", saturated}};
}

double estimation_error_rad(const Sample& sample)
{
    return quaternion_of(sample, column("q_1")).angularDistance(quaternion_of(sample, column("estimated_q_1")));
}

}
