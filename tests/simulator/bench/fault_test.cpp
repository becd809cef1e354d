#include "simulator/bench/journal.h"
#include "simulator/bench/test_bench.h"
#include "tests/support/bytes.h"

using namespace zavra::test;

using namespace zavra::simulator;

const Octets ask_scheduler = with_crc(octets("0228 0000"));
const Octets ask_hil = with_crc(octets("AD02 0000"));

/// A unit with a scheduler register of 12345678 and a HIL configuration of 0a0b0c0d.
struct Fault_Test : testing::Test
{
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
    Lines journal;
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
    EXPECT_NE(reference_crc(octets(befallen(Fault::crc))), 0);
    const std::string cut = befallen(Fault::short_reply);
    EXPECT_TRUE(cut != right && right.starts_with(cut)) << cut;

    ask(ask_hil);
    unit.faults.inject(Fault::stale);
    EXPECT_EQ(ask(ask_scheduler), answer("0A0B0C0D")) << "a valid reply to the request before";
    EXPECT_EQ(read(), right) << "the unit itself had the right one";

    clock.advance(Clock::Time(5000));
    unit.faults.inject(Fault::reset);
    EXPECT_EQ(unit.unit.telemetry.standard().system_time_msec, 0U);
    EXPECT_EQ(ask(ask_scheduler), answer("00000000")) << "the setting is lost";
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
    const auto written = [&] {
        return std::pair(two.unit(10).faults.write(ask_scheduler), two.unit(11).faults.write(ask_scheduler));
    };
    two.unit(10).faults.inject(Fault::hang);
    EXPECT_EQ(written(), std::pair(ETIMEDOUT, 0));
    two.unit(10).faults.inject(Fault::dead_bus);
    EXPECT_EQ(written().second, EIO) << "a bus is dead for everybody on it";
    two.unit(10).faults.clear();
    EXPECT_EQ(written(), std::pair(0, 0));
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

    Agenda fast{clock, 10};
    clock.advance(Clock::Time(7));
    EXPECT_EQ(fast.now(), Clock::Time(70));
    fast.advance(Clock::Time(1000));
    fast.set_factor(0.1);
    clock.advance(Clock::Time(50));
    EXPECT_EQ(fast.now(), Clock::Time(1075));

    Simulated_Unit slow{unit.world, fast, {.latency = Clock::Time(20)}};
    std::vector<unsigned char> reply(5);
    slow.write(ask_scheduler);
    clock.advance(Clock::Time(19));
    EXPECT_EQ(slow.read(reply), ENXIO);
    clock.advance(Clock::Time(1));
    EXPECT_EQ(slow.read(reply), 0) << "a latency is one of the bus, whatever the factor";
}

TEST_F(Fault_Test, a_rate_is_written_as_text_and_met)
{
    const auto [fault, probability, duration] = parse_fault_rate("hang=0.25:1500");
    EXPECT_EQ(std::tuple(fault, probability, duration), std::tuple(Fault::hang, 0.25, Clock::Time(1500)));
    unit.faults.set_rate({Fault::nak_write, 0.1});
    int naks = 0;
    for (int i = 0; i < 2000; ++i)
        naks += unit.faults.write(ask_scheduler) == ENXIO;
    EXPECT_NEAR(naks, 200, 45);

    for (const auto& [text, message] : std::vector<std::pair<const char*, const char*>>{
             {"crc", "is no fault; expected KIND=PROBABILITY"},
             {"crc=", "is no fault"},
             {"crc=0.5x", "is no fault"},
             {"hang=0.5:", "is no fault"},
             {"hang=0.5:-1", "is no fault"},
             {"crc=0.5:100", "The fault crc has no duration"},
             {"dead-bus=0.5:0", "The fault dead-bus lasts 1 ms at least"},
             {"crc=1.5", "a number from 0 to 1"},
             {"crc=nan", "a number from 0 to 1"},
             {"=0.1", "There is no fault \"\" (there are: reset, dead-bus, hang, nak-"},
         })
        EXPECT_THAT(message_of<std::invalid_argument>([&] { parse_fault_rate(text); }), HasSubstr(message));
}

TEST_F(Fault_Test, the_journal_tells_what_the_driver_saw)
{
    clock.advance(Clock::Time(1200));
    ask(ask_scheduler);
    unit.faults.inject(Fault::nak_write);
    unit.faults.write(with_crc(octets("0229 0400 00000001")));
    EXPECT_THAT(
        journal,
        ElementsAre(
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
    EXPECT_THAT(journal.at(1), AllOf(HasSubstr(R"("unit_bytes":"123456781c")"),
                                     HasSubstr(R"("crc":"wrong","fault":"crc")"), Not(HasSubstr("fields"))));
    journal.clear();
    unit.faults.write(octets("01"));
    read();
    EXPECT_THAT(journal.at(0), EndsWith(R"("bytes":"01"})")) << "what is no request is written down too";
}
