#pragma once

#include <sys/time.h>

namespace zavra::test
{

/// As long as it lives, a signal that the application catches comes every 5 ms and interrupts system calls.
struct Interval_Timer
{
    Interval_Timer()
    {
        struct sigaction action = {};
        action.sa_handler = [](int) { count = count + 1; };
        ::sigaction(SIGALRM, &action, nullptr);
        set(5000);
    }
    ~Interval_Timer() { set(0); }

    static inline volatile std::sig_atomic_t count = 0;

    static void set(long usec)
    {
        const itimerval timer = {{0, usec}, {0, usec}};
        ::setitimer(ITIMER_REAL, &timer, nullptr);
    }
};

}
