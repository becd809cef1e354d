#include "environment.h"

#include "../orbit/frames.h"
#include "eclipse.h"
#include "sun.h"

#include <algorithm>

namespace zavra::simulator
{

void Environment::look(unsigned long long epoch_time_msec)
{
    const Julian_Date date = julian_date(epoch_time_msec);
    Orbit_State state{};
    error_ = orbit_.propagate(minutes_between(epoch_, date), state);
    if (error_ != Tle_Error::none)
        return;
    if (!field_stays_ && (!field_ || date.day != field_day_)) {
        field_.emplace(std::clamp(decimal_year(date), Geomagnetic_Field::first_year, Geomagnetic_Field::last_year));
        field_day_ = date.day;
    }
    surroundings_.position_km = state.position_km;
    surroundings_.velocity_kmps = state.velocity_kmps;
    const Eigen::Matrix3d to_earth = teme_to_earth_fixed(date);
    surroundings_.magnetic_field_t = to_earth.transpose() * field_->at(to_earth * state.position_km);
    const Eigen::Vector3d sun = sun_position(date);
    surroundings_.sun_vector = (sun - state.position_km).normalized();
    surroundings_.sunlight = visible_fraction_of_sun(state.position_km, sun);
}

}
