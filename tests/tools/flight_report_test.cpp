#include "program.h"

#include "simulator/bench/sample.h"

#include <fstream>

using namespace zavra::test;

TEST(Flight_Report_Test, a_record_becomes_a_page_and_what_is_none_is_refused_with_its_line)
{
    const Temporary_Directory directory;
    std::string names;
    for (const std::string_view name : zavra::simulator::record_columns)
        (names += names.empty() ? "" : ",") += name;
    const std::string moment = ",1516485600000" + [] {
        std::string numbers;
        for (int i = 0; i < 30; ++i)
            numbers += ",1";
        return numbers + ",,,,,,,,";
    }();
    const auto report = [&](const std::string& record) {
        std::ofstream(directory.path + "/run.csv") << record;
        return zavractl("report " + directory.path + "/run.csv");
    };
    const Ran ran = report(names + "\n0" + moment + "\n0.5" + moment + "\n1,15164");
    EXPECT_EQ(ran.status, 0) << ran.errors;
    EXPECT_THAT(ran.out, AllOf(StartsWith("<!DOCTYPE html>"), HasSubstr("\"time_s\":[0,0.5],")))
        << "without the line that was cut off";

    const std::pair<std::string, const char*> refused[] = {
        {"", "run.csv:1: not the names of a record"},
        {names + "\n", "run.csv: there is nothing in it"},
        {names + "\n0" + moment + "\n0" + moment + "\n", "run.csv:3: time does not go on"},
        {names + "\n0" + moment + "1,1\n", "run.csv:2: expected 40 numbers with commas between"},
        {names + "\n0,nan" + moment + "\n", "run.csv:2: epoch_time_msec is no number"},
        {names + "\n0,,1" + moment + "\n", "run.csv:2: epoch_time_msec is no number"},
    };
    for (const auto& [record, reason] : refused) {
        const Ran bad = report(record);
        EXPECT_EQ(bad.status, 1) << record;
        EXPECT_THAT(bad.errors, HasSubstr(reason));
    }
    EXPECT_EQ(zavractl("report /nowhere.csv").status, 2);
}
