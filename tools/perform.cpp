#include "perform.h"
#include "export_files.h"
#include "export_metrics.h"
#include "failure.h"
#include "moment.h"
#include "monitor.h"
#include "record.h"

#include "../common/file_descriptor.h"

#include <cerrno>
#include <memory>
#include <ostream>
#include <sstream>
#include <system_error>

#include <fcntl.h>

namespace zavra::tools
{

namespace
{

std::chrono::nanoseconds parse_interval(const std::string& text)
{
    constexpr double longest = 86400e3;
    constexpr double nanoseconds = 1e6;
    const double msec = span_msec(text, "s");
    if (!(msec > 0) || msec > longest || msec * nanoseconds < 1)
        throw Usage_Error("--interval: expected a time up to 24h like 1s, 500ms, 2min or 1h, got \"" + text + '"');
    return std::chrono::nanoseconds(static_cast<long long>(msec * nanoseconds));
}

/// What becomes of an answer.
std::function<void(const Answer&)> way_out(const Options& options, std::ostream& out, bool follows)
{
    const bool prometheus = options.prometheus || !options.prometheus_file.empty();
    std::string chosen;
    for (const auto& [is_chosen, name] : {std::pair{options.json, "--json"}, std::pair{options.csv, "--csv"},
                                          std::pair{options.influx, "--influx"}, std::pair{prometheus, "--prometheus"}})
        if (is_chosen && !chosen.empty())
            throw Usage_Error(chosen + " and " + name + " exclude each other");
        else if (is_chosen)
            chosen = name;
    if (prometheus && follows && options.prometheus_file.empty())
        throw Usage_Error("--prometheus is one reading; with --follow, --prometheus-file FILE has the latest");
    const Source source{options.words, options.target.bus, options.target.address};
    if (options.influx)
        return [&out, source](const Answer& answer) { write_influx(out, source, answer, host_epoch_msec()); };
    if (prometheus)
        return [&out, source, file = options.prometheus_file](const Answer& answer) {
            std::ostringstream text;
            write_prometheus(text, source, answer, host_epoch_msec());
            if (file.empty())
                out << text.str() << std::flush;
            else
                replace_text(file, text.str());
        };
    const Format format = options.csv ? Format::csv : options.json ? Format::json : Format::text;
    return [writer = std::make_shared<Answer_Writer>(out, format, follows)](const Answer& answer) {
        writer->write(answer);
    };
}

int dry_run(const Device_Action& action, const Options& options, std::ostream& out)
{
    Session session(options.target);
    Unit unit(session.device(), false);
    action.run(unit);
    Json list = Json::array();
    for (const auto& frame : session.frames()) {
        if (!options.json)
            out << json::hexadecimal(frame) << '\n';
        list.push_back(json::hexadecimal(frame));
    }
    if (options.json)
        out << json_text(list) << '\n';
    return 0;
}

}

int perform(const Device_Action& action, const Options& options, std::ostream& out, std::ostream& errors)
{
    const bool follows = options.follow || options.count > 0;
    const auto write = way_out(options, out, follows);
    if (options.target.dry_run)
        return dry_run(action, options, out);
    if (follows && !action.reads)
        throw Usage_Error("--follow is for commands that read");

    const auto interval = parse_interval(options.interval);
    Session session(options.target);
    Unit unit(session.device(), !options.no_verify);
    if (follows)
        return follow(unit, action, interval, options.count, write, errors);
    const Answer answer = action.run(unit);
    if (!answer.leaves.empty())
        write(answer);
    return 0;
}

void monitor(const Options& options, const std::vector<std::string>& names)
{
    if (options.follow || options.json || options.csv || options.target.dry_run)
        throw Usage_Error(
            "monitor shows its frames until q is pressed; --follow, --json, --csv and --dry-run are not for it");
    const auto interval = parse_interval(options.interval);
    Monitor_Model model(names);
    Session session(options.target);
    run_monitor(session.device(), model, interval, options.count);
}

int record(const Options& options, const std::string& file, std::ostream& out, std::ostream& errors)
{
    if (options.json || options.csv || options.target.dry_run)
        throw Usage_Error("record has a form of its own; --json, --csv and --dry-run are not for it");
    const auto interval = parse_interval(options.interval);
    Session session(options.target);
    Unit unit(session.device(), false);
    if (file == "-")
        return record_frames(unit, interval, options.count, out, errors);

    const File_Descriptor descriptor(::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!descriptor)
        throw Usage_Error(file + ": " + std::generic_category().message(errno));
    Descriptor_Buffer buffer(descriptor.get());
    std::ostream log(&buffer);
    log.exceptions(std::ios::badbit);
    try {
        return record_frames(unit, interval, options.count, log, errors);
    } catch (const Output_Failure& failure) {
        throw Failure(file + ": " + failure.what());
    }
}

int report(const std::string& file, const std::vector<Finding>& findings, bool json, std::ostream& out)
{
    if (json) {
        Json list = Json::array();
        for (const Finding& finding : findings)
            list.push_back({{"file", file}, {"line", finding.line}, {"text", finding.text}});
        out << json_text(list) << '\n';
    } else {
        for (const Finding& finding : findings)
            out << printable(located(file, finding)) << '\n';
        if (findings.empty())
            out << file << ": nothing is wrong\n";
    }
    return findings.empty() ? 0 : 1;
}

}
