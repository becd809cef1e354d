#include "flight_report.h"
#include "check.h"
#include "export_files.h"
#include "failure.h"

#include "../simulator/report/report.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>

namespace zavra::tools
{

namespace
{

using namespace simulator;

/// Whether software may have nothing to say there.
bool may_be_empty(std::size_t column)
{
    return record_columns[column].starts_with("estimated_") || column == simulator::column("pointing_error_rad");
}

/// @return what is wrong with the line, empty if nothing
std::string read(const std::string& line, Sample& sample)
{
    const char* place = line.data();
    const char* const end = place + line.size();
    for (std::size_t i = 0; i < sample.size(); ++i) {
        const auto [after, error] = std::from_chars(place, end, sample[i]);
        if (after == place && may_be_empty(i))
            sample[i] = std::numeric_limits<double>::quiet_NaN();
        else if (error != std::errc() || (!std::isfinite(sample[i]) && !may_be_empty(i)))
            return std::string(record_columns[i]) + " is no number";
        const bool last = i + 1 == sample.size();
        if (last ? after != end : after == end || *after != ',')
            return "expected " + std::to_string(sample.size()) + " numbers with commas between";
        place = after + 1;
    }
    return {};
}

}

void report_record(const std::string& record, const std::string& file, std::ostream& out)
{
    std::ifstream stream = open_file(record);
    std::string names;
    for (const std::string_view name : record_columns)
        (names += names.empty() ? "" : ",") += name;
    std::string line;
    if (!std::getline(stream, line) || line != names)
        throw Failure(located(record, {1, "not the names of a record of zavra-sim's"}));

    Report report({.title = std::filesystem::path(record).filename().string()});
    Sample sample;
    double latest = -1;
    std::size_t number = 1;
    for (; std::getline(stream, line); ++number) {
        std::string problem = read(line, sample);
        const double time = sample[column("time_s")];
        if (problem.empty() && !(time > latest))
            problem = "time does not go on";
        // A run that was ended by force leaves a piece of a line.
        if (!problem.empty() && !stream.eof())
            throw Failure(located(record, {number + 1, problem}));
        if (!problem.empty())
            break;
        latest = time;
        report.add(sample);
    }
    if (latest < 0)
        throw Failure(located(record, {0, "there is nothing in it"}));
    write_text(file, report.html(), out);
}

}
