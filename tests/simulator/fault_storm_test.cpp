#include "api/like_actuators.h"
#include "api/like_controllers.h"
#include "api/like_modes.h"
#include "api/like_sensors.h"
#include "device/protocol/crc8.h"
#include "device/protocol/json.h"
#include "simulator/bus_server.h"
#include "simulator/journal.h"
#include "simulator/test_bench.h"
#include "tests/support/simulated_bus.h"
#include "tests/support/waits.h"

#include <VELM_ZAVRA_API.h>
#include <ZAVRA_100.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <mutex>
#include <random>
#include <thread>

namespace zavra::test
{

namespace
{

using Api = VELM_ZAVRA_API;

/// A setting of the unit that an application writes and reads, its value as the bytes that travel.
struct Setting
{
    const Described_Command* setter;
    const Described_Command* getter;
    Octets index;            ///< which of the unit's sensors or axes, where it says
    std::string set_failure; ///< what the messages start with
    std::string get_failure;
    std::function<void(Api&, const Octets&)> set;
    std::function<Octets(Api&)> get;
};

template <class Value, class Set, class Get>
Setting setting(const std::string& method, const std::string& set_words, const std::string& get_words, Set set, Get get,
                const Octets& index = {})
{
    const auto* setter = find_command("Set_" + method);
    const auto* getter = find_command("Get_" + method);
    return {setter,
            getter,
            index,
            "Failed to " + set_words + " (Failed to " + setter->action + " (",
            "Failed to " + get_words + " (Failed to " + getter->action + " (",
            [set](Api& api, const Octets& bytes) { std::invoke(set, api, unpack<Value>(bytes.data())); },
            [get](Api& api) {
                Octets bytes(wire_size<Value>);
                pack(bytes.data(), static_cast<Value>(std::invoke(get, api)));
                return bytes;
            }};
}

/// At least one of every group of commands.
std::vector<Setting> settings()
{
    using Msec = unsigned long long;
    constexpr auto gyro = VELM_ZAVRA_API_GYRO_1;
    constexpr auto axis = VELM_ZAVRA_API_SINGLEAXIS_CONTROL_TARGET_AXIS(1);
    using Gyro = VELM_ZAVRA_API_GYROSCOPE_PARAMETERS;
    using Single = decltype(std::declval<Api>().Get_SingleAxis_AngularVelocity_Controller_Parameters(axis));
    return {
        setting<unsigned int>("System_Scheduler_Register", "set system scheduler register",
                              "get system scheduler register", &Api::Set_System_Scheduler_Register,
                              &Api::Get_System_Scheduler_Register),
        setting<unsigned int>("HIL_Configuration", "set hil configuration", "get hil configuration",
                              &Api::Set_HIL_Configuration, &Api::Get_HIL_Configuration),
        setting<Msec>("Temperature_Update_Interval", "set temperature update interval",
                      "get temperature update interval", &Api::Set_Temperature_Update_Interval,
                      &Api::Get_Temperature_Update_Interval),
        setting<Msec>("Power_Update_Interval", "set power update interval", "get power update interval",
                      &Api::Set_Power_Update_Interval, &Api::Get_Power_Update_Interval),
        setting<Gyro>(
            "Gyro_Parameters", "set gyro parameters", "get gyro parameters",
            [](Api& api, const Gyro& value) { api.Set_Gyro_Parameters(gyro, value); },
            [](Api& api) { return api.Get_Gyro_Parameters(gyro); }, {1}),
        setting<unsigned char>(
            "Startracker_Operation_Mode", "set star tracker operation mode", "get star tracker operation mode",
            [](Api& api, unsigned char mode) {
                api.Set_Startracker_Operation_Mode(VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE(mode));
            },
            &Api::Get_Startracker_Operation_Mode),
        setting<VELM_ZAVRA_API_MAGNETORQUER_PARAMETERS>(
            "Magnettorquer_Parameters", "set magnettorquer parameters", "get magnettorquer single parameters",
            &Api::Set_Magnettorquer_Parameters, &Api::Get_Magnettorquer_Parameters),
        // Its request is that of another getter, too.
        setting<Single>(
            "SingleAxis_AngularVelocity_Controller_Parameters",
            "Set Single-Axis Angular Velocity Controller Parameters",
            "Get Single-Axis Angular Velocity Controller Parameters",
            [](Api& api, const Single& value) {
                api.Set_SingleAxis_AngularVelocity_Controller_Parameters(axis, value);
            },
            [](Api& api) { return api.Get_SingleAxis_AngularVelocity_Controller_Parameters(axis); }, {1}),
        setting<VELM_ZAVRA_API_SUN_POINTING_CONTROLLER_PARAMETERS>(
            "ThreeAxis_SunPointing_Controller_Parameters", "Set Three-Axis Sun-Pointing Controller Parameters",
            "Get Three-Axis Sun-Pointing Controller Parameters", &Api::Set_ThreeAxis_SunPointing_Controller_Parameters,
            &Api::Get_ThreeAxis_SunPointing_Controller_Parameters),
        setting<VELM_ZAVRA_API_KALMAN_FILTER_PARAMETERS>(
            "KalmanFilter_Parameters", "set Kalman filter parameters", "get Kalman filter parameters",
            &Api::Set_Kalman_Filter_Parameters, &Api::Get_Kalman_Filter_Parameters),
    };
}

}

/// An application that goes on and on while everything goes wrong.
class Fault_Storm_Test : public Bus_Test
{
protected:
    struct Outcome
    {
        std::string journal;
        unsigned int succeeded = 0;
        unsigned int failed = 0;
        unsigned int deceived = 0; ///< replies that passed the check and yet were not the answer to the question
    };

    Outcome storm(unsigned long long seed, unsigned int calls)
    {
        Storm storm{directory, seed};
        for (unsigned int i = 0; i < calls; ++i)
            storm.step(i);
        storm.finish();
        return std::move(storm.outcome);
    }

private:
    struct Storm
    {
        Storm(const std::filesystem::path& bus_directory, unsigned long long seed)
            : directory(bus_directory),
              bench(clock, {.seed = seed}),
              server(directory, "i2c-0", bench.devices()),
              random(seed)
        {
            ::setenv("VELM_DEBUG", "", 1); // thousands of warnings otherwise
            testing::internal::CaptureStdout();
            api = std::make_unique<Api>();
            testing::internal::GetCapturedStdout();
            for (const Setting& each : all)
                defaults.push_back(stored(each));
            model = defaults;
            bench.unit().faults.observe([this](const Transaction& transaction) {
                const std::lock_guard guard(mutex);
                transactions.push_back(transaction);
                outcome.journal += journal_line("i2c-0", 10, transaction) + '\n';
            });
            calm();
        }

        void calm()
        {
            for (const char* rate : {"crc=0.04", "request=0.04", "nak-write=0.04", "nak-read=0.04", "short=0.04",
                                     "stale=0.04", "reset=0.02", "hang=0.02:60", "dead-bus=0.02:60"})
                bench.unit().faults.set_rate(parse_fault_rate(rate));
        }

        Octets stored(const Setting& setting)
        {
            const auto replies = bench.unit().unit.command(setting.getter->identifier, setting.index).replies;
            return *std::find_if(replies.begin(), replies.end(),
                                 [&](const Octets& reply) { return reply.size() == setting.getter->response_size; });
        }

        std::vector<Transaction> take_transactions()
        {
            const std::lock_guard guard(mutex);
            return std::exchange(transactions, {});
        }

        void step(unsigned int i)
        {
            if (i % 500 == 480)
                bench.unit().faults.set_rate({Fault::crc, 0.9}); // enough to exhaust the library's retries
            if (i % 500 == 0)
                calm();
            clock.advance(Clock::Time(20));
            const auto which = static_cast<std::size_t>(random() % all.size());
            SCOPED_TRACE("call " + std::to_string(i) + ": " + all[which].setter->method);
            if (random() % 2 == 0)
                set(which);
            else
                get(which);
        }

        void set(std::size_t which)
        {
            Octets value(all[which].getter->response_size);
            for (unsigned char& byte : value)
                byte = static_cast<unsigned char>(random() & 0x3FU); // makes every float a number
            const std::string message = failure([&] { all[which].set(*api, value); });
            const auto made = take_transactions();
            ASSERT_EQ(made.size(), 1U);
            follow(made);
            if (made[0].error == 0 && made[0].fault != Fault::request)
                model[which] = value;
            EXPECT_EQ(message, made[0].error == 0 ? "" : all[which].set_failure + generic_set(made[0]) + "))");
        }

        void get(std::size_t which)
        {
            Octets value;
            const std::string message = failure([&] { value = all[which].get(*api); });
            const auto made = take_transactions();
            ASSERT_FALSE(made.empty());
            follow(made);
            const Transaction& last = made.back();
            for (const Transaction& each : made)
                if (&each != &last) {
                    ASSERT_TRUE(each.error == 0 && (!each.is_read || crc8(each.bytes) != 0)) << "no reason to go on";
                }

            const std::string& prefix = all[which].get_failure;
            const std::size_t wanted = all[which].getter->response_size + crc_bytes;
            if (!last.is_read)
                EXPECT_EQ(message, prefix + "Failed to use Generic-GET for ZAVRA: Generic-SET command failed (" +
                                       generic_set(last) + ")))");
            else if (last.error != 0 || last.bytes.size() != wanted)
                EXPECT_EQ(message,
                          prefix + "Failed to use Generic-GET for ZAVRA (" + bus_failure(last, wanted) + ")))");
            else if (crc8(last.bytes) != 0) {
                EXPECT_EQ(message, prefix + "Failed to use Generic-GET for ZAVRA (Bad response CRC, Retry failed)))");
                EXPECT_EQ(made.size(), 20U);
            } else {
                EXPECT_EQ(message, "");
                EXPECT_EQ(with_crc(value), last.bytes);
                if (value != model[which]) {
                    // A reply to the request before, or no reply at all where that looks like one.
                    EXPECT_TRUE(last.fault || made[made.size() - 2].fault == Fault::request);
                    EXPECT_NE(last.fault, Fault::crc);
                    ++outcome.deceived;
                }
            }
        }

        /// A reset takes the settings with it.
        void follow(const std::vector<Transaction>& made)
        {
            for (const Transaction& each : made)
                if (each.fault == Fault::reset)
                    model = defaults;
        }

        std::string failure(const std::function<void()>& call)
        {
            try {
                call();
                ++outcome.succeeded;
                return "";
            } catch (const VELM_ZAVRA_API_Exception& error) {
                ++outcome.failed;
                return error.what();
            }
        }

        std::string generic_set(const Transaction& transaction) const
        {
            return "Failed to use Generic-SET for ZAVRA (" + bus_failure(transaction, transaction.bytes.size()) + ")";
        }

        std::string bus_failure(const Transaction& transaction, std::size_t size) const
        {
            const std::string reason = transaction.error == ENXIO       ? "not acknowledged: No such device or address"
                                       : transaction.error == ETIMEDOUT ? "Connection timed out"
                                       : transaction.error == EIO
                                           ? "Input/output error"
                                           : "the simulated bus answered with " +
                                                 std::to_string(transaction.bytes.size()) + " data bytes instead of " +
                                                 std::to_string(size);
            return std::string("Cannot ") + (transaction.is_read ? "read " : "write ") + std::to_string(size) +
                   " bytes " + (transaction.is_read ? "from" : "to") + " address 10 (0xA) on " +
                   (directory / "i2c-0").string() + " (" + reason + ")";
        }

        /// With the faults gone, what the library reads is what the unit has stored, and what was sent undamaged.
        void finish()
        {
            bench.unit().faults.clear();
            for (std::size_t i = 0; i < all.size(); ++i) {
                SCOPED_TRACE(all[i].setter->method);
                EXPECT_EQ(hexadecimal(all[i].get(*api)), hexadecimal(model[i]));
                EXPECT_EQ(hexadecimal(stored(all[i])), hexadecimal(model[i]));
            }
        }

        std::filesystem::path directory;
        Manual_Clock clock;
        const Waits waits{Waits::advancing(clock)};
        Test_Bench bench;
        Bus_Server server;
        std::mt19937_64 random;
        std::unique_ptr<Api> api;
        const std::vector<Setting> all = settings();
        std::vector<Octets> defaults;
        std::vector<Octets> model;
        std::mutex mutex;
        std::vector<Transaction> transactions;
        Outcome outcome;
    };
};

TEST_F(Fault_Storm_Test, ten_thousand_calls_each_succeed_or_say_what_went_wrong)
{
    const Outcome outcome = storm(7, 10'000);
    EXPECT_EQ(outcome.succeeded + outcome.failed, 10'000U);
    for (std::size_t fault = 0; fault < number_of_faults; ++fault) {
        const std::string entry = std::string("\"fault\":\"") + name_of(static_cast<Fault>(fault)) + '"';
        EXPECT_NE(outcome.journal.find(entry), std::string::npos) << entry;
    }
    RecordProperty("succeeded", static_cast<int>(outcome.succeeded));
    RecordProperty("failed", static_cast<int>(outcome.failed));
    RecordProperty("deceived", static_cast<int>(outcome.deceived));
    std::cout << outcome.succeeded << " calls succeeded, " << outcome.failed << " failed, " << outcome.deceived
              << " were deceived by a reply to the request before\n";
}

TEST_F(Fault_Storm_Test, the_same_seed_gives_the_same_journal_through_the_bus)
{
    const std::string journal = storm(8, 1000).journal;
    EXPECT_EQ(journal, storm(8, 1000).journal);
    EXPECT_NE(journal, storm(9, 1000).journal);
}

TEST_F(Bus_Test, two_units_on_each_of_two_buses_at_the_same_time)
{
    struct Bus
    {
        Bus(const Clock& clock, const std::filesystem::path& directory, const std::string& name)
            : bench(clock, {.addresses = {10, 11}, .unit = {.latency = Clock::Time(0)}}),
              server(directory, name, bench.devices())
        {
            for (const unsigned int address : {10U, 11U})
                bench.unit(address).faults.set_rate({Fault::crc, 0.1});
        }
        Test_Bench bench;
        Bus_Server server;
    };
    Bus first{clock, directory, "i2c-0"};
    Bus second{clock, directory, "i2c-1"};
    const auto work = [](const std::string& bus, unsigned int address, unsigned int value) {
        ZAVRA_100 device(address, bus);
        for (unsigned int i = 0; i < 100; ++i) {
            unsigned int read = 0;
            device.Set_HIL_Configuration(value + i);
            device.Get_HIL_Configuration(&read);
            EXPECT_EQ(read, value + i) << bus << ' ' << address;
        }
    };
    std::vector<std::thread> threads;
    threads.emplace_back(work, "i2c-0", 10, 1000);
    threads.emplace_back(work, "i2c-0", 11, 2000);
    threads.emplace_back(work, "i2c-1", 10, 3000);
    threads.emplace_back(work, "i2c-1", 11, 4000);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(second.bench.unit(11).unit.parts.system.settings.hil_configuration, 4099U);
}

TEST_F(Bus_Test, a_unit_needs_no_surroundings_to_be_served)
{
    Simulated_Unit own;
    const Bus_Server server{own, directory, "i2c-0"};
    ZAVRA_100 device(10, "i2c-0");
    const Waits waits{Waits::divided_by(4)};
    unsigned long long system_time = 1'000'000;
    device.Get_System_Time(&system_time);
    EXPECT_LT(system_time, 60'000U);
}

}
