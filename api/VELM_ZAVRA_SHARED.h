#pragma once

#include "VELM_ZAVRA_API.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

/// @file
/// One unit for several threads. Header only.

namespace velm_zavra
{

namespace detail
{

/// A lock that threads get in the order in which they asked: a mutex may go to who asks at once again, time after time,
/// and calls last so long that nobody else would have it. The thread that has it may take it again.
class Turn
{
public:
    void lock()
    {
        std::unique_lock<std::mutex> guard(mutex_);
        if (holder_ != std::this_thread::get_id()) {
            const unsigned long long ticket = next_ticket_++;
            while (ticket != turn_)
                changed_.wait(guard);
            holder_ = std::this_thread::get_id();
        }
        ++depth_;
    }

    void unlock()
    {
        std::lock_guard<std::mutex> guard(mutex_);
        if (--depth_ > 0)
            return;
        holder_ = std::thread::id();
        ++turn_;
        changed_.notify_all();
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::thread::id holder_;
    unsigned int depth_ = 0;
    unsigned long long next_ticket_ = 0;
    unsigned long long turn_ = 0;
};

}

/// An object that threads share, one call at a time:
///
///     velm_zavra::Shared<> unit(10, "i2c-0");             // what VELM_ZAVRA_API's constructors take
///     unit->Set_Epoch_Time(epoch_time_msec);              // waits while another thread's call lasts
///     {
///         velm_zavra::Shared<>::Lock calls = unit.lock(); // no other thread's call comes between these
///         calls->Clear_System_Error_Register();
///         calls->Set_Operation_Mode_Idle();
///     }
///
/// Threads come in the order in which they asked. A thread may hold several locks of an object. Not safe in signal
/// handlers.
template <class Unit = VELM_ZAVRA_API>
class Shared
{
public:
    /// What keeps other threads out for as long as it lives.
    class Lock
    {
    public:
        Unit* operator->() const { return unit_; }
        Unit& operator*() const { return *unit_; }

    private:
        friend class Shared;
        Lock(detail::Turn& turn, Unit& unit) : lock_(turn), unit_(&unit) {}

        std::unique_lock<detail::Turn> lock_;
        Unit* unit_;
    };

    /// Constructs the object.
    template <class... Argument>
    explicit Shared(Argument&&... arguments) : unit_(std::forward<Argument>(arguments)...)
    {
    }

    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;

    /// Waits until no other thread has a lock.
    Lock lock() { return Lock(turn_, unit_); }

    /// Locks until the end of the expression.
    Lock operator->() { return lock(); }

private:
    detail::Turn turn_;
    Unit unit_;
};

}
