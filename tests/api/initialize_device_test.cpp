#include "tests/support/cases.h"

#include <VELM_INIPARSER.h>

using namespace zavra::test;

/// Shows what is written to std::cout among the debug lines of the double, but only once it is flushed: as a terminal
/// does.
struct Console : std::stringbuf
{
    ~Console() override { std::cout.rdbuf(before); }

    int sync() override
    {
        double_of_platform.debug += str();
        str("");
        return 0;
    }

    std::streambuf* const before = std::cout.rdbuf(this);
};

const std::string common_keys =
    "sensor_stddev_x sensor_stddev_y sensor_stddev_z sensor_sensitivity_x sensor_sensitivity_y sensor_sensitivity_z "
    "tf_quaternion_q1 tf_quaternion_q2 tf_quaternion_q3 tf_quaternion_q4 update_interval_msec sensor_correction_enable "
    "correction_scale_m11 correction_scale_m12 correction_scale_m13 correction_scale_m21 correction_scale_m22 "
    "correction_scale_m23 correction_scale_m31 correction_scale_m32 correction_scale_m33 correction_offset_x "
    "correction_offset_y correction_offset_z ";
const std::string gyro_keys =
    "output_type " + common_keys + "bias_counter avg_filter_enable avg_filter_counter avg_filter_criterion";
const std::string magnetometer_keys =
    common_keys + "avg_filter_enable avg_filter_counter avg_filter_criterion moving_avg_filter_enable "
                  "moving_avg_filter_gain moving_avg_filter_criterion";

const std::string rule = "--------------------------------------------------------------\n";
const std::string beginning = rule + "Initialize ZAVRA-100 device from INI configuration file:\nINI file: some.ini\n" +
                              rule + "Load and parse INI file into dictionary ... ";
const std::string dumping = beginning + "DONE\nDump INI config dictionary:\n";

static std::string warning(const std::string& text)
{
    return "\033[33mWARNING: " + text + "\033[0m\n";
}

/// What the console shows for one sensor: configured (+), no section (0), wrong number of keys (#), unreadable key (?),
/// refused by the unit (!).
static std::string shown(const std::string& sensor, char outcome)
{
    const std::string checking = rule + sensor + ": Checking for INI section ... ";
    if (outcome == '0')
        return checking + "NOT FOUND\n";
    if (outcome == '#')
        return checking + "INVALID KEY COUNT\n";
    const std::string reading = checking + "FOUND\n" + sensor + ": Reading the section parameters ... ";
    const std::string abort = sensor + ": ABORT initialization and proceed ...\n";
    const std::string unreadable =
        sensor[0] == 'G' ? "Failed to read all section key values." : "Failed to read all sections key values.";
    if (outcome == '?')
        return reading + "FAILED\n" + warning(unreadable) + abort;
    const std::string sending = reading + "DONE\n" + sensor + ": Initialize with parameters ... ";
    return sending + (outcome == '+' ? "DONE\n" : "FAILED\n" + abort);
}

struct Initialize_Device_Test : Platform_Test
{
    Initialize_Device_Test() { start(); }

    /// A dictionary in which each value is the place of its key in the section.
    void start()
    {
        platform = {};
        platform.debug_levels = "4";
        for (const std::string section : {"gyro0", "gyro1", "gyro2", "mtm0"}) {
            std::istringstream keys(section[0] == 'g' ? gyro_keys : magnetometer_keys);
            int place = 0;
            for (std::string key; keys >> key;)
                platform.dictionary["zavra_dev_init_" + section + ":" + key] = std::to_string(++place);
        }
    }

    void erase(const std::string& key) { platform.dictionary.erase("zavra_dev_init_" + key); }
    void set(const std::string& key, const char* text) { platform.dictionary["zavra_dev_init_" + key] = text; }

    void initialize()
    {
        testing::internal::CaptureStdout();
        api.Initialize_Device("some.ini");
        printed = testing::internal::GetCapturedStdout();
    }

    Console console;
    VELM_ZAVRA_API api;
    std::string printed;
};

TEST_F(Initialize_Device_Test, each_key_reaches_its_place_on_the_wire)
{
    initialize();
    Lines frames;
    const std::string gyro = gyro_payload.hexadecimal(), magnetometer = magnetometer_payload.hexadecimal();
    for (const std::string& request :
         {"a103700000" + gyro, "a103700001" + gyro, "a103700002" + gyro, "a203740000" + magnetometer})
        frames.push_back(hexadecimal(with_crc(octets(request))));
    EXPECT_EQ(platform.frames(), frames);
    EXPECT_EQ(printed, "(dictionary)\n00" + magnetometer);
    EXPECT_EQ(platform.parser_calls, (Lines{"load", "dump", "free", "destroy"}));
}

TEST_F(Initialize_Device_Test, a_sensor_that_cannot_be_configured_is_told_and_skipped)
{
    // Outcomes are those of gyroscopes 0, 1, 2 and the magnetometer.
    const std::tuple<const char*, std::function<void()>, std::string> cases[] = {
        {"complete", [] {}, "++++"},
        {"one section",
         [this] { std::erase_if(platform.dictionary, [](auto& entry) { return entry.first[19] != '1'; }); }, "0+00"},
        {"a 30th key", [this] { set("gyro0:comment", "1"); }, "#+++"},
        {"29 magnetometer keys", [this] { erase("mtm0:avg_filter_counter"); }, "+++#"},
        {"misspelt", [this] { erase("gyro2:bias_counter"), set("gyro2:bias_countre", "1"); }, "++?+"},
        {"misspelt", [this] { erase("mtm0:moving_avg_filter_gain"), set("mtm0:moving_avg_gain", "1"); }, "+++?"},
        {"no byte", [this] { set("gyro1:output_type", "256"); }, "+?++"},
        {"dead unit", [this] { platform.write_failure = "no bus"; }, "!!!!"},
    };
    for (const auto& [what, prepare, outcomes] : cases) {
        SCOPED_TRACE(what);
        start();
        prepare();
        initialize();
        EXPECT_EQ(platform.debug, dumping + rule + "Initialize Sensors:\n" + shown("Gyro 0", outcomes[0]) +
                                      shown("Gyro 1", outcomes[1]) + shown("Gyro 2", outcomes[2]) +
                                      shown("Magnetometer 0", outcomes[3]) + rule);
        EXPECT_EQ(platform.frames().size(), static_cast<std::size_t>(std::ranges::count(outcomes, '+')));
    }
}

TEST_F(Initialize_Device_Test, a_file_that_cannot_be_parsed_or_printed_configures_nothing)
{
    const std::string failed = "FAILED\n" +
                               warning("Initialize_Device: Cannot parse INI file (file not found or invalid)") +
                               warning("ABORT initialization and proceed ...");
    platform.load_failure = "no file";
    initialize();
    EXPECT_EQ(platform.debug, beginning + failed);
    EXPECT_EQ(platform.parser_calls, (Lines{"load", "destroy"}));

    start();
    platform.dump_failure = "disk full";
    initialize();
    EXPECT_EQ(platform.debug, dumping + failed);
    EXPECT_EQ(platform.parser_calls, (Lines{"load", "dump", "destroy"}));
    EXPECT_TRUE(platform.frames().empty());
}

TEST_F(Initialize_Device_Test, the_parsers_other_failures_pass)
{
    testing::internal::CaptureStdout();
    for (const auto failure : {&Platform_Double::section_failure, &Platform_Double::value_failure}) {
        start();
        platform.*failure = "no dictionary";
        EXPECT_EQ(message_of<VELM_INIPARSER_Exception>([this] { api.Initialize_Device("some.ini"); }), "no dictionary");
        EXPECT_EQ(platform.parser_calls, (Lines{"load", "dump", "destroy"}));
    }
    testing::internal::GetCapturedStdout();
}

TEST_F(Initialize_Device_Test, what_the_command_prints_stands_between_its_announcement_and_its_end)
{
    platform.debug_levels = "34";
    initialize();
    EXPECT_THAT(platform.debug, HasSubstr("Gyro 0: Initialize with parameters ... \033[32mGYRO_INDEX: dec = "));
    EXPECT_THAT(platform.debug, HasSubstr("\033[0mDONE\n" + rule + "Gyro 1: Checking"));
}

TEST_F(Initialize_Device_Test, a_unit_that_answers_nothing_does_not_fail_construction)
{
    platform.write_failure = "no bus";
    EXPECT_NO_THROW(VELM_ZAVRA_API());
    EXPECT_THAT(platform.debug, HasSubstr("INI file: /etc/velm_api_config/velm_zavra_dev_init.ini\n"));
    EXPECT_THAT(platform.debug, EndsWith(shown("Gyro 2", '!') + shown("Magnetometer 0", '!') + rule));
}
