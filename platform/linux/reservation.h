#pragma once

#include "file_descriptor.h"

#include <cstdint>
#include <string>

/// Turns of several programs at one device: a reply belongs to the request before it, whoever made it.
namespace zavra::platform
{

/// What is thrown to one who does not get a turn, or has lost it.
struct In_Use
{
    int process; ///< who has it
};

/// The turns of one connection. A write waits until the device is nobody else's and reserves it until the read after it
/// is done, or for 150 ms. Each object counts as a program of its own.
class Reservation
{
public:
    /// Programs that name the same file take turns. Where it cannot be made there are none: this is told on debug level
    /// 4, and every transaction goes ahead.
    explicit Reservation(std::string file);
    ~Reservation();
    Reservation(const Reservation&) = delete;
    Reservation& operator=(const Reservation&) = delete;

    /// @throws In_Use  when it is not our turn within 5 s
    template <class Transaction>
    void write(Transaction transaction)
    {
        wait_for_turn();
        has_written_ = true;
        released_on_failure(transaction);
        hold();
    }

    /// @throws In_Use  when another program has used the device since our write, so that the reply may be its own
    template <class Transaction>
    void read(Transaction transaction)
    {
        resume();
        released_on_failure(transaction);
        if (!release())
            fail_in_use();
    }

private:
    struct Shared;

    template <class Transaction>
    void released_on_failure(Transaction transaction)
    {
        try {
            transaction();
        } catch (...) {
            release();
            throw;
        }
    }

    bool map();
    bool replaced() const;
    void unmap();
    void wait_for_turn();
    void resume();
    void hold();
    bool release();
    [[noreturn]] void fail_in_use() const;

    const std::string file_;
    const std::uint32_t program_;
    File_Descriptor descriptor_;
    Shared* shared_ = nullptr; ///< none: no turns
    bool has_written_ = false;
};

}
