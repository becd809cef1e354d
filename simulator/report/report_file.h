#pragma once

#include "../bench/scenario.h"
#include "report.h"

#include <fstream>

namespace zavra::simulator
{

/// The report of one unit's run: what the run was started with, its scenario's events and what came over the bus.
class Report_File
{
public:
    /// @param path  empty where nothing is to be written
    /// @param files  the run was made from; their texts go into the report, empty names do not
    /// @throws std::runtime_error  when the file cannot be opened
    Report_File(const std::string& path, Test_Bench::Unit& unit, const std::string& command_line,
                const std::vector<std::string>& files);

    void add(const Sample& sample) { report_.add(sample); }

    /// A scenario's event, and why the unit refused it, if it did.
    void add(Clock::Time time, Json event, const std::string& refusal);

    /// A transaction as the journal has it. What only asks, and went well, is left out.
    void add(const Json& journal_entry);

    const Report& report() const { return report_; }

    /// @throws std::runtime_error  when the disk is full
    void write();

private:
    std::string path_;
    std::ofstream file_;
    Report report_;
};

/// As a shell takes it.
std::string command_line(int argc, const char* const* argv);

}
