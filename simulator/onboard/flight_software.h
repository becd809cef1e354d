#pragma once

#include "attitude_control.h"
#include "onboard_software.h"

#include <functional>

namespace zavra::simulator
{

/// What commands over the bus have set, as the software reads it at each control tick.
struct Flight_Settings
{
    Attitude_Determination::Settings determination;
    Control_Settings control;
};

/// The unit's own software: it determines the attitude and controls it.
class Flight_Software : public Onboard_Software
{
public:
    using Settings = std::function<Flight_Settings()>;

    Flight_Software(const Mission& mission, Settings settings) : settings_(std::move(settings)), control_(mission) {}

    void tick(const Measurements& measurements, Actuation& actuation) override;
    std::optional<Estimate> estimate() const override;
    std::optional<Report> report() const override { return Report{determination_.estimate(), control_.report()}; }
    void reset() override;

private:
    Settings settings_;
    Attitude_Determination determination_;
    Attitude_Control control_;
};

}
