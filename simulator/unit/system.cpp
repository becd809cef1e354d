#include "system.h"

#include "../../protocol/system.h"

namespace zavra::simulator
{

System::System(Command_Table& commands, Unit_Time& time)
{
    using namespace protocol;
    commands.on(set_dcdc_configuration, [this](Register value) { settings.dcdc_configuration = value; });
    commands.on(set_epoch_time, [&time](Msec epoch) { time.set_epoch_msec(epoch); });
    commands.on(get_epoch_time, [&time] { return time.epoch_msec(); });
    commands.on(get_system_time, [&time] { return time.system_msec(); });
    commands.keep(set_system_scheduler_register, get_system_scheduler_register, settings.scheduler_register);
    commands.on(clear_system_error_register, [this] { error_register = 0; });
    commands.on(set_active_gyroscope, [this](unsigned char index) { settings.active_gyroscope = index; });
    commands.on(set_active_magnetometer, [this](unsigned char index) { settings.active_magnetometer = index; });
    commands.keep(set_temperature_update_interval, get_temperature_update_interval,
                  settings.temperature_update_interval_msec);
    commands.keep(set_power_update_interval, get_power_update_interval, settings.power_update_interval_msec);
    commands.keep(set_hil_configuration, get_hil_configuration, settings.hil_configuration);
}

void System::report(Error_Bit error)
{
    error_register |= error;
    ++counters.failed_commands;
}

void System::reset()
{
    settings = {};
    counters = {};
    error_register = 0;
}

}
