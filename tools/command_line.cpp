#include "command_line.h"
#include "campaign.h"
#include "check.h"
#include "commands.h"
#include "complaint.h"
#include "completion.h"
#include "decode.h"
#include "export_files.h"
#include "failure.h"
#include "flight_report.h"
#include "moment.h"
#include "perform.h"
#include "sim_commands.h"

#include "../catalogue/exports.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <limits>
#include <memory>

namespace zavra::tools
{

namespace
{

/// The command line: what the options say, and what is to be done.
class Command_Line
{
public:
    Command_Line(std::ostream& out, std::ostream& errors) : out_(out), errors_(errors) {}

    int run(int argc, const char* const* argv);

private:
    void add_options();
    void add_everyday();
    void add_time();
    void add_other_device_commands();
    void add_offline();
    void add_exports();
    CLI::App* command(const std::string& words, const std::string& help);
    std::shared_ptr<Values> add_values(CLI::App* app, const std::string& help);
    /// What a command does with the unit; the action is made when everything has been parsed.
    void on_device(CLI::App* app, std::function<Device_Action()> make_action);

    std::ostream& out_;
    std::ostream& errors_;
    CLI::App app_{"Talks to a ZAVRA-100 attitude control unit", "zavractl"};
    Options options_;
    std::string text_; // the one argument of a command that has one
    std::string output_;
    std::vector<std::string> words_;
    bool force_ = false;
    std::string orbit_interval_ = "1s";
    std::function<int()> chosen_;
};

void Command_Line::add_options()
{
    app_.fallthrough();
    app_.footer("Options of zavractl itself may stand anywhere; see: zavractl --help\n"
                "Exit status: 0 done, 1 the unit or the bus failed, 2 wrong usage");
    app_.require_subcommand(1);
    app_.option_defaults()->group("Where to");
    app_.add_option("--bus", options_.target.bus, "Name of the bus")->capture_default_str();
    app_.add_option("--address", options_.target.address, "Address of the unit, decimal or 0x...")
        ->check(CLI::Range(0U, 0x7FU))
        ->capture_default_str();
    app_.add_option("--bus-dir", options_.target.bus_directory, "Directory of simulated buses (VELM_I2C_BUS_DIR)");
    app_.add_flag("--simulate", options_.target.simulate, "Start a simulated unit for this call alone");
    app_.add_flag("--dry-run", options_.target.dry_run,
                  "Print the frames that the command would send, and send nothing");
    app_.add_flag("--no-verify", options_.no_verify, "Do not ask the unit whether it took what was sent");
    app_.add_flag("--force", force_, "Send nan and inf, too");
    app_.option_defaults()->group("Answer");
    app_.add_flag("--json", options_.json, "For programs: JSON");
    app_.add_flag("--csv", options_.csv, "For plots: a line of names, then a line for each reading");
    app_.add_flag("--influx", options_.influx, "For InfluxDB: its line protocol");
    app_.add_flag("--prometheus", options_.prometheus, "For Prometheus: its text format");
    app_.add_option("--prometheus-file", options_.prometheus_file, "The same into a file, replaced by each reading");
    app_.add_flag("--follow", options_.follow, "Repeat the reading until Ctrl-C");
    app_.add_option("--interval", options_.interval, "From reading to reading: 1s, 500ms, 2min, 1h")
        ->capture_default_str();
    app_.add_option("--count", options_.count, "Number of readings")
        ->check(CLI::Range(1U, std::numeric_limits<unsigned int>::max()));
    app_.option_defaults()->group("Options");
    app_.set_version_flag("--version", "zavractl " ZAVRA_VERSION, "Print the version");
}

/// The command of these words below one another, made where it is not there yet.
CLI::App* Command_Line::command(const std::string& words, const std::string& help)
{
    CLI::App* parent = &app_;
    std::istringstream stream(words);
    for (std::string word; stream >> word;) {
        const auto there = parent->get_subcommands([&](const CLI::App* app) { return app->get_name() == word; });
        if (there.empty() && parent != &app_)
            parent->require_subcommand(1);
        parent = there.empty() ? parent->add_subcommand(word) : there.front();
    }
    return parent->description(help);
}

/// Where words of the command line go that are values, and what help says of them.
std::shared_ptr<Values> Command_Line::add_values(CLI::App* app, const std::string& help)
{
    const auto values = std::make_shared<Values>();
    app->add_option("values", values->words, "Values in order, or NAME=VALUE");
    app->add_option_function<std::string>(
           "--json",
           [this, values](const std::string& file) {
               options_.json = true;
               if (!file.empty())
                   values->json_file = file;
           },
           "With FILE: take values from it (- is standard input); the answer is JSON")
        ->expected(0, 1)
        ->type_name("[FILE]");
    app->footer(help + '\n' + app->get_footer());
    return values;
}

void Command_Line::on_device(CLI::App* app, std::function<Device_Action()> make_action)
{
    app->callback([this, app, make_action] {
        options_.words = app->get_name() == "call" ? text_ : app->get_name();
        for (const CLI::App* above = app->get_parent(); above != &app_; above = above->get_parent())
            options_.words = above->get_name() + ' ' + options_.words;
        chosen_ = [this, make_action] { return perform(make_action(), options_, out_, errors_); };
    });
}

void Command_Line::add_everyday()
{
    const std::pair<const char*, const char*> groups[] = {
        {"info", "What the unit is"},
        {"telemetry", "The telemetry frames"},
        {"registers", "The registers as flags"},
        {"system", "Registers, intervals, command errors"},
        {"time", "The unit's clock"},
        {"gyro", "Gyroscopes"},
        {"magnetometer", "The magnetometer"},
        {"sun", "Sun vector"},
        {"startracker", "Star tracker"},
        {"wheel", "Reaction wheels"},
        {"magnetorquer", "Magnetorquers"},
        {"controller", "Controllers"},
        {"kalman", "Kalman filter"},
        {"mode", "Operation modes"},
        {"pointing", "Target pointing"},
        {"orbit", "Orbit module"},
    };
    for (const auto& [words, help] : groups)
        command(words, help)->group("Everyday commands");
    for (const Everyday& each : everyday_commands()) {
        CLI::App* const app = command(each.words, each.help);
        const std::string help = values_of(each);
        const auto values = help.empty() ? std::make_shared<Values>() : add_values(app, help);
        on_device(app, [this, each, values] {
            values->force = force_;
            return everyday_action(each, *values, !options_.target.dry_run);
        });
    }

    CLI::App* const telemetry = command("telemetry", "The telemetry frames, or fields of them");
    telemetry->add_option("fields", words_, "Frames, fields or all: attitude.q_1, angular_velocity_x");
    telemetry->callback([this, telemetry] {
        if (!telemetry->get_subcommands().empty())
            return;
        if (words_.empty())
            throw CLI::RequiredError("");
        chosen_ = [this] { return perform(telemetry_action(words_), options_, out_, errors_); };
    });
    on_device(command("telemetry all", "All six frames"), [] { return telemetry_action({"all"}); });
    telemetry->require_subcommand(0, 1);
    on_device(command("mode status", "The mode that is running, or waits to start"), mode_status_action);
    CLI::App* const scan = command("scan", "Which addresses of the bus answer")->group("Everyday commands");
    on_device(scan, [this] { return scan_action(options_.target.bus); });
}

void Command_Line::add_time()
{
    on_device(command("time get", "Epoch time, system time, and how far it is ahead of this computer's clock"),
              [] { return time_action(); });
    CLI::App* const set = command("time set", "Set the epoch time");
    set->add_option("time", text_, known_moments)->required();
    on_device(set, [this] { return set_time_action(text_); });
    on_device(command("time sync", "Set the epoch time to this computer's clock"), [] { return set_time_action(""); });
}

void Command_Line::add_other_device_commands()
{
    CLI::App* const registers = command("registers", "The registers as flags");
    registers->add_option("--map", text_, "Register map that names the flags")->type_name("FILE");
    on_device(registers, [this] { return registers_action(text_); });

    CLI::App* const load = command("orbit load", "Load a two-line element set");
    load->add_option("file", text_, "File with the two lines")->required();
    load->add_option("--update-interval", orbit_interval_, "Of the propagation: 500ms, 2s, or a number of ms")
        ->capture_default_str();
    on_device(load, [this] { return load_orbit_action(text_, orbit_interval_); });

    CLI::App* const init = command("init", "Configure the sensors from an INI file")->group("Everyday commands");
    init->add_option("file", text_, "INI file")->required();
    on_device(init, [this] { return init_action(text_); });

    CLI::App* const call = command("call", "Call a method of the device layer");
    call->add_option("method", text_, "Name of the method; see: zavractl list")->required();
    call->group("Every command");
    const auto values = add_values(call, "Names and types of the values: zavractl list METHOD\n");
    on_device(call, [this, values] {
        values->force = force_;
        return call_action(method_named(text_), *values);
    });

    CLI::App* const watch = command("monitor", "The telemetry frames on the whole screen, as they change");
    watch->add_option("frames", words_, "Those alone, in this order");
    watch->group("Everyday commands")->callback([this] { chosen_ = [this] { return monitor(options_, words_), 0; }; });

    CLI::App* const recorder = command("record", "Write all telemetry frames to a file, for decode");
    recorder->add_option("file", text_, "A new file; - is standard output")->required();
    recorder->group("Everyday commands")->callback([this] {
        chosen_ = [this] { return record(options_, text_, out_, errors_); };
    });
}

void Command_Line::add_offline()
{
    CLI::App* const list = command("list", "The methods of the device layer")->group("Every command");
    list->fallthrough(false);
    list->add_option("words", words_, "Those whose names contain a word, in full");
    list->add_flag("--json", options_.json, "For programs: JSON");
    list->callback([this] { chosen_ = [this] { return list_methods(out_, words_, options_.json), 0; }; });

    CLI::App* const decoder =
        command("decode", "Explain captured frames: in hexadecimal, of record, a journal or a debug dump");
    decoder->group("Offline")->fallthrough(false);
    decoder->add_option("file", text_, "Lines in hexadecimal; without it, standard input");
    decoder->add_flag("--json", options_.json, "For programs: a JSON object on each line");
    decoder->callback([this] {
        chosen_ = [this] {
            if (text_.empty() || text_ == "-")
                return decode(std::cin, out_, options_.json) ? 0 : 1;
            std::ifstream stream = open_file(text_);
            return decode(stream, out_, options_.json) ? 0 : 1;
        };
    });

    command("check", "Say what is wrong with a file, and where")->group("Offline");
    const std::tuple<const char*, const char*, std::vector<Finding> (*)(const std::string&)> checks[] = {
        {"check ini", "Initialisation file of the sensors", check_ini},
        {"check tle", "Two-line element set", check_tle},
        {"check map", "Register map", check_map},
        {"check scenario", "Scenario of the simulated unit", check_scenario},
        {"check satellite", "Satellite behind the simulated unit", check_satellite},
    };
    for (const auto& [words, help, check] : checks) {
        CLI::App* const app = command(words, help);
        app->add_option("file", text_, "The file")->required();
        app->callback([this, checked = check] {
            chosen_ = [this, checked] { return report(text_, checked(text_), options_.json, out_); };
        });
    }

    command("sim", "The surroundings of a simulated unit that is running")->group("Offline");
    for (const Sim_Command& each : sim_commands()) {
        CLI::App* const app = command(each.words, each.help);
        app->add_option("values", words_, each.values);
        app->callback([this, each] { chosen_ = [this, each] { return each.run(words_, options_, out_), 0; }; });
    }
}

void Command_Line::add_exports()
{
    command("export", "The commands and captures for other programs")->group("Offline");
    const auto add = [this](const char* words, const char* help, const char* to, std::function<void()> write) {
        CLI::App* const app = command(words, help);
        app->add_option("-o,--output", output_, to);
        app->callback([this, write = std::move(write)] { chosen_ = [write] { return write(), 0; }; });
        return app;
    };
    const char* const to_file = "File; without it, standard output";
    add("export sigrok", "The sigrok and PulseView decoder", "Directory", [this] { export_sigrok(output_); })
        ->get_option("--output")
        ->required();
    add("export xtce", "XTCE 1.2, for mission control systems", to_file, [this] { write_text(output_, xtce(), out_); });
    add("export ksy", "A Kaitai Struct description", to_file, [this] { write_text(output_, kaitai_struct(), out_); });
    add("export vcd", "A simulated unit's journal as a capture of the bus that --bus names", to_file,
        [this] { export_vcd(text_, options_.target.bus, output_, out_); })
        ->add_option("journal", text_, "The journal; - is standard input")
        ->required();
    add("report", "A page of plots and tables of a satellite's record", to_file,
        [this] { report_record(text_, output_, out_); })
        ->group("Offline")
        ->add_option("record", text_, "What zavra-sim --record wrote")
        ->required();
    add("campaign", "How the results of a campaign are spread, and the worst seeds", "A page of histograms and plots",
        [this] { show_campaign(text_, output_, out_); })
        ->group("Offline")
        ->add_option("results", text_, "Lines that zavra-sim --vary wrote")
        ->required();
}

int Command_Line::run(int argc, const char* const* argv)
{
    add_options();
    add_everyday();
    add_time();
    add_other_device_commands();
    add_offline();
    add_exports();
    std::vector<std::string> words(argv + 1, argv + argc);
    if (!words.empty() && words.front() == "complete") {
        words.erase(words.begin());
        return write_completions(app_, words, out_), 0;
    }
    for (std::string& word : words)
        if (word.size() > 2 && word.starts_with("-.") && word[2] >= '0' && word[2] <= '9')
            word.insert(1, "0"); // an option, otherwise
    std::reverse(words.begin(), words.end());
    try {
        app_.parse(words);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0)
            return app_.exit(error, out_, errors_);
        throw Usage_Error(complaint(app_, error));
    }
    return chosen_();
}

}

int run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors)
{
    const auto complain = [&](const std::string& problem, int status) {
        errors << "zavractl: " << printable(problem) << std::endl;
        return status;
    };
    try {
        return Command_Line(out, errors).run(argc, argv);
    } catch (const Usage_Error& error) {
        return complain(error.what(), 2);
    } catch (const Output_Failure&) {
        throw;
    } catch (const ZAVRA_100_Exception& error) {
        return complain(in_short(error.what()), is_refusal(error) ? 2 : 1);
    } catch (const std::exception& error) {
        return complain(error.what(), 1);
    }
}

}
