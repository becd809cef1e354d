#include "simulator/journal.h"
#include "simulator/test_bench.h"
#include "tests/support/bytes.h"

#include <cerrno>
#include <gmock/gmock.h>

namespace zavra::test
{

namespace
{

const Octets ask_scheduler = with_crc(octets("0228 0000"));
const Octets ask_hil = with_crc(octets("AD02 0000"));

}

/// A unit with a scheduler register of 12345678 and a HIL configuration of 0a0b0c0d.
class Fault_Test : public ::testing::Test
{
protected:
    Fault_Test()
    {
        unit.unit.command(0x0229, octets("12345678"));
        unit.unit.command(0xAD01, octets("0A0B0C0D"));
        unit.faults.observe(
            [this](const Transaction& transaction) { journal.push_back(journal_line("i2c-0", 10, transaction)); });
    }

    std::string read(std::size_t size = 5)
    {
        Octets bytes(size);
        const int error = unit.faults.read(bytes);
        return error == 0 ? hexadecimal(bytes) : std::to_string(error);
    }

    std::string ask(const Octets& request)
    {
        const int error = unit.faults.write(request);
        return error == 0 ? read() : "write " + std::to_string(error);
    }

    std::string answer(const std::string& payload) { return hexadecimal(with_crc(octets(payload))); }

    Manual_Clock clock;
    Test_Bench bench{clock, {.unit = {.latency = Clock::Time(0)}}};
    Test_Bench::Unit& unit = bench.unit();
    std::vector<std::string> journal;
};

TEST_F(Fault_Test, a_fault_that_is_injected_befalls_one_transaction)
{
    const std::string right = answer("12345678");
    const auto befallen = [&](Fault fault) {
        unit.faults.inject(fault);
        const std::string result = ask(ask_scheduler);
        EXPECT_EQ(ask(ask_scheduler), right) << "once is enough";
        return result;
    };
    EXPECT_EQ(befallen(Fault::nak_write), "write " + std::to_string(ENXIO));
    EXPECT_EQ(befallen(Fault::nak_read), std::to_string(ENXIO));
    EXPECT_EQ(befallen(Fault::request), "ffffffffff") << "a damaged request is not executed and has no reply";
    EXPECT_EQ(unit.unit.parts.system.error_register, System::bad_request_crc);
    const std::string flipped = befallen(Fault::crc);
    EXPECT_NE(flipped, right);
    EXPECT_NE(reference_crc(octets(flipped)), 0);
    const std::string cut = befallen(Fault::short_reply);
    EXPECT_LT(cut.size(), right.size());
    EXPECT_TRUE(right.starts_with(cut));

    ask(ask_hil);
    unit.faults.inject(Fault::stale);
    EXPECT_EQ(ask(ask_scheduler), answer("0A0B0C0D")) << "a valid reply to the request before";
    EXPECT_EQ(read(), right) << "the unit itself had the right one";

    clock.advance(Clock::Time(5000));
    unit.faults.inject(Fault::reset);
    EXPECT_EQ(unit.unit.telemetry.standard().system_time_msec, 0U);
    EXPECT_EQ(ask(ask_scheduler), answer("00000000")) << "the setting is lost";
}

TEST_F(Fault_Test, flipped_bits_never_pass_the_check)
{
    unit.faults.set_rate({Fault::crc, 1});
    unit.faults.write(ask_scheduler);
    for (int i = 0; i < 2000; ++i)
        EXPECT_NE(reference_crc(octets(read())), 0);

    unit.faults.set_rate({Fault::request, 1});
    for (int i = 0; i < 2000; ++i)
        unit.faults.write(ask_scheduler);
    EXPECT_EQ(unit.unit.parts.system.counters.failed_commands, 2000U);
}

TEST_F(Fault_Test, a_unit_hangs_and_a_bus_is_dead_for_a_time)
{
    const std::string right = answer("12345678");
    unit.faults.inject(Fault::hang, Clock::Time(100));
    unit.faults.inject(Fault::dead_bus, Clock::Time(50));
    EXPECT_EQ(ask(ask_scheduler), "write " + std::to_string(EIO));
    clock.advance(Clock::Time(50));
    EXPECT_EQ(ask(ask_scheduler), "write " + std::to_string(ETIMEDOUT));
    EXPECT_EQ(read(), std::to_string(ETIMEDOUT));
    clock.advance(Clock::Time(50));
    EXPECT_EQ(ask(ask_scheduler), right);

    Test_Bench two{clock, {.addresses = {10, 11}}};
    two.unit(10).faults.inject(Fault::hang);
    EXPECT_EQ(two.unit(10).faults.write(ask_scheduler), ETIMEDOUT);
    EXPECT_EQ(two.unit(11).faults.write(ask_scheduler), 0);
    two.unit(10).faults.inject(Fault::dead_bus);
    EXPECT_EQ(two.unit(11).faults.write(ask_scheduler), EIO) << "a bus is dead for everybody on it";
    two.unit(10).faults.clear();
    EXPECT_EQ(two.unit(10).faults.write(ask_scheduler), 0);
    EXPECT_EQ(two.unit(11).faults.write(ask_scheduler), 0);
}

TEST_F(Fault_Test, what_is_on_the_agenda_happens_at_its_own_time_however_late_somebody_looks)
{
    bench.time.at(Clock::Time(3000), [&] { unit.faults.inject(Fault::hang, Clock::Time(500)); });
    bench.time.at(Clock::Time(1000), [&] { unit.faults.inject(Fault::reset); });
    clock.advance(Clock::Time(3499));
    EXPECT_EQ(ask(ask_scheduler), "write " + std::to_string(ETIMEDOUT));
    EXPECT_EQ(unit.unit.telemetry.standard().system_time_msec, 2499U);
    clock.advance(Clock::Time(1));
    EXPECT_EQ(ask(ask_scheduler), answer("00000000"));

    const Agenda fast{clock, 10};
    clock.advance(Clock::Time(7));
    EXPECT_EQ(fast.now(), Clock::Time(70));
}

TEST_F(Fault_Test, rates_are_met_and_the_same_seed_gives_the_same_journal)
{
    const auto run = [](unsigned long long seed) {
        Manual_Clock time;
        Test_Bench other{time, {.seed = seed}};
        std::string text;
        unsigned int naks = 0;
        other.unit().faults.observe([&](const Transaction& transaction) {
            text += journal_line("i2c-0", 10, transaction) + '\n';
            naks += transaction.fault == Fault::nak_write;
        });
        for (const char* rate : {"crc=0.1", "request=0.1", "nak-write=0.1", "nak-read=0.1", "short=0.1", "stale=0.1",
                                 "reset=0.01", "hang=0.01:50", "dead-bus=0.01:50"})
            other.unit().faults.set_rate(parse_fault_rate(rate));
        for (int i = 0; i < 2000; ++i) {
            other.unit().faults.write(i % 2 == 0 ? ask_scheduler : ask_hil);
            time.advance(Clock::Time(20));
            Octets bytes(5);
            other.unit().faults.read(bytes);
        }
        EXPECT_NEAR(naks, 185, 45);
        return text;
    };
    const std::string journal_of_7 = run(7);
    EXPECT_EQ(journal_of_7, run(7));
    EXPECT_NE(journal_of_7, run(8));
}

TEST_F(Fault_Test, a_rate_is_written_as_text)
{
    const Fault_Rate rate = parse_fault_rate("hang=0.25:1500");
    EXPECT_EQ(rate.fault, Fault::hang);
    EXPECT_EQ(rate.probability, 0.25);
    EXPECT_EQ(rate.duration, Clock::Time(1500));

    const std::pair<const char*, const char*> cases[] = {
        {"crc", "is no fault; expected KIND=PROBABILITY"},
        {"crc=", "is no fault"},
        {"crc=0.5x", "is no fault"},
        {"hang=0.5:", "is no fault"},
        {"hang=0.5:-1", "is no fault"},
        {"crc=1.5", "a number from 0 to 1"},
        {"crc=nan", "a number from 0 to 1"},
        {"flood=0.1", "There is no fault \"flood\""},
        {"=0.1", "(there are: reset, dead-bus, hang, nak-"},
    };
    for (const auto& each : cases)
        EXPECT_THAT(message_of<std::invalid_argument>([&] { parse_fault_rate(each.first); }),
                    testing::HasSubstr(each.second));
}

TEST_F(Fault_Test, the_journal_tells_what_the_driver_saw)
{
    clock.advance(Clock::Time(1200));
    ask(ask_scheduler);
    unit.faults.inject(Fault::nak_write);
    unit.faults.write(with_crc(octets("0229 0400 00000001")));
    EXPECT_THAT(
        journal,
        testing::ElementsAre(
            R"({"time_msec":1200,"bus":"i2c-0","address":10,"direction":"write","bytes":"022800003e",)"
            R"("command":"Get_System_Scheduler_Register","fields":{}})",
            R"({"time_msec":1200,"bus":"i2c-0","address":10,"direction":"read","bytes":"123456781c",)"
            R"("command":"Get_System_Scheduler_Register","fields":{"scheduler_register":305419896}})",
            R"({"time_msec":1200,"bus":"i2c-0","address":10,"direction":"write","bytes":"022904000000000111",)"
            R"("command":"Set_System_Scheduler_Register","fields":{"scheduler_register":1},"fault":"nak-write",)"
            R"("error":"No such device or address"})"));

    journal.clear();
    unit.faults.inject(Fault::crc);
    ask(ask_scheduler);
    EXPECT_THAT(journal.at(1), testing::AllOf(testing::HasSubstr(R"("unit_bytes":"123456781c")"),
                                              testing::HasSubstr(R"("crc":"wrong","fault":"crc")"),
                                              testing::Not(testing::HasSubstr("fields"))));
    journal.clear();
    unit.faults.write(octets("01"));
    read();
    EXPECT_THAT(journal.at(0), testing::EndsWith(R"("bytes":"01"})")) << "what is no request is written down too";
}

TEST_F(Fault_Test, a_journal_that_cannot_be_written_ends_with_a_message)
{
    Journal full("/dev/full");
    testing::internal::CaptureStderr();
    full.write("{}");
    full.write("{}");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "The journal /dev/full ends here: No space left on device\n");
    EXPECT_EQ(message_of<std::runtime_error>([] { Journal("/nowhere/journal"); }),
              "Journal /nowhere/journal: No such file or directory");
}

}
