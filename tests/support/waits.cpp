#include "waits.h"

#include <unistd.h>

extern "C" int usleep(useconds_t usec)
{
    if (zavra::test::clock_of_waits)
        zavra::test::clock_of_waits->advance(
            std::chrono::ceil<zavra::simulator::Clock::Time>(std::chrono::microseconds(usec)));
    return 0;
}
