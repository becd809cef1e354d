#include "program.h"

#include "catalogue/exports.h"
#include "tests/support/bytes.h"
#include "tests/support/temporary_directory.h"
#include "tools/export_metrics.h"

#include <filesystem>
#include <fstream>

namespace zavra::test
{

namespace
{

using tools::Answer;
using tools::Leaf;
using tools::Source;

const Source source{"telemetry power", "i2c 0", 10};

/// Values that the formats of the databases have trouble with.
const Answer awkward{{{"time", "/time", "ms", Leaf::Kind::unsigned_integer, 64},
                      {"largest", "/largest", "", Leaf::Kind::unsigned_integer, 64},
                      {"speed[0]", "/speed/0", "rad/s", Leaf::Kind::real, 32},
                      {"speed[1]", "/speed/1", "rad/s", Leaf::Kind::real, 32},
                      {"word", "/word", "", Leaf::Kind::unsigned_integer, 32, true},
                      {"offset", "/offset", "", Leaf::Kind::signed_integer, 32},
                      {"name", "/name", "", Leaf::Kind::text, 9}},
                     {{"time", 5U},
                      {"largest", 18446744073709551615U},
                      {"speed", {1.5, "-inf"}},
                      {"word", 255U},
                      {"offset", -7},
                      {"name", "a \"b\"\\\n"}}};

std::string text_of_file(const std::string& path)
{
    std::ifstream stream(path);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}

TEST(Export_Test, a_reading_becomes_a_line_for_influxdb)
{
    std::ostringstream out;
    write_influx(out, source, awkward, 1700000000123);
    EXPECT_EQ(out.str(), "zavra_telemetry_power,bus=i2c\\ 0,address=10 time=5i,speed[0]=1.5,word=255i,offset=-7i,"
                         "name=\"a \\\"b\\\"\\\\?\" 1700000000123000000\n");

    std::ostringstream nothing;
    write_influx(nothing, source, {{awkward.leaves[1]}, awkward.value}, 0);
    EXPECT_EQ(nothing.str(), "");
}

TEST(Export_Test, a_reading_becomes_gauges_for_prometheus)
{
    std::ostringstream out;
    write_prometheus(out, source, awkward, 1700000000123);
    EXPECT_EQ(out.str(), R"(# HELP zavra_telemetry_power_time time in ms.
# TYPE zavra_telemetry_power_time gauge
zavra_telemetry_power_time{bus="i2c 0",address="10"} 5
# HELP zavra_telemetry_power_largest largest.
# TYPE zavra_telemetry_power_largest gauge
zavra_telemetry_power_largest{bus="i2c 0",address="10"} 18446744073709551615
# HELP zavra_telemetry_power_speed speed in rad/s.
# TYPE zavra_telemetry_power_speed gauge
zavra_telemetry_power_speed{bus="i2c 0",address="10",index="0"} 1.5
zavra_telemetry_power_speed{bus="i2c 0",address="10",index="1"} -Inf
# HELP zavra_telemetry_power_word word.
# TYPE zavra_telemetry_power_word gauge
zavra_telemetry_power_word{bus="i2c 0",address="10"} 255
# HELP zavra_telemetry_power_offset offset.
# TYPE zavra_telemetry_power_offset gauge
zavra_telemetry_power_offset{bus="i2c 0",address="10"} -7
# HELP zavra_telemetry_power_info What is no number.
# TYPE zavra_telemetry_power_info gauge
zavra_telemetry_power_info{bus="i2c 0",address="10",name="a \"b\"\\?"} 1
# HELP zavra_telemetry_power_read_time_seconds When this was read, by the computer's clock.
# TYPE zavra_telemetry_power_read_time_seconds gauge
zavra_telemetry_power_read_time_seconds{bus="i2c 0",address="10"} 1700000000.123
)");
}

TEST(Export_Test, readings_follow_each_other_as_lines_or_in_a_file)
{
    using testing::ContainsRegex;
    EXPECT_THAT(zavractl("--simulate wheel speeds --influx --count 2 --interval 10ms").out,
                ContainsRegex("^zavra_wheel_speeds,bus=i2c-0,address=10 speed_radps.x=0.0,.*\nzavra_wheel_speeds,"));
    EXPECT_THAT(zavractl("--simulate call Get_Epoch_Time --influx").out,
                ContainsRegex("^zavra_Get_Epoch_Time,bus=i2c-0,address=10 epoch_time_msec=[0-9]+i [0-9]+\n$"));

    const Temporary_Directory directory;
    const std::string file = directory.path + "/unit.prom";
    const Ran ran = zavractl("--simulate wheel speeds --prometheus-file " + file + " --count 2 --interval 10ms");
    EXPECT_EQ(ran.status, 0) << ran.errors;
    EXPECT_EQ(ran.out, "");
    EXPECT_THAT(text_of_file(file), ContainsRegex("^# HELP .*\nzavra_wheel_speeds_speed_radps_x[^\n]* 0.0\n"));
    EXPECT_FALSE(std::filesystem::exists(file + ".new"));
}

TEST(Export_Test, what_cannot_be_written_is_refused)
{
    const Temporary_Directory directory;
    const auto journal = directory.file("journal", R"({"time_msec":0,"bus":"b","address":10,"direction":"read",)"
                                                   R"("bytes":""})"
                                                   "\n");
    const auto broken = directory.file("broken", R"({"time_msec":-1,"bus":"b","address":10,"direction":"read",)"
                                                 R"("bytes":""})"
                                                 "\n");
    const std::tuple<std::string, int, std::string> cases[] = {
        {"--simulate info --prometheus --influx", 2, "--influx and --prometheus exclude each other"},
        {"--simulate info --prometheus --follow", 2,
         "--prometheus is one reading; with --follow, --prometheus-file FILE has the latest"},
        {"--simulate info --prometheus-file /nowhere/x", 1, "/nowhere/x.new: No such file or directory"},
        {"export xtce -o /dev/full", 1, "/dev/full: No space left on device"},
        {"export sigrok -o /dev/null", 1, "/dev/null: Not a directory"},
        {"export vcd /nowhere/x", 2, "/nowhere/x: No such file or directory"},
        {"export vcd " + journal, 1, journal + ": no transaction on bus i2c-0; there is: b"},
        {"export vcd " + broken, 1,
         broken + ": line 1: time_msec: expected a whole number up to 18446744073709551615, got -1"},
        {"export vcd /dev/null", 1, "/dev/null: no transaction on bus i2c-0"},
    };
    for (const auto& [line, status, problem] : cases) {
        SCOPED_TRACE(line);
        const Ran ran = zavractl(line);
        EXPECT_EQ(ran.status, status);
        EXPECT_EQ(ran.errors, "zavractl: " + problem + "\n");
    }
}

TEST(Export_Test, a_capture_has_each_edge_and_no_gap_above_a_second)
{
    std::istringstream journal(
        R"({"time_msec":7,"bus":"b","address":85,"direction":"write","bytes":"","error":"No such device or address"})"
        "\n"
        R"({"time_msec":9007,"bus":"b","address":85,"direction":"read","bytes":""})");
    std::ostringstream out;
    write_vcd(journal, "b", out);
    const std::string vcd = out.str();
    // Start, then 1010101 and a 0 for a write, then nobody pulls SDA down, then stop.
    EXPECT_THAT(vcd, testing::StartsWith(
                         "$timescale 1 us $end\n$scope module b $end\n$var wire 1 c SCL $end\n$var wire 1 d SDA $end\n"
                         "$upscope $end\n$enddefinitions $end\n#0\n1c\n1d\n"
                         "#100\n0d\n#105\n0c\n#107\n1d\n#110\n1c\n#115\n0c\n#117\n0d\n#120\n1c\n#125\n0c\n"));
    EXPECT_THAT(vcd, testing::HasSubstr("#187\n1d\n#190\n1c\n#195\n0c\n#197\n0d\n#200\n1c\n#205\n1d\n#1000210\n0d\n"));
    EXPECT_THAT(vcd, testing::EndsWith("#1000315\n1d\n#1000420\n"));
}

}
