#pragma once

#include "triad.h"

namespace zavra::simulator
{

/// Variances that grow with time.
struct Process_Variances
{
    double attitude_rad2_per_s = 0;
    double bias_rad2_per_s3 = 0;
    bool bias_is_estimated = true; ///< or 0
};

/// What a measurement may err: `spread` from one measurement to the next and in whatever stays the same for longer,
/// which decides what can be true; `weight` as if it was all new noise each time, which decides what it moves.
struct Measurement_Variances
{
    double spread_rad2;
    double weight_rad2;
};

/// Multiplicative extended Kalman filter over attitude and gyroscope bias (Lefferts, Markley, Shuster 1982; Markley,
/// Crassidis 2014, section 6.2). The error state is the rotation vector d in the body frame, with the true A =
/// exp(-[d x]) A(attitude), and the bias error.
class Attitude_Filter
{
public:
    using Vector = Eigen::Vector3d;

    static constexpr double initial_bias_sigma_radps = 5e-3;

    const Eigen::Quaterniond& attitude() const { return attitude_; }
    const Vector& bias_radps() const { return bias_; }
    Vector attitude_sigma_rad() const { return covariance_.diagonal().head<3>().cwiseSqrt(); }

    /// Sets the attitude, of which each axis has this variance; what is known of the bias stays.
    void start(const Eigen::Quaterniond& attitude, double variance_rad2);

    /// Forgets the bias, or only how well it is known.
    void forget_bias() { bias_.setZero(), doubt_bias(); }
    void doubt_bias();

    /// Lets time pass with what a gyroscope measured.
    void propagate(const Vector& measured_radps, double seconds, const Process_Variances& variances);

    /// Takes a measurement; false, and nothing changes, for one that is more than 5 sigma off.
    bool update(const Direction& measured, const Measurement_Variances& variances);
    bool update(const Eigen::Quaterniond& measured, const Measurement_Variances& variances);

private:
    bool update(const Vector& innovation, const Eigen::Matrix3d& sensitivity, const Measurement_Variances& variances);

    Eigen::Quaterniond attitude_ = Eigen::Quaterniond::Identity();
    Vector bias_ = Vector::Zero();
    Eigen::Matrix<double, 6, 6> covariance_ = Eigen::Matrix<double, 6, 6>::Zero();
};

}
