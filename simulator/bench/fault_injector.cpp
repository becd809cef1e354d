#include "fault_injector.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace zavra::simulator
{

void Fault_Injector::set_rate(const Fault_Rate& rate)
{
    checked_probability(rate.probability);
    const std::lock_guard guard(mutex_);
    rates_[static_cast<std::size_t>(rate.fault)] = rate;
}

std::vector<Fault_Rate> Fault_Injector::rates() const
{
    const std::lock_guard guard(mutex_);
    std::vector<Fault_Rate> rates;
    std::copy_if(rates_.begin(), rates_.end(), std::back_inserter(rates),
                 [](const Fault_Rate& rate) { return rate.probability > 0; });
    return rates;
}

void Fault_Injector::inject(Fault fault, Clock::Time duration)
{
    const std::lock_guard guard(mutex_);
    if (fault == Fault::reset || lasts(fault))
        start(fault, duration);
    else
        pending_.push_back(fault);
}

void Fault_Injector::clear()
{
    const std::lock_guard guard(mutex_);
    rates_ = {};
    pending_.clear();
    hangs_until_ = Clock::Time(0);
    line_.dead_until = 0;
}

void Fault_Injector::observe(std::function<void(const Transaction&)> observer)
{
    const std::lock_guard guard(mutex_);
    observer_ = std::move(observer);
}

void Fault_Injector::start(Fault fault, Clock::Time duration)
{
    const Clock::Time until = time_.now() + duration;
    if (fault == Fault::dead_bus) {
        line_.dead_until = until.count();
    } else if (fault == Fault::hang) {
        hangs_until_ = until;
    } else {
        const auto unit_guard = unit_.lock();
        unit_.reset();
    }
}

bool Fault_Injector::strikes(Fault fault)
{
    // Drawn by hand: the distributions of the standard library differ from one implementation to the next.
    const double probability = rates_[static_cast<std::size_t>(fault)].probability;
    const bool by_chance = probability > 0 && static_cast<double>(random_() >> 11U) * 0x1p-53 < probability;
    const auto ordered = std::find(pending_.begin(), pending_.end(), fault);
    if (ordered == pending_.end())
        return by_chance;
    pending_.erase(ordered);
    return true;
}

std::optional<Fault> Fault_Injector::first_to_strike(std::initializer_list<Fault> faults)
{
    const auto fault = std::find_if(faults.begin(), faults.end(), [this](Fault each) { return strikes(each); });
    return fault == faults.end() ? std::nullopt : std::optional(*fault);
}

/// What befalls a transaction in either direction.
Transaction Fault_Injector::begin()
{
    Transaction transaction;
    transaction.time = time_.now();
    const auto goes_on = [&] { return transaction.time.count() < line_.dead_until || transaction.time < hangs_until_; };
    if (!goes_on()) {
        transaction.fault = first_to_strike({Fault::reset, Fault::dead_bus, Fault::hang});
        if (transaction.fault)
            start(*transaction.fault, rates_[static_cast<std::size_t>(*transaction.fault)].duration);
    }
    if (goes_on()) {
        const bool dead = transaction.time.count() < line_.dead_until;
        transaction.fault = dead ? Fault::dead_bus : Fault::hang;
        transaction.error = dead ? EIO : ETIMEDOUT;
    }
    return transaction;
}

/// Flips one to eight bits within a stretch of eight, which is what the CRC finds without exception.
void Fault_Injector::flip_bits(std::vector<unsigned char>& bytes)
{
    if (bytes.empty())
        return;
    const std::size_t bits = 8 * bytes.size();
    const auto first = static_cast<std::size_t>(random_() % bits);
    const auto pattern = 1U | static_cast<unsigned int>(random_() & 0xFFU);
    for (std::size_t i = 0; i < 8 && first + i < bits; ++i)
        if ((pattern >> i & 1U) != 0)
            bytes[(first + i) / 8] ^= static_cast<unsigned char>(0x80U >> (first + i) % 8);
}

int Fault_Injector::write(std::span<const unsigned char> bytes)
{
    const Agenda::Standstill moment(time_);
    const std::lock_guard guard(mutex_);
    Transaction transaction = begin();
    transaction.bytes.assign(bytes.begin(), bytes.end());
    request_ = transaction.bytes;
    if (!transaction.fault)
        transaction.fault = first_to_strike({Fault::nak_write, Fault::request});
    if (transaction.fault == Fault::nak_write)
        transaction.error = ENXIO;
    if (transaction.error == 0) {
        if (!reply_.empty())
            reply_before_ = std::exchange(reply_, {});
        auto arriving = transaction.bytes;
        if (transaction.fault == Fault::request) {
            flip_bits(arriving);
            transaction.unit_side = arriving;
        }
        transaction.error = unit_.write(arriving);
    }
    observer_(transaction);
    return transaction.error;
}

int Fault_Injector::read(std::vector<unsigned char>& bytes)
{
    const Agenda::Standstill moment(time_);
    const std::lock_guard guard(mutex_);
    Transaction transaction = begin();
    transaction.is_read = true;
    transaction.request = request_;
    if (!transaction.fault)
        transaction.fault = first_to_strike({Fault::nak_read, Fault::short_reply, Fault::stale, Fault::crc});
    if (transaction.fault == Fault::nak_read)
        transaction.error = ENXIO;
    if (transaction.error == 0)
        transaction.error = unit_.read(bytes);
    if (transaction.error == 0) {
        reply_ = bytes;
        if (transaction.fault == Fault::short_reply) {
            bytes.resize(bytes.empty() ? 0 : static_cast<std::size_t>(random_() % bytes.size()));
        } else if (transaction.fault == Fault::stale) {
            const std::size_t size = bytes.size();
            bytes = reply_before_;
            bytes.resize(size, 0xFF);
        } else if (transaction.fault == Fault::crc) {
            flip_bits(bytes);
        }
        transaction.bytes = bytes;
        if (reply_ != bytes)
            transaction.unit_side = reply_;
    }
    observer_(transaction);
    return transaction.error;
}

}
