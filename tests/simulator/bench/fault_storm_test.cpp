#include "protocol/codec.h"
#include "simulator/bench/journal.h"
#include "simulator/bench/test_bench.h"
#include "tests/simulator/settings.h"
#include "tests/support/simulated_bus.h"
#include "tests/support/waits.h"

using namespace zavra;
using namespace zavra::test;

/// An application that goes on and on while everything goes wrong. The unit has a twin for which nothing does, and
/// which is given what reached the unit undamaged: it knows the right answers.
struct Storm
{
    Storm(std::filesystem::path bus_directory, unsigned long long seed)
        : directory(std::move(bus_directory)),
          bench(clock, {.seed = seed}),
          server(directory, "i2c-0", bench.devices()),
          random(seed)
    {
        ::setenv("VELM_DEBUG", "", 1); // thousands of warnings otherwise
        clock_of_waits = &clock;
        bench.unit().faults.observe([this](const Transaction& transaction) { follow(transaction); });
    }
    ~Storm() { clock_of_waits = nullptr; }

    void run(unsigned int calls)
    {
        for (unsigned int i = 0; i < calls; ++i) {
            if (i % 500 == 0)
                for (std::size_t fault = 0; fault < number_of_faults; ++fault)
                    bench.unit().faults.set_rate({static_cast<Fault>(fault), 0.03, Clock::Time(60)});
            if (i % 500 == 480)
                bench.unit().faults.set_rate({Fault::crc, 0.9}); // enough to exhaust the library's retries
            clock.advance(Clock::Time(20));
            const Setting& setting = all[static_cast<std::size_t>(random() % all.size())];
            SCOPED_TRACE("call " + std::to_string(i) + ": " + setting.set.method);
            random() % 2 == 0 ? set(setting) : get(setting);
        }
        bench.unit().faults.clear();
        const unsigned int deceived_before = deceived;
        for (const Setting& setting : all)
            get(setting);
        EXPECT_EQ(deceived, deceived_before) << "with the faults gone, the unit and its twin are the same";
    }

    std::string journal;
    std::set<Fault> faults;
    unsigned int deceived = 0; ///< replies that passed the check and yet were not the answer to the question

private:
    /// Called in the server's thread, while the library waits for its answer.
    void follow(const Transaction& transaction)
    {
        const std::lock_guard guard(mutex);
        if (transaction.fault)
            faults.insert(*transaction.fault);
        if (transaction.fault == Fault::reset)
            twin.reset();
        if (!transaction.is_read)
            right_answers.clear();
        if (!transaction.is_read && transaction.error == 0 && transaction.fault != Fault::request) {
            const std::span<const unsigned char> frame(transaction.bytes.data(), transaction.bytes.size() - crc_bytes);
            right_answers =
                twin.command(zavra::get<unsigned short>(frame.data()), frame.subspan(frame_header_bytes)).replies;
        }
        journal += journal_line("i2c-0", 10, transaction) + '\n';
        transactions.push_back(transaction);
    }

    std::vector<Transaction> take_transactions()
    {
        const std::lock_guard guard(mutex);
        return std::exchange(transactions, {});
    }

    void set(const Setting& setting)
    {
        Octets payload(setting.index_bytes + setting.value_bytes);
        for (unsigned char& byte : payload)
            byte = static_cast<unsigned char>(random() & 0x3FU); // makes every float a number
        std::fill_n(payload.begin(), setting.index_bytes, static_cast<unsigned char>(0));
        const std::string message = message_of<Device_Failure>([&] {
            device.ZAVRA_Generic_Set(setting.set.identifier, payload.data(), static_cast<unsigned>(payload.size()));
        });
        const auto made = take_transactions();
        ASSERT_EQ(made.size(), 1U);
        EXPECT_EQ(message, made[0].error == 0 ? fine : generic_set(made[0]));
    }

    void get(const Setting& setting)
    {
        Octets index(setting.index_bytes, 0);
        const Octets untouched(setting.value_bytes, 0xA5);
        Octets value = untouched;
        const std::string message = message_of<Device_Failure>([&] {
            device.ZAVRA_Generic_Get(setting.get.identifier, index.data(), static_cast<unsigned>(index.size()),
                                     value.data(), static_cast<unsigned>(value.size()));
        });
        const auto made = take_transactions();
        ASSERT_FALSE(made.empty());
        const Transaction& last = made.back();
        EXPECT_TRUE(std::all_of(made.begin(), made.end() - 1, [](const Transaction& each) {
            return each.error == 0 && (!each.is_read || reference_crc(each.bytes) != 0);
        })) << "no reason to go on";

        const std::size_t wanted = value.size() + crc_bytes;
        const bool complete = last.is_read && last.error == 0 && last.bytes.size() == wanted;
        if (!complete || reference_crc(last.bytes) != 0) {
            EXPECT_EQ(message, "Failed to use Generic-GET for ZAVRA" +
                                   (!last.is_read ? ": Generic-SET command failed (" + generic_set(last)
                                    : complete    ? " (Bad response CRC, Retry failed"
                                                  : " (" + bus_failure(last, wanted)) +
                                   ")");
            EXPECT_EQ(value, untouched);
            EXPECT_TRUE(!complete || made.size() == 20);
            return;
        }
        EXPECT_EQ(message, fine);
        EXPECT_EQ(with_crc(value), last.bytes);
        if (std::find(right_answers.begin(), right_answers.end(), value) == right_answers.end()) {
            // A reply to the request before; or, where the unit has none, bytes that pass for one: FF bytes, damaged or
            // as many as pass the check by themselves.
            EXPECT_TRUE(last.fault == Fault::stale || last.fault == Fault::reset ||
                        made[made.size() - 2].fault == Fault::request);
            ++deceived;
        }
    }

    std::string generic_set(const Transaction& transaction) const
    {
        return "Failed to use Generic-SET for ZAVRA (" + bus_failure(transaction, transaction.bytes.size()) + ")";
    }

    std::string bus_failure(const Transaction& transaction, std::size_t size) const
    {
        std::string reason = std::generic_category().message(transaction.error);
        if (transaction.error == ENXIO)
            reason = "not acknowledged: " + reason;
        else if (transaction.error == 0)
            reason = "the simulated bus answered with " + std::to_string(transaction.bytes.size()) +
                     " data bytes instead of " + std::to_string(size);
        return std::string("Cannot ") + (transaction.is_read ? "read " : "write ") + std::to_string(size) + " bytes " +
               (transaction.is_read ? "from" : "to") + " address 10 (0xA) on " + (directory / "i2c-0").string() + " (" +
               reason + ")";
    }

    const std::string fine = "nothing was thrown";
    const std::filesystem::path directory;
    Manual_Clock clock;
    Test_Bench bench;
    Canned_World world;
    Simulated_Unit twin{world, bench.time};
    std::mutex mutex;
    std::vector<Command_Table::Octets> right_answers; ///< to the last request
    std::vector<Transaction> transactions;
    const std::vector<Setting> all = settings();
    Bus_Server server;
    ZAVRA_100 device{10, "i2c-0"};
    std::mt19937_64 random;
};

TEST_F(Bus_Test, ten_thousand_calls_in_a_storm_each_succeed_or_say_what_went_wrong)
{
    Storm storm{directory, 7};
    storm.run(10'000);
    EXPECT_EQ(storm.faults.size(), number_of_faults);
}

TEST_F(Bus_Test, the_same_seed_gives_the_same_journal_through_the_bus)
{
    const auto journal = [&](unsigned long long seed) {
        Storm storm{directory, seed};
        storm.run(1000);
        return storm.journal;
    };
    const std::string first = journal(8);
    EXPECT_EQ(first, journal(8));
    EXPECT_NE(first, journal(9));
}
