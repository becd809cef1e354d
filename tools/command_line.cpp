#include "command_line.h"
#include "check.h"
#include "commands.h"
#include "completion.h"
#include "decode.h"
#include "failure.h"
#include "perform.h"

#include <CLI/CLI.hpp>

#include <iostream>
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
    CLI::App* command(const std::string& words, const std::string& help);
    std::shared_ptr<Values> add_values(CLI::App* app);
    /// What a command does with the unit; the action is made when everything has been parsed.
    void on_device(CLI::App* app, std::function<Device_Action()> make_action);
    std::string complaint(const CLI::ParseError& error) const;

    std::ostream& out_;
    std::ostream& errors_;
    CLI::App app_{"Talks to a ZAVRA-100 attitude control unit", "zavractl"};
    Options options_;
    std::string text_; // the one argument of a command that has one
    std::vector<std::string> words_;
    unsigned long long orbit_interval_msec_ = 1000;
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
    app_.option_defaults()->group("Answer");
    app_.add_flag("--json", options_.json, "For programs: JSON");
    app_.add_flag("--csv", options_.csv, "For plots: a line of names, then a line for each reading");
    app_.add_flag("--follow", options_.follow, "Repeat the reading until Ctrl-C");
    app_.add_option("--interval", options_.interval, "From reading to reading: 1s, 500ms, 2min")->capture_default_str();
    app_.add_option("--count", options_.count, "Number of readings");
    app_.option_defaults()->group("Options");
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

std::shared_ptr<Values> Command_Line::add_values(CLI::App* app)
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
    return values;
}

void Command_Line::on_device(CLI::App* app, std::function<Device_Action()> make_action)
{
    app->callback([this, make_action] {
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
        on_device(app, [this, each, values = add_values(app)] {
            return everyday_action(each, *values, !options_.target.dry_run);
        });
    }
}

void Command_Line::add_time()
{
    on_device(command("time get", "Epoch time, system time, and how far it is ahead of this computer's clock"),
              [] { return time_action(); });
    CLI::App* const set = command("time set", "Set the epoch time");
    set->add_option("time", text_, "Milliseconds since 1970, or a date like 2026-11-21T12:00:00Z")->required();
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
    load->add_option("--update-interval", orbit_interval_msec_, "Of the propagation, in ms")->capture_default_str();
    on_device(load, [this] { return load_orbit_action(text_, orbit_interval_msec_); });

    CLI::App* const init = command("init", "Configure the sensors from an INI file")->group("Everyday commands");
    init->add_option("file", text_, "INI file")->required();
    on_device(init, [this] { return init_action(text_); });

    CLI::App* const call = command("call", "Call a method of the device layer");
    call->add_option("method", text_, "Name of the method; see: zavractl list")->required();
    call->group("Every command");
    on_device(call, [this, values = add_values(call)] { return call_action(method_named(text_), *values); });

    command("monitor", "The telemetry frames on the whole screen, as they change")
        ->group("Everyday commands")
        ->callback([this] { chosen_ = [this] { return monitor(options_), 0; }; });
}

void Command_Line::add_offline()
{
    CLI::App* const list = command("list", "The methods of the device layer")->group("Every command");
    list->fallthrough(false);
    list->add_option("words", words_, "Those whose names contain a word, in full");
    list->add_flag("--json", options_.json, "For programs: JSON");
    list->callback([this] { chosen_ = [this] { return list_methods(out_, words_, options_.json), 0; }; });

    CLI::App* const decoder = command("decode", "Explain captured frames, or the frames in a debug dump");
    decoder->group("Offline")->fallthrough(false);
    decoder->add_option("file", text_, "Lines in hexadecimal; without it, standard input");
    decoder->add_flag("--json", options_.json, "For programs: a JSON object on each line");
    decoder->callback([this] {
        chosen_ = [this] {
            if (text_.empty() || text_ == "-")
                return decode(std::cin, out_, options_.json) ? 0 : 1;
            std::istringstream stream(read_file(text_));
            return decode(stream, out_, options_.json) ? 0 : 1;
        };
    });

    command("check", "Say what is wrong with a file, and where")->group("Offline");
    const std::tuple<const char*, const char*, std::vector<Finding> (*)(const std::string&)> checks[] = {
        {"check ini", "Initialisation file of the sensors", check_ini},
        {"check tle", "Two-line element set", check_tle},
        {"check map", "Register map", check_map},
    };
    for (const auto& [words, help, check] : checks) {
        CLI::App* const app = command(words, help);
        app->add_option("file", text_, "The file")->required();
        app->callback([this, checked = check] {
            chosen_ = [this, checked] { return report(text_, checked(text_), options_.json, out_); };
        });
    }

    CLI::App* const complete = command("complete", "")->group("");
    complete->fallthrough(false)->prefix_command();
    complete->callback([this, complete] {
        chosen_ = [this, complete] { return write_completions(app_, complete->remaining(), out_), 0; };
    });
}

/// What is wrong with the command line; where a command is missing, which ones there are.
std::string Command_Line::complaint(const CLI::ParseError& error) const
{
    if (dynamic_cast<const CLI::RequiredError*>(&error) == nullptr)
        return error.what();
    const CLI::App* group = &app_;
    std::string words;
    while (!group->get_subcommands().empty()) {
        group = group->get_subcommands().front();
        words += group->get_name() + ' ';
    }
    std::string choice;
    for (const CLI::App* each : group->get_subcommands([](const CLI::App* app) { return !app->get_group().empty(); }))
        choice += (choice.empty() ? "" : ", ") + each->get_name();
    if (choice.empty())
        return error.what();
    const auto unknown = app_.remaining(true);
    return (unknown.empty() ? "after \"zavractl " + words + "...\" a command is missing"
                            : "there is no command \"" + words + unknown.front() + '"') +
           "; there is: " + choice;
}

int Command_Line::run(int argc, const char* const* argv)
{
    add_options();
    add_everyday();
    add_time();
    add_other_device_commands();
    add_offline();
    try {
        app_.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0)
            return app_.exit(error, out_, errors_);
        throw Usage_Error(complaint(error));
    }
    return chosen_();
}

}

int run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors)
{
    const auto complain = [&](const std::string& problem, int status) {
        errors << "zavractl: " << problem << std::endl;
        return status;
    };
    try {
        return Command_Line(out, errors).run(argc, argv);
    } catch (const Usage_Error& error) {
        return complain(error.what(), 2);
    } catch (const Output_Failure&) {
        throw;
    } catch (const ZAVRA_100_Exception& error) {
        // A method that refuses an argument never comes to the transport.
        const bool refused = std::string(error.what()).find("(Failed to use ") == std::string::npos &&
                             !std::string(error.what()).starts_with("Failed to use ");
        return complain(in_short(error.what()), refused ? 2 : 1);
    } catch (const std::exception& error) {
        return complain(error.what(), 1);
    }
}

}
