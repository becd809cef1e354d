#include "sample.h"

#include <limits>

namespace zavra::simulator
{

Sample sample_of(const Test_Bench::Unit& unit)
{
    Sample sample;
    std::size_t filled = 0;
    const auto add = [&](double number) { sample[filled++] = number; };
    const auto add_all = [&](const auto& numbers) { std::ranges::for_each(numbers, add); };

    const Satellite& satellite = unit.satellite->satellite;
    const Surroundings& around = satellite.surroundings();
    add(static_cast<double>(satellite.time().count()) / 1000);
    add(static_cast<double>(satellite.epoch_time_msec()));
    add_all(around.position_km);
    add_all(around.velocity_kmps);
    add_all(satellite.attitude().coeffs());
    add_all(satellite.angular_velocity_radps());
    add_all(satellite.in_body(around.magnetic_field_t));
    add_all(satellite.in_body(around.sun_vector));
    add(around.sunlight);
    add_all(satellite.wheel_speeds_radps());
    add_all(satellite.dipole_moment_am2());
    add(static_cast<double>(unit.unit.parts.modes.mode()));
    std::fill(sample.begin() + static_cast<std::ptrdiff_t>(filled), sample.end(),
              std::numeric_limits<double>::quiet_NaN());
    if (const auto estimate = unit.unit.software ? unit.unit.software->estimate() : std::nullopt) {
        add_all(estimate->attitude.coeffs());
        add_all(estimate->angular_velocity_radps);
        if (estimate->pointing_error_rad)
            add(*estimate->pointing_error_rad);
    }
    return sample;
}

}
