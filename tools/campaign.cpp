#include "campaign.h"
#include "check.h"
#include "export_files.h"
#include "failure.h"

#include "../simulator/report/report.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <map>
#include <sstream>

namespace zavra::tools
{

namespace
{

using Runs = std::map<unsigned long long, Json>; // by seed

Runs read_runs(const std::string& file)
{
    std::ifstream stream = open_file(file);
    Runs runs;
    std::size_t number = 0;
    for (std::string line; std::getline(stream, line);) {
        ++number;
        Json run = Json::parse(line, nullptr, false);
        const auto has = [&](const char* name) { return run.contains(name) && run[name].is_object(); };
        if (!run.is_object() || !run.contains("seed") || !run["seed"].is_number_unsigned() || !has("drawn") ||
            !has("results"))
            throw Failure(located(file, {number, "not a result of zavra-sim --vary"}));
        runs.insert_or_assign(run["seed"].get<unsigned long long>(), std::move(run));
    }
    if (runs.empty())
        throw Failure(located(file, {0, "there is no result in it"}));
    return runs;
}

/// Results in order, what never came last.
struct Ranking
{
    Ranking(const Runs& runs, const std::string& name)
    {
        for (const auto& [seed, run] : runs) {
            const auto value = run["results"].find(name);
            const bool is_there = value != run["results"].end() && value->is_number();
            came += is_there ? 1U : 0U;
            ranks.emplace_back(is_there ? value->get<double>() : INFINITY, seed);
        }
        std::ranges::sort(ranks);
    }

    /// The value that no more than that part of the runs exceed.
    double percentile(double part) const
    {
        const auto rank = static_cast<std::size_t>(std::ceil(part * static_cast<double>(ranks.size())));
        return ranks[std::max<std::size_t>(rank, 1) - 1].first;
    }

    std::vector<std::pair<double, unsigned long long>> ranks;
    std::size_t came = 0;
};

std::string shown(double value)
{
    std::ostringstream text;
    text << std::setprecision(4) << value;
    return std::isfinite(value) ? text.str() : "never";
}

void write_table(const Runs& runs, std::ostream& out)
{
    constexpr std::size_t worst = 3;
    const unsigned long long first = runs.begin()->first;
    const unsigned long long last = runs.rbegin()->first;
    out << runs.size() << " runs, seeds " << first << " to " << last << '\n'
        << std::left << std::setw(28) << "" << std::right << std::setw(9) << "came" << std::setw(11) << "median"
        << std::setw(11) << "95 %" << std::setw(11) << "99 %" << std::setw(11) << "greatest"
        << "  worst seeds\n";
    for (const auto& [name, value] : runs.begin()->second["results"].items()) {
        const Ranking ranking(runs, name);
        if (ranking.came == 0) {
            out << std::left << std::setw(28) << name << std::right << std::setw(9) << 0 << '\n';
            continue;
        }
        out << std::left << std::setw(28) << name << std::right << std::setw(9) << ranking.came;
        for (const double part : {0.5, 0.95, 0.99, 1.0})
            out << std::setw(11) << shown(ranking.percentile(part));
        out << ' ';
        for (std::size_t i = 0; i < std::min(worst, ranking.ranks.size()); ++i)
            out << ' ' << ranking.ranks[ranking.ranks.size() - 1 - i].second;
        out << '\n';
    }
    if (last - first + 1 == runs.size())
        return;
    constexpr std::size_t most = 1000;
    std::size_t missing = 0;
    out << "Seeds without a result:";
    for (unsigned long long seed = first; seed < last && missing < most; ++seed)
        if (!runs.contains(seed)) {
            out << ' ' << seed;
            ++missing;
        }
    out << (missing == most ? " ...\n" : "\n");
}

}

void show_campaign(const std::string& results, const std::string& file, std::ostream& out)
{
    const Runs runs = read_runs(results);
    if (!file.empty()) {
        Json list = Json::array();
        for (const auto& [seed, run] : runs)
            list.push_back(run);
        write_text(
            file,
            simulator::page_with(simulator::campaign_page,
                                 simulator::in_script({{"title", std::filesystem::path(results).filename().string()},
                                                       {"runs", std::move(list)}})),
            out);
    }
    write_table(runs, out);
}

}
