#include "attitude_determination.h"

#include "../satellite/attitude.h"

#include <algorithm>
#include <cmath>

namespace zavra::simulator
{

namespace
{

using Parameters = ZAVRA_100_KalmanFilter_Parameters;

constexpr double lost_sigma_rad = 0.35;       // the attitude does not count as known beyond
constexpr double agreement_rad = 0.15;        // of directions, where an attitude is looked for
constexpr double magnitude_tolerance = 0.2;   // of the field
constexpr double least_start_variance = 1e-3; // of TRIAD's attitude, rad^2
constexpr int patience = 100;                 // measurements of a sensor that are rejected in a row
constexpr Process_Variances without_gyroscope{1e-8, 1e-6, true};

unsigned int bit(auto flag)
{
    return static_cast<unsigned int>(flag);
}

/// Parameters may be any number, or none.
double variance(double value, double least)
{
    return std::isfinite(value) ? std::clamp(value, least, 1e3) : least;
}

double star_tracker_variance(const Parameters& parameters)
{
    return variance(parameters.sts_measurement_variance, 1e-14);
}

double vector_variance(const Parameters& parameters)
{
    return variance(parameters.sun_mag_measurement_variance, 1e-14);
}

/// How many of the directions an attitude fits, less how many it does not.
int votes(const Eigen::Quaterniond& attitude, std::initializer_list<std::optional<Direction>> directions)
{
    int sum = 0;
    for (const auto& direction : directions)
        if (direction)
            sum +=
                (body_from_inertial(attitude) * direction->inertial - direction->body).norm() < agreement_rad ? 1 : -1;
    return sum;
}

}

bool Attitude_Determination::Source::is_new(bool valid, Time time)
{
    if (!valid || time == last)
        return false;
    interval_s = last ? seconds_of(time - *last) : 0;
    last = time;
    return true;
}

bool Attitude_Determination::known() const
{
    return started_ && estimate_.orbit && filter_.attitude_sigma_rad().maxCoeff() < lost_sigma_rad;
}

void Attitude_Determination::update(const Measurements& measurements, const Settings& settings)
{
    const double seconds = time_ ? std::max(seconds_of(measurements.time - *time_), 0.0) : 0;
    time_ = measurements.time;
    estimate_.status = 0;
    estimate_.errors &= bit(Determination_Error::started_anew);

    look_around(measurements.epoch_time_msec, settings.elements);
    follow_gyroscope(measurements, settings, seconds);
    if (estimate_.orbit)
        find_attitude(look(measurements, settings), settings);

    estimate_.attitude = filter_.attitude();
    estimate_.attitude_sigma_rad = filter_.attitude_sigma_rad();
    estimate_.gyroscope_bias_radps = filter_.bias_radps();
    estimate_.angular_velocity_radps = rate_ - filter_.bias_radps();
    estimate_.inertial = known();
    if (estimate_.inertial) {
        estimate_.status |= bit(Determination_Status::attitude_known);
        estimate_.epoch_time_msec = measurements.epoch_time_msec;
    }
}

void Attitude_Determination::look_around(unsigned long long epoch_time_msec,
                                         const std::optional<Two_Line_Elements>& elements)
{
    if (elements != elements_) {
        elements_ = elements;
        environment_.reset();
        if (elements)
            environment_.emplace(*elements, Geomagnetic_Field(field_year, field_degree));
    }
    estimate_.orbit.reset();
    if (!environment_) {
        estimate_.errors |= bit(Determination_Error::no_elements);
        return;
    }
    environment_->look(epoch_time_msec);
    if (environment_->error() != Tle_Error::none) {
        estimate_.errors |= bit(Determination_Error::elements_out_of_reach);
        return;
    }
    estimate_.orbit = environment_->surroundings();
    estimate_.status |= bit(Determination_Status::orbit_known);
    if (estimate_.orbit->sunlight == 0)
        estimate_.status |= bit(Determination_Status::eclipse);
}

/// Without a gyroscope the last rate stands for it, and what was its bias is the change since then.
void Attitude_Determination::follow_gyroscope(const Measurements& measurements, const Settings& settings,
                                              double seconds)
{
    const auto& gyroscopes = measurements.angular_velocity_radps;
    std::optional<std::size_t> active;
    if (const std::size_t i = settings.active_gyroscope;
        i < gyroscopes.size() && gyroscopes[i].valid && gyroscopes[i].value.allFinite())
        active = i;
    const Eigen::Vector3d before = rate_;
    if (active)
        rate_ = gyroscopes[*active].value;
    const bool changed = active != gyroscope_;
    if (changed && !active)
        rate_ -= filter_.bias_radps();
    if (changed)
        filter_.forget_bias();
    gyroscope_ = active;

    Process_Variances variances = without_gyroscope;
    if (active)
        variances = {variance(settings.filter.attitude_process_variance, 0),
                     variance(settings.filter.bias_process_variance, 0), settings.filter.disable_bias == 0};
    else
        estimate_.errors |= bit(Determination_Error::no_gyroscope);
    filter_.propagate(changed ? rate_ : Eigen::Vector3d((before + rate_) / 2), seconds, variances);
    if (active && variances.bias_is_estimated)
        estimate_.status |= bit(Determination_Status::bias_estimated);
}

Attitude_Determination::Seen Attitude_Determination::look(const Measurements& measurements, const Settings& settings)
{
    Seen seen;
    const auto& star_tracker = measurements.attitude;
    if (star_tracker_.is_new(star_tracker.valid && star_tracker.value.norm() > 0.5, star_tracker.time) &&
        settings.method != Determination_Method::filter_without_star_tracker &&
        settings.method != Determination_Method::triad)
        seen.star_tracker = star_tracker.value.normalized();
    if (settings.method == Determination_Method::star_tracker)
        return seen;

    const Surroundings& around = *estimate_.orbit;
    const auto& sun = measurements.sun_vector;
    if (sun_.is_new(sun.valid && sun.value.norm() > 0, sun.time)) {
        if (around.sunlight > 0)
            seen.sun = {sun.value.normalized(), around.sun_vector};
        else
            estimate_.errors |= bit(Determination_Error::sun_rejected);
    }
    const auto& field = measurements.magnetic_field_t;
    if (field_.is_new(field.valid, field.time)) {
        const double expected = around.magnetic_field_t.norm();
        if (std::abs(field.value.norm() / expected - 1) < magnitude_tolerance)
            seen.field = {field.value.normalized(), around.magnetic_field_t / expected};
        else
            estimate_.errors |= bit(Determination_Error::magnetic_field_rejected);
    }
    return seen;
}

void Attitude_Determination::find_attitude(const Seen& seen, const Settings& settings)
{
    switch (settings.method) {
    case Determination_Method::triad:
        start_from_vectors(seen, vector_variance(settings.filter));
        break;
    case Determination_Method::star_tracker:
        start_from_star_tracker(seen, star_tracker_variance(settings.filter));
        break;
    case Determination_Method::filter:
    case Determination_Method::filter_without_star_tracker:
    default:
        filter(seen, settings.filter);
    }
}

void Attitude_Determination::filter(const Seen& seen, const Parameters& parameters)
{
    const double of_star_tracker = star_tracker_variance(parameters);
    const double of_vectors = vector_variance(parameters);
    const double start_variance = std::max(of_vectors, least_start_variance);
    if (!known()) {
        if (start_from_star_tracker(seen, of_star_tracker) || start_from_vectors(seen, start_variance))
            filter_.doubt_bias();
        return;
    }
    const auto correlated = [&](const Source& source) {
        const double counted = source.interval_s > 0 ? std::max(correlation_time_s / source.interval_s, 1.0) : 1;
        return Measurement_Variances{of_vectors, of_vectors * counted};
    };
    using Status = Determination_Status;
    using Error = Determination_Error;
    const auto of_tracker = Measurement_Variances{of_star_tracker, of_star_tracker};
    const bool tracker = take(seen.star_tracker, of_tracker, Status::star_tracker_used, Error::star_tracker_rejected);
    const bool sun = take(seen.sun, correlated(sun_), Status::sun_used, Error::sun_rejected);
    const bool field =
        take(seen.field, correlated(field_), Status::magnetic_field_used, Error::magnetic_field_rejected);

    if (seen.star_tracker)
        star_tracker_rejected_ = tracker ? 0 : star_tracker_rejected_ + 1;
    if (seen.sun && seen.field)
        vectors_rejected_ = (sun && field) || !triad(*seen.sun, *seen.field, agreement_rad) ? 0 : vectors_rejected_ + 1;
    const bool anew = (star_tracker_rejected_ > patience && start_from_star_tracker(seen, of_star_tracker)) ||
                      (vectors_rejected_ > patience && !tracker && start_from_vectors(seen, start_variance));
    if (anew) {
        filter_.doubt_bias();
        star_tracker_rejected_ = vectors_rejected_ = 0;
        estimate_.errors |= bit(Error::started_anew);
    }
}

template <class Measured>
bool Attitude_Determination::take(const std::optional<Measured>& measured, const Measurement_Variances& variances,
                                  Determination_Status used, Determination_Error rejected)
{
    if (!measured)
        return false;
    const bool taken = filter_.update(*measured, variances);
    estimate_.status |= taken ? bit(used) : 0;
    estimate_.errors |= taken ? 0 : bit(rejected);
    return taken;
}

/// Unless sun and field together contradict it.
bool Attitude_Determination::start_from_star_tracker(const Seen& seen, double variance_rad2)
{
    if (!seen.star_tracker || votes(*seen.star_tracker, {seen.sun, seen.field}) < 0)
        return false;
    filter_.start(*seen.star_tracker, variance_rad2);
    estimate_.status |= bit(Determination_Status::star_tracker_used);
    started_ = true;
    return true;
}

bool Attitude_Determination::start_from_vectors(const Seen& seen, double variance_rad2)
{
    if (!seen.sun || !seen.field)
        return false;
    const auto attitude = triad(*seen.sun, *seen.field, agreement_rad);
    if (!attitude)
        return false;
    filter_.start(*attitude, variance_rad2 / seen.sun->body.cross(seen.field->body).squaredNorm());
    estimate_.status |= bit(Determination_Status::sun_used) | bit(Determination_Status::magnetic_field_used);
    started_ = true;
    return true;
}

}
