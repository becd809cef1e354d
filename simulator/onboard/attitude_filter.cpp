#include "attitude_filter.h"

#include "../satellite/attitude.h"

#include <Eigen/LU>

#include <cmath>

namespace zavra::simulator
{

namespace
{

constexpr double gate = 5 * 5; // of the squared innovation over its variance

Eigen::Matrix3d cross_matrix(const Eigen::Vector3d& v)
{
    Eigen::Matrix3d m;
    m << 0, -v.z(), v.y(), v.z(), 0, -v.x(), -v.y(), v.x(), 0;
    return m;
}

}

void Attitude_Filter::start(const Eigen::Quaterniond& attitude, double variance_rad2)
{
    attitude_ = attitude.normalized();
    covariance_.topRows<3>().setZero();
    covariance_.leftCols<3>().setZero();
    covariance_.diagonal().head<3>().setConstant(variance_rad2);
}

void Attitude_Filter::doubt_bias()
{
    covariance_.bottomRows<3>().setZero();
    covariance_.rightCols<3>().setZero();
    covariance_.diagonal().tail<3>().setConstant(initial_bias_sigma_radps * initial_bias_sigma_radps);
}

void Attitude_Filter::propagate(const Vector& measured_radps, double seconds, const Process_Variances& variances)
{
    if (!variances.bias_is_estimated) {
        forget_bias();
        covariance_.diagonal().tail<3>().setZero();
    } else if (covariance_(3, 3) == 0) {
        doubt_bias();
    }
    const Vector turn = (measured_radps - bias_) * seconds;
    const Eigen::Matrix3d after = body_from_inertial(turned(Eigen::Quaterniond::Identity(), turn));
    attitude_ = turned(attitude_, turn).normalized();

    // d' = after d - seconds b, b' = b
    const Eigen::Matrix3d bias = covariance_.bottomRightCorner<3, 3>();
    const Eigen::Matrix3d cross = after * covariance_.topRightCorner<3, 3>() - seconds * bias;
    const Eigen::Matrix3d mixed = after * covariance_.topRightCorner<3, 3>() * seconds;
    covariance_.topLeftCorner<3, 3>() = after * covariance_.topLeftCorner<3, 3>() * after.transpose() - mixed -
                                        mixed.transpose() + seconds * seconds * bias;
    covariance_.topRightCorner<3, 3>() = cross;
    covariance_.bottomLeftCorner<3, 3>() = cross.transpose();
    covariance_.diagonal().head<3>().array() += variances.attitude_rad2_per_s * seconds;
    if (variances.bias_is_estimated)
        covariance_.diagonal().tail<3>().array() += variances.bias_rad2_per_s3 * seconds;
}

bool Attitude_Filter::update(const Direction& measured, const Measurement_Variances& variances)
{
    const Vector expected = body_from_inertial(attitude_) * measured.inertial;
    return update(measured.body - expected, cross_matrix(expected), variances);
}

bool Attitude_Filter::update(const Eigen::Quaterniond& measured, const Measurement_Variances& variances)
{
    const Eigen::Quaterniond difference = attitude_.conjugate() * measured;
    return update(std::copysign(2.0, difference.w()) * difference.vec(), Eigen::Matrix3d::Identity(), variances);
}

bool Attitude_Filter::update(const Vector& innovation, const Eigen::Matrix3d& sensitivity,
                             const Measurement_Variances& variances)
{
    const Eigen::Matrix<double, 6, 3> of_innovation = covariance_.leftCols<3>() * sensitivity.transpose();
    const Eigen::Matrix3d expected = sensitivity * of_innovation.topRows<3>();
    const Eigen::Matrix3d one = Eigen::Matrix3d::Identity();
    if (!(innovation.dot((expected + variances.spread_rad2 * one).inverse() * innovation) < gate))
        return false;

    const Eigen::Matrix<double, 6, 3> gain = of_innovation * (expected + variances.weight_rad2 * one).inverse();
    const Eigen::Matrix<double, 6, 1> correction = gain * innovation;
    attitude_ = turned(attitude_, correction.head<3>()).normalized();
    bias_ += correction.tail<3>();
    // Joseph's form, which keeps the covariance positive. It keeps what rounding has made asymmetric, too, which grows
    // within minutes where the bias walks fast.
    Eigen::Matrix<double, 6, 6> kept = Eigen::Matrix<double, 6, 6>::Identity();
    kept.leftCols<3>() -= gain * sensitivity;
    covariance_ = (kept * covariance_ * kept.transpose()).eval() + variances.weight_rad2 * gain * gain.transpose();
    covariance_ = (covariance_ + covariance_.transpose()).eval() / 2;
    return true;
}

}
