#include "commands.h"
#include "failure.h"
#include "stop.h"

#include <ostream>

namespace zavra::tools
{

int follow(ZAVRA_100& device, const Device_Action& action, std::chrono::nanoseconds interval, unsigned int count,
           Answer_Writer& writer, std::ostream& errors)
{
    Rhythm rhythm(interval, Steady::now());
    bool came_through = false;
    for (unsigned int reading = 1;; ++reading) {
        try {
            writer.write(action.run(device));
            came_through = true;
        } catch (const ZAVRA_100_Exception& failure) {
            errors << "zavractl: " << in_short(failure.what()) << std::endl;
        }
        if (reading == count || !wait_until(rhythm.next(Steady::now())))
            return came_through ? 0 : 1;
    }
}

}
