#pragma once

#include "../../protocol/records/controllers.h"
#include "command_table.h"
#include "unit_time.h"
#include "world.h"

#include <array>

namespace zavra::simulator
{

/// The simulated unit's controllers: it keeps their parameters and which of them runs on which axis, but turns nothing.
class Controllers
{
public:
    enum class Running { nothing, angular_velocity, angle_step };

    struct Axis
    {
        ZAVRA_100_PID_Controller_Parameters angular_velocity{0.1F, 0.01F, 0, 0, 0, 0, 100};
        ZAVRA_100_Cascaded_PID_Controller_Parameters angle_step{0.1F, 0.01F, 0, 0, 0, 0.05F, 0, 0, 0, 0, 0, 100};
        Running running = Running::nothing;
        float target = 0;
    };

    struct Settings
    {
        std::array<Axis, 3> axes;
        ZAVRA_100_BDot_Controller_Parameters bdot_max{1.0e4F, 0, 1000};
        ZAVRA_100_BDot_Controller_Parameters bdot_proportional{5.0e3F, 0, 1000};
        ZAVRA_100_SunPointing_Controller_Parameters sun_pointing{
            1.0e-4F, {2.0e-3F, 0, 0, 0, 2.0e-3F, 0, 0, 0, 2.0e-3F}, {1.0e-4F, 1.0e-4F, 1.0e-4F}, 0, 500};
        ZAVRA_100_Sliding_Controller_Parameters sliding{0.01F, 0.001F, 0, 500};
    };

    Controllers(Command_Table& commands, const Unit_Time& time, World& world);

    void reset();

    Settings settings;

private:
    Axis& axis(unsigned char index);
    /// A controller that is started takes its axis over from the other one.
    void start(unsigned char index, Running controller, float target);
    /// Stopping a controller that does not run does nothing.
    void stop(unsigned char index, Running controller);
};

}
