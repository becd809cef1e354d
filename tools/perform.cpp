#include "perform.h"
#include "failure.h"
#include "monitor.h"

#include <charconv>
#include <map>
#include <ostream>

namespace zavra::tools
{

namespace
{

std::chrono::nanoseconds parse_interval(const std::string& text)
{
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    const std::map<std::string, double> nanoseconds{{"", 1e9}, {"ms", 1e6}, {"s", 1e9}, {"min", 60e9}};
    const auto unit = nanoseconds.find(std::string(stop, end));
    constexpr double longest = 1e9 * 86400;
    if (error != std::errc() || unit == nanoseconds.end() || !(number > 0) || number * unit->second > longest ||
        number * unit->second < 1)
        throw Usage_Error("--interval: expected a time like 1s, 500ms or 2min, got \"" + text + '"');
    return std::chrono::nanoseconds(static_cast<long long>(number * unit->second));
}

int dry_run(const Device_Action& action, const Options& options, std::ostream& out)
{
    Session session(options.target);
    try {
        action.run(session.device());
    } catch (const ZAVRA_100_Exception&) {
        // Nobody answers; what counts is whether there was a frame.
        if (session.frames().empty())
            throw;
    }
    Json list = Json::array();
    for (const auto& frame : session.frames()) {
        if (!options.json)
            out << json::hexadecimal(frame) << '\n';
        list.push_back(json::hexadecimal(frame));
    }
    if (options.json)
        out << list.dump(2) << '\n';
    return 0;
}

}

int perform(const Device_Action& action, const Options& options, std::ostream& out, std::ostream& errors)
{
    if (options.json && options.csv)
        throw Usage_Error("--json and --csv exclude each other");
    if (options.target.dry_run)
        return dry_run(action, options, out);
    const bool follows = options.follow || options.count > 0;
    if (follows && !action.reads)
        throw Usage_Error("--follow is for commands that read");

    const auto interval = parse_interval(options.interval);
    Answer_Writer writer(out, options.csv ? Format::csv : options.json ? Format::json : Format::text, follows);
    Session session(options.target);
    if (follows)
        return follow(session.device(), action, interval, options.count, writer, errors);
    const Answer answer = action.run(session.device());
    if (!answer.leaves.empty())
        writer.write(answer);
    return 0;
}

void monitor(const Options& options)
{
    const auto interval = parse_interval(options.interval);
    Session session(options.target);
    run_monitor(session.device(), interval, options.count);
}

int report(const std::string& file, const std::vector<Finding>& findings, bool json, std::ostream& out)
{
    if (json) {
        Json list = Json::array();
        for (const Finding& finding : findings)
            list.push_back({{"file", file}, {"line", finding.line}, {"text", finding.text}});
        out << list.dump(2) << '\n';
    } else {
        for (const Finding& finding : findings)
            out << located(file, finding) << '\n';
        if (findings.empty())
            out << file << ": nothing is wrong\n";
    }
    return findings.empty() ? 0 : 1;
}

}
