#pragma once

#include "../unit/simulated_unit.h"
#include "agenda.h"
#include "fault.h"

#include <array>
#include <functional>
#include <mutex>
#include <optional>
#include <random>
#include <vector>

namespace zavra::simulator
{

/// What happened in one transaction, as the driver sees it.
struct Transaction
{
    Clock::Time time{};
    bool is_read = false;
    int error = 0;                        ///< 0 or an errno value
    std::vector<unsigned char> bytes;     ///< what the driver wrote or got
    std::vector<unsigned char> unit_side; ///< what the unit got or gave, where that is something else
    std::vector<unsigned char> request;   ///< for a read: what the driver wrote last
    std::optional<Fault> fault;
};

/// What the devices of one bus share.
struct Bus_Line
{
    std::atomic<Clock::Time::rep> dead_until{0};
};

/// Stands before a unit on its bus and lets things go wrong: with a probability, or on command. The same seed and the
/// same transactions at the same times give the same faults.
class Fault_Injector : public Bus_Device
{
public:
    Fault_Injector(Simulated_Unit& unit, Agenda& time, Bus_Line& line, unsigned long long seed)
        : unit_(unit),
          time_(time),
          line_(line),
          random_(seed)
    {
    }

    /// From now on; a probability of 0 ends it.
    void set_rate(const Fault_Rate& rate);

    /// Those with a probability.
    std::vector<Fault_Rate> rates() const;

    /// Once. What lasts starts now; the rest befalls the next transaction that it can befall.
    void inject(Fault fault, Clock::Time duration = default_fault_duration);

    /// No more faults, and those that last are over.
    void clear();

    /// Told of each transaction when it is over; it does not call the injector.
    void observe(std::function<void(const Transaction&)> observer);

    int write(std::span<const unsigned char> bytes) override;
    int read(std::vector<unsigned char>& bytes) override;

private:
    void start(Fault fault, Clock::Time duration);
    bool strikes(Fault fault);
    std::optional<Fault> first_to_strike(std::initializer_list<Fault> faults);
    Transaction begin();
    void flip_bits(std::vector<unsigned char>& bytes);

    Simulated_Unit& unit_;
    Agenda& time_;
    Bus_Line& line_;
    mutable std::mutex mutex_;
    std::mt19937_64 random_;
    std::array<Fault_Rate, number_of_faults> rates_{};
    std::vector<Fault> pending_;
    Clock::Time hangs_until_{0};
    std::vector<unsigned char> request_;
    std::vector<unsigned char> reply_;
    std::vector<unsigned char> reply_before_;
    std::function<void(const Transaction&)> observer_ = [](const Transaction&) {};
};

}
