#pragma once

#include "../orbit/sgp4.h"
#include "geomagnetic_field.h"
#include "surroundings.h"

#include <optional>

namespace zavra::simulator
{

/// What surrounds a satellite on its orbit (SGP4), at a time after the other.
class Environment
{
public:
    explicit Environment(const Two_Line_Elements& elements) : epoch_(elements.epoch), orbit_(elements) {}
    /// With a field that stays as it was in a year, and may leave out high harmonics.
    Environment(const Two_Line_Elements& elements, const Geomagnetic_Field& field)
        : epoch_(elements.epoch),
          orbit_(elements),
          field_(field),
          field_stays_(true)
    {
    }

    /// Works out the surroundings of a moment. Where the orbit ends (the satellite decays, or the elements do not reach
    /// so far) they stay as they were, and the reason is kept.
    void look(unsigned long long epoch_time_msec);

    const Surroundings& surroundings() const { return surroundings_; }
    Tle_Error error() const { return error_; }

private:
    Julian_Date epoch_;
    Sgp4 orbit_;
    Tle_Error error_ = Tle_Error::none;
    Surroundings surroundings_;
    std::optional<Geomagnetic_Field> field_;
    bool field_stays_ = false;
    double field_day_ = 0; // Julian date
};

}
