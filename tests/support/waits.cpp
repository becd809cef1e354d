#include "waits.h"

#include <thread>
#include <unistd.h>

namespace zavra::test
{

namespace
{

Waits::Wait current_wait;

}

Waits::Waits(Wait wait)
{
    current_wait = std::move(wait);
}

Waits::~Waits()
{
    current_wait = nullptr;
}

Waits::Wait Waits::advancing(Manual_Clock& clock)
{
    return [&clock](std::chrono::microseconds time) { clock.advance(std::chrono::ceil<Clock::Time>(time)); };
}

Waits::Wait Waits::divided_by(double factor)
{
    return [factor](std::chrono::microseconds time) { std::this_thread::sleep_for(time / factor); };
}

}

extern "C" int usleep(useconds_t usec)
{
    if (zavra::test::current_wait)
        zavra::test::current_wait(std::chrono::microseconds(usec));
    return 0;
}
