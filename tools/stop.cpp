#include "stop.h"

#include <algorithm>
#include <cerrno>
#include <ctime>

#include <pthread.h>

namespace zavra::tools
{

namespace
{

sigset_t stop_signals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, signal);
    return signals;
}

}

Held_Signals::Held_Signals()
{
    const sigset_t signals = stop_signals();
    pthread_sigmask(SIG_BLOCK, &signals, &before_);
}

Held_Signals::~Held_Signals()
{
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

bool wait_until(Steady::time_point moment)
{
    const sigset_t signals = stop_signals();
    for (;;) {
        using std::chrono::nanoseconds;
        const auto left = std::max(nanoseconds(0), std::chrono::ceil<nanoseconds>(moment - Steady::now()));
        constexpr long long nanoseconds_per_second = 1'000'000'000;
        const timespec timeout{static_cast<time_t>(left.count() / nanoseconds_per_second),
                               static_cast<long>(left.count() % nanoseconds_per_second)};
        if (sigtimedwait(&signals, nullptr, &timeout) > 0)
            return false;
        if (errno == EAGAIN)
            return true;
    }
}

Steady::time_point Rhythm::next(Steady::time_point now)
{
    beat_ += interval_;
    if (beat_ < now)
        beat_ += (now - beat_ + interval_ - Steady::duration(1)) / interval_ * interval_;
    return beat_;
}

}
