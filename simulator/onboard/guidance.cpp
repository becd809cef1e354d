#include "guidance.h"

#include "../orbit/frames.h"
#include "../satellite/attitude.h"
#include "vectors.h"

#include <algorithm>
#include <cmath>

namespace zavra::simulator
{

namespace
{

constexpr double earth_gravity_km3ps2 = 398600.4418;

/// Rows are the axes of the frame with z along `line` and x towards `towards`.
Eigen::Matrix3d frame(const Eigen::Vector3d& line, const Eigen::Vector3d& towards)
{
    Eigen::Matrix3d rows;
    const Eigen::Vector3d z = line.normalized();
    const Eigen::Vector3d y = z.cross(towards).normalized();
    rows << y.cross(z).transpose(), y.transpose(), z.transpose();
    return rows;
}

/// The direction of the ellipsoid's normal, Earth-fixed.
Eigen::Vector3d normal(double latitude, double longitude)
{
    return {std::cos(latitude) * std::cos(longitude), std::cos(latitude) * std::sin(longitude), std::sin(latitude)};
}

/// The quaternion that turns inertial into the pointing frame; the rows of the matrix are that frame's axes.
Eigen::Quaterniond as_attitude(const Eigen::Matrix3d& rows)
{
    return Eigen::Quaterniond(Eigen::Matrix3d(rows.transpose()));
}

class Pointing_Frame
{
public:
    Pointing_Frame(const Pointing_Order& order, const Surroundings* orbit, unsigned long long epoch_msec)
        : order_(order),
          orbit_(orbit),
          epoch_msec_(static_cast<double>(epoch_msec))
    {
    }

    /// `after`: seconds from the epoch.
    Eigen::Quaterniond at(double after) const
    {
        if (order_.mode == Operation::inertial)
            return polynomials(after);
        // Kepler's orbit without its third derivative: metres within the seconds that are asked for.
        const Eigen::Vector3d& r = orbit_->position_km;
        const Eigen::Vector3d acceleration = -earth_gravity_km3ps2 / std::pow(r.norm(), 3) * r;
        const Eigen::Vector3d position = r + after * (orbit_->velocity_kmps + after / 2 * acceleration);
        const Eigen::Vector3d velocity = orbit_->velocity_kmps + after * acceleration;
        return as_attitude(
            frame((order_.mode == Operation::nadir ? Eigen::Vector3d::Zero() : ground(after)) - position, velocity));
    }

private:
    Eigen::Quaterniond polynomials(double after) const
    {
        const auto begin = order_.parameters.start_epoch_time ? order_.parameters.start_epoch_time : order_.begin_msec;
        const double t = std::max(1e-3 * (epoch_msec_ - static_cast<double>(begin)) + after, 0.0);
        Eigen::Vector4d q = Eigen::Vector4d::Zero();
        for (unsigned int power = order_.degree + 1; power-- > 0;)
            for (unsigned int i = 0; i < 4; ++i)
                q[i] = q[i] * t + double{order_.parameters.polynomial_coeff[i * (order_.degree + 1) + power]};
        return q.norm() > 0 ? Eigen::Quaterniond(q).normalized() : Eigen::Quaterniond::Identity();
    }

    Eigen::Vector3d ground(double after) const
    {
        const auto& p = order_.parameters;
        const Eigen::Vector3d start = normal(double{p.start_latitude}, double{p.start_longitude});
        const Eigen::Vector3d stop = normal(double{p.stop_latitude}, double{p.stop_longitude});
        Eigen::Vector3d now = start;
        const Eigen::Vector3d across = start.cross(stop);
        if (p.stop_epoch_time > p.start_epoch_time && across.norm() > 0) {
            const double way = (epoch_msec_ + 1e3 * after - static_cast<double>(p.start_epoch_time)) /
                               static_cast<double>(p.stop_epoch_time - p.start_epoch_time);
            const double angle = std::atan2(across.norm(), start.dot(stop)) * std::clamp(way, 0.0, 1.0);
            now = Eigen::AngleAxisd(angle, across.normalized()) * start;
        }
        const Eigen::Vector3d earth_fixed =
            earth_fixed_position({std::asin(std::clamp(now.z(), -1.0, 1.0)), std::atan2(now.y(), now.x()), 0});
        const Julian_Date date = julian_date(static_cast<unsigned long long>(std::max(epoch_msec_ + 1e3 * after, 0.0)));
        return teme_to_earth_fixed(date).transpose() * earth_fixed;
    }

    const Pointing_Order& order_;
    const Surroundings* orbit_;
    double epoch_msec_;
};

/// Body to pointing frame. Where line of sight and flight vector span no plane that is what the unit was told: nothing.
Eigen::Quaterniond mounting(const ZAVRA_100_Matrix3x3_float& rotation_matrix)
{
    const Eigen::Matrix3d rows = wide(rotation_matrix);
    const Eigen::Vector3d line = rows.row(2);
    if (rows.row(1).norm() > 0.5)
        return Eigen::Quaterniond(rows).normalized();
    if (line.norm() > 0.5)
        return Eigen::Quaterniond(frame(line, line.unitOrthogonal()));
    return Eigen::Quaterniond::Identity();
}

/// The rotation vector from one attitude to a later one, in the body frame.
Eigen::Vector3d rotation(const Eigen::Quaterniond& from, const Eigen::Quaterniond& to)
{
    return rotation_vector(from.conjugate() * to);
}

}

Target target(const Pointing_Order& order, const Surroundings* orbit, unsigned long long epoch_msec)
{
    const Pointing_Frame frame{order, orbit, epoch_msec};
    const double offset = 1e-3 * static_cast<double>(order.parameters.offset_time_msec);
    const Eigen::Quaterniond to_body = mounting(order.parameters.rotation_matrix) *
                                       Eigen::AngleAxisd(order.angles.x(), Eigen::Vector3d::UnitX()) *
                                       Eigen::AngleAxisd(order.angles.y(), Eigen::Vector3d::UnitY()) *
                                       Eigen::AngleAxisd(order.angles.z(), Eigen::Vector3d::UnitZ());
    const auto at = [&](double after) { return frame.at(offset + after) * to_body; };
    constexpr double step = 1;
    Target target{.attitude = at(0)};
    const Eigen::Vector3d before = -rotation(target.attitude, at(-step));
    const Eigen::Vector3d after = rotation(target.attitude, at(step));
    target.rate_radps = (before + after) / (2 * step);
    target.acceleration_radps2 = (after - before) / (step * step);
    return target;
}

}
