#pragma once

#include "../../protocol/records/modes.h"
#include "../orbit/tle.h"
#include "../satellite/environment.h"
#include "../satellite/measurements.h"
#include "attitude_filter.h"

#include <optional>

namespace zavra::simulator
{

/// From what the attitude is determined: the simulated unit's codes for `determination_mode`. Others count as the
/// first.
enum class Determination_Method : unsigned int {
    filter = 0,                      ///< Kalman filter on gyroscope, star tracker, sun and magnetic field
    filter_without_star_tracker = 1, ///< the same without the star tracker
    triad = 2,                       ///< TRIAD from sun and magnetic field; gyroscope while there is none
    star_tracker = 3,                ///< the star tracker's attitude; gyroscope while there is none
};

/// How the determination fares: bits of the telemetry's sat_main_register.
enum class Determination_Status : unsigned int {
    orbit_known = 1U << 0U,
    attitude_known = 1U << 1U,
    star_tracker_used = 1U << 2U,
    sun_used = 1U << 3U,
    magnetic_field_used = 1U << 4U,
    bias_estimated = 1U << 5U, ///< of the gyroscope
    eclipse = 1U << 6U,        ///< by the models
};

/// What hinders it: bits of the telemetry's sat_error_register.
enum class Determination_Error : unsigned int {
    no_elements = 1U << 0U,           ///< no TLE was loaded
    elements_out_of_reach = 1U << 1U, ///< the TLE says nothing of the unit's epoch time
    no_gyroscope = 1U << 2U,          ///< the active one gives nothing; its last rate is taken
    star_tracker_rejected = 1U << 3U, ///< cannot be, by what is believed
    sun_rejected = 1U << 4U,
    magnetic_field_rejected = 1U << 5U,
    started_anew = 1U << 6U, ///< too much was rejected; stays until the reset
};

/// What the unit's software believes of the satellite.
struct Attitude_Estimate
{
    bool inertial = false;                                        ///< The attitude is known
    Eigen::Quaterniond attitude = Eigen::Quaterniond::Identity(); ///< As in ../satellite/attitude.h
    /// Body frame: the active gyroscope's, without its bias; known without the attitude, too.
    Eigen::Vector3d angular_velocity_radps = Eigen::Vector3d::Zero();
    Eigen::Vector3d gyroscope_bias_radps = Eigen::Vector3d::Zero();
    Eigen::Vector3d attitude_sigma_rad = Eigen::Vector3d::Zero(); ///< 1 sigma about each body axis
    std::optional<Surroundings> orbit;      ///< By the software's models; nothing without elements that reach so far
    unsigned int status = 0;                ///< Determination_Status
    unsigned int errors = 0;                ///< Determination_Error
    unsigned long long epoch_time_msec = 0; ///< Of the last determination of the attitude
};

/// The unit's attitude determination, from what its sensors gave and models of its own: the orbit of the elements that
/// the application loaded, the field of the year for which the software was made, of degree 8, and the sun.
class Attitude_Determination
{
public:
    struct Settings
    {
        Determination_Method method = Determination_Method::filter;
        ZAVRA_100_KalmanFilter_Parameters filter{};
        std::size_t active_gyroscope = 0;
        std::optional<Two_Line_Elements> elements; ///< That the application loaded
    };

    static constexpr double field_year = 2020.0;
    static constexpr int field_degree = 8;
    /// Sun and field err for a while in the same way, by the sensors' bias and the models: the filter counts what it
    /// gets of them in this time for one measurement.
    static constexpr double correlation_time_s = 10;

    /// One control tick. Measurements come processed: corrected, filtered, without what was calculated as bias.
    void update(const Measurements& measurements, const Settings& settings);

    const Attitude_Estimate& estimate() const { return estimate_; }

    void reset() { *this = {}; }

private:
    using Time = std::chrono::milliseconds;

    /// A sensor that gives attitude or direction.
    struct Source
    {
        std::optional<Time> last{};
        double interval_s = 0; ///< between the last two measurements

        bool is_new(bool valid, Time time);
    };

    /// What is new in a control tick.
    struct Seen
    {
        std::optional<Eigen::Quaterniond> star_tracker;
        std::optional<Direction> sun, field;
    };

    void look_around(unsigned long long epoch_time_msec, const std::optional<Two_Line_Elements>& elements);
    void follow_gyroscope(const Measurements& measurements, const Settings& settings, double seconds);
    Seen look(const Measurements& measurements, const Settings& settings);
    void filter(const Seen& seen, const ZAVRA_100_KalmanFilter_Parameters& parameters);
    void find_attitude(const Seen& seen, const Settings& settings);
    bool start_from_star_tracker(const Seen& seen, double variance);
    bool start_from_vectors(const Seen& seen, double variance);
    template <class Measured>
    bool take(const std::optional<Measured>& measured, const Measurement_Variances& variances,
              Determination_Status used, Determination_Error rejected);
    bool known() const;

    Attitude_Estimate estimate_;
    Attitude_Filter filter_;
    bool started_ = false;
    std::optional<Time> time_;
    std::optional<Two_Line_Elements> elements_;
    std::optional<Environment> environment_;
    std::optional<std::size_t> gyroscope_; // that gave the rate; nothing while none does
    Eigen::Vector3d rate_ = Eigen::Vector3d::Zero();
    Source star_tracker_, sun_, field_;
    int star_tracker_rejected_ = 0;
    int vectors_rejected_ = 0; // one of sun and field, while they agree with each other
};

}
