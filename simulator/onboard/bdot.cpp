#include "bdot.h"

#include "magnetic.h"

namespace zavra::simulator
{

Eigen::Vector3d Bdot_Control::dipole(const Measurements::Vector& field, const Controller_Settings& settings,
                                     double smallest_moment_kgm2, const Eigen::Vector3d& max_dipole_am2)
{
    const auto& parameters = full_ ? settings.bdot_max : settings.bdot_proportional;
    if (!field.valid) {
        reset();
        return dipole_;
    }
    if (begin_ < Time(0))
        begin_ = field.time;
    const Time elapsed = field.time - begin_;
    if (count_ > 0 && static_cast<unsigned long long>(elapsed.count()) >= parameters.update_interval) {
        const Eigen::Vector3d mean = sum_ / count_;
        if (mean_) {
            const Eigen::Vector3d change = (mean - *mean_) / seconds_of(elapsed);
            const Eigen::Vector3d wanted = -double{settings.bdot_proportional.k} * smallest_moment_kgm2 /
                                           std::max(mean.squaredNorm(), 1e-30) * change;
            dipole_ = shortened(wanted, max_dipole_am2.cwiseMin(std::abs(double{settings.bdot_max.k})));
            full_ = dipole_ != wanted;
        }
        mean_ = mean;
        sum_.setZero();
        count_ = 0;
        begin_ = field.time;
    }
    sum_ += field.value;
    ++count_;
    return dipole_;
}

}
