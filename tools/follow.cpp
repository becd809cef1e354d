#include "commands.h"
#include "failure.h"
#include "stop.h"

#include <ostream>

namespace zavra::tools
{

int follow(Unit& unit, const Device_Action& action, std::chrono::nanoseconds interval, unsigned int count,
           const std::function<void(const Answer&)>& write, std::ostream& errors)
{
    Rhythm rhythm(interval, Steady::now());
    bool came_through = false;
    for (unsigned int reading = 1;; ++reading) {
        try {
            write(action.run(unit));
            came_through = true;
        } catch (const ZAVRA_100_Exception& failure) {
            errors << "zavractl: " << printable(in_short(failure.what())) << std::endl;
        }
        if (reading == count || !wait_until(rhythm.next(Steady::now())))
            return came_through ? 0 : 1;
    }
}

}
