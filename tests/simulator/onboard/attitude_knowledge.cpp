#include "attitude_knowledge.h"

#include "simulator/unit/modes.h"

namespace zavra::test
{

using namespace simulator;
using Eigen::Vector3d;

constexpr std::chrono::milliseconds tick_length{100};

Observed_Satellite::Observed_Satellite(const Satellite_Settings& of_satellite, unsigned long long seed)
    : satellite(of_satellite),
      sensors(of_satellite.sensors, seed)
{
    settings.filter = Modes::Settings{}.kalman_filter;
    settings.elements = of_satellite.elements;
}

void Observed_Satellite::tick()
{
    const Vector3d held = Vector3d::Zero();
    const Eigen::Quaterniond attitude = satellite.attitude();
    satellite.act({}, tick_length);
    satellite.advance(tick_length);
    satellite.look_around();
    if (motion == Motion::nadir) {
        const Surroundings& around = satellite.surroundings();
        const Vector3d rate = around.position_km.cross(around.velocity_kmps) / around.position_km.squaredNorm();
        const auto up =
            Eigen::Quaterniond::FromTwoVectors(satellite.settings().sensors.star_tracker.axis, Vector3d::UnitZ());
        Eigen::Matrix3d axes;
        axes << rate.cross(around.position_km).normalized(), rate.normalized(), around.position_km.normalized();
        satellite.set_attitude(Eigen::Quaterniond(axes) * up);
        satellite.set_angular_velocity(satellite.in_body(rate));
    } else if (motion == Motion::inertial) {
        satellite.set_attitude(attitude);
        satellite.set_angular_velocity(held);
    }
    sensors.measure(satellite);
    Measurements seen = sensors.measurements();
    seen.epoch_time_msec = satellite.epoch_time_msec();
    meddle(seen);
    determination.update(seen, settings);
}

double Observed_Satellite::attitude_error_rad() const
{
    return satellite.attitude().angularDistance(determination.estimate().attitude);
}

Attitude_Knowledge attitude_knowledge(Satellite_Settings settings, Observed_Satellite::Motion motion,
                                      Determination_Method method, unsigned long long seed)
{
    Random random{seed, 1000};
    settings.attitude.coeffs() << random.normal_vector(), random.normal();
    settings.attitude.normalize();
    settings.angular_velocity_radps = settings.angular_velocity_radps.norm() * random.normal_vector().normalized();
    Observed_Satellite observed{settings, seed};
    observed.motion = motion;
    observed.settings.method = method;
    const int orbit = static_cast<int>(600 * 2 * 3.14159265358979 / settings.elements.mean_motion);
    Attitude_Knowledge knowledge{};
    for (int i = 0; i < 2 * orbit; ++i) {
        observed.tick();
        if (i < orbit)
            continue;
        const double error = observed.attitude_error_rad();
        const Attitude_Estimate& estimate = observed.determination.estimate();
        const bool stars = (estimate.status & static_cast<unsigned int>(Determination_Status::star_tracker_used)) != 0;
        (stars                                            ? knowledge.star_tracker
         : observed.satellite.surroundings().sunlight > 0 ? knowledge.light
                                                          : knowledge.eclipse)
            .add(error);
    }
    return knowledge;
}

}
