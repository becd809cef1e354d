#include "controllers.h"

#include "../../protocol/controllers.h"

namespace zavra::simulator
{

Controllers::Controllers(Command_Table& commands, const Unit_Time&, World&)
{
    using namespace protocol;
    using Index = unsigned char;

    // The two families of parameters share identifiers. Both getters answer; the length of the read chooses.
    commands.on(set_singleaxis_angularvelocity_controller_parameters,
                [this](Index index, const auto& parameters) { axis(index).angular_velocity = parameters; });
    commands.on(get_singleaxis_angularvelocity_controller_parameters,
                [this](Index index) { return axis(index).angular_velocity; });
    commands.on(set_singleaxis_anglestep_controller_parameters,
                [this](Index index, const auto& parameters) { axis(index).angle_step = parameters; });
    commands.on(get_singleaxis_anglestep_controller_parameters, [this](Index index) { return axis(index).angle_step; });

    commands.on(start_singleaxis_angularvelocity_controller,
                [this](Index index, float target) { start(index, Running::angular_velocity, target); });
    commands.on(stop_singleaxis_angularvelocity_controller,
                [this](Index index) { stop(index, Running::angular_velocity); });
    commands.on(start_singleaxis_anglestep_controller,
                [this](Index index, float target) { start(index, Running::angle_step, target); });
    commands.on(stop_singleaxis_anglestep_controller, [this](Index index) { stop(index, Running::angle_step); });

    commands.keep(set_threeaxis_bdot_controller_max_parameters, get_threeaxis_bdot_controller_max_parameters,
                  settings.bdot_max);
    commands.keep(set_threeaxis_bdot_controller_proportional_parameters,
                  get_threeaxis_bdot_controller_proportional_parameters, settings.bdot_proportional);
    commands.keep(set_threeaxis_sunpointing_controller_parameters, get_threeaxis_sunpointing_controller_parameters,
                  settings.sun_pointing);
    commands.keep(set_threeaxis_sliding_controller_parameters, get_threeaxis_sliding_controller_parameters,
                  settings.sliding);
}

Controllers::Axis& Controllers::axis(unsigned char index)
{
    if (index >= settings.axes.size())
        throw Refused("unknown axis");
    return settings.axes[index];
}

void Controllers::start(unsigned char index, Running controller, float target)
{
    Axis& started = axis(index);
    started.running = controller;
    started.target = target;
    ++started.starts;
}

void Controllers::stop(unsigned char index, Running controller)
{
    Axis& stopped = axis(index);
    if (stopped.running == controller) {
        stopped.running = Running::nothing;
        stopped.target = 0;
    }
}

void Controllers::reset()
{
    settings = {};
}

}
