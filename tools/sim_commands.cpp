#include "sim_commands.h"
#include "failure.h"

#include "../common/bus_directory.h"
#include "../simulator/bench/control_server.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <system_error>

#include <sys/socket.h>
#include <sys/un.h>

namespace zavra::tools
{

namespace
{

using namespace simulator;

constexpr time_t patience_sec = 2;

/// A request's answer from the unit that runs behind the control socket.
Json asked(const Options& options, Json request)
{
    if (options.target.simulate || options.target.dry_run)
        throw Usage_Error("sim is for a simulated unit that is running: without --simulate and --dry-run");
    const std::string directory =
        options.target.bus_directory.empty() ? default_bus_directory() : options.target.bus_directory;
    const std::string path = Control_Server::path(directory + '/' + options.target.bus);
    const auto fail = [&](const std::string& reason) {
        throw Failure("no simulated unit answers at " + path + " (" + reason + ')');
    };
    const auto fail_with_errno = [&] { fail(std::generic_category().message(errno)); };

    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    if (path.size() >= sizeof name.sun_path)
        fail(std::generic_category().message(ENAMETOOLONG));
    path.copy(name.sun_path, sizeof name.sun_path - 1);
    const File_Descriptor socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    const timeval patience{patience_sec, 0};
    ::setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    ::setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    request["address"] = options.target.address;
    const std::string text = json::shown(request);
    std::string answer(std::size_t{1} << 16U, '\0');
    if (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name) < 0 ||
        ::send(socket.get(), text.data(), text.size(), MSG_NOSIGNAL) < 0)
        fail_with_errno();
    const ssize_t size = ::recv(socket.get(), answer.data(), answer.size(), 0);
    if (size < 0)
        fail_with_errno();
    answer.resize(static_cast<std::size_t>(size));
    const Json state = Json::parse(answer, nullptr, false);
    if (!state.is_object())
        fail("it has gone away");
    if (state.contains("error"))
        throw Usage_Error(state["error"].get<std::string>());
    return state;
}

/// NAME.PART=NUMBER of each word as one object.
Json named_numbers(const std::vector<std::string>& words)
{
    Json object = Json::object();
    for (const std::string& word : words) {
        const auto equals = std::min(word.find('='), word.size());
        double number = 0;
        const char* const end = word.data() + word.size();
        const char* const begin = word.data() + std::min(equals + 1, word.size());
        if (const auto [last, error] = std::from_chars(begin, end, number); error != std::errc() || last != end)
            throw Usage_Error("\"" + word + "\" is not NAME=NUMBER");
        std::string pointer = '/' + word.substr(0, equals);
        std::replace(pointer.begin(), pointer.end(), '.', '/');
        try {
            Json& place = object[Json::json_pointer(pointer)];
            if (!place.is_null())
                throw Usage_Error("\"" + word + "\" stands beside another value of the same name");
            place = json::number(number);
        } catch (const Json::exception&) {
            throw Usage_Error("\"" + word + "\" stands beside another value of the same name");
        }
    }
    return object;
}

/// "KIND=PROBABILITY[:MSEC]", or "KIND[:MSEC]" for once.
Json fault_event(const std::string& word)
{
    try {
        const bool once = word.find('=') == std::string::npos;
        const auto colon = std::min(word.find(':'), word.size());
        const Fault_Rate rate = parse_fault_rate(once ? word.substr(0, colon) + "=1" + word.substr(colon) : word);
        Json event{{"fault", name_of(rate.fault)}};
        if (!once)
            event["probability"] = rate.probability;
        if (lasts(rate.fault))
            event["for"] = static_cast<double>(rate.duration.count()) / 1000;
        return event;
    } catch (const std::invalid_argument& error) {
        throw Usage_Error(error.what());
    }
}

void add_leaves(Leaves& leaves, const Json& value, const std::string& path, const std::string& pointer)
{
    for (const auto& [key, part] : value.items()) {
        const std::string part_path = path.empty() ? key : path + '.' + key;
        if (part.is_object()) {
            add_leaves(leaves, part, part_path, pointer + '/' + key);
        } else {
            Leaf leaf;
            leaf.path = part_path;
            leaf.pointer = pointer + '/' + key;
            leaf.kind = Leaf::Kind::real;
            leaf.size = 64;
            leaves.push_back(leaf);
        }
    }
}

/// What was asked for; a change is made without words.
void show(const Json& value, bool changed, const Options& options, std::ostream& out)
{
    if (changed && !options.json && !options.csv)
        return;
    Answer answer;
    answer.value = value;
    add_leaves(answer.leaves, value, "", "");
    Answer_Writer(out, options.json ? Format::json : options.csv ? Format::csv : Format::text, false).write(answer);
}

const Json& unit_of(const Json& state, const Options& options)
{
    return state.at("units").at(std::to_string(options.target.address));
}

void fault(const std::vector<std::string>& words, const Options& options, std::ostream& out)
{
    std::vector<Json> events;
    for (const std::string& word : words)
        events.push_back(fault_event(word));
    Json state = asked(options, Json::object());
    for (const Json& event : events)
        state = asked(options, event);
    show(unit_of(state, options).at("faults"), !words.empty(), options, out);
}

void world(const std::vector<std::string>& words, const Options& options, std::ostream& out)
{
    const Json changes = named_numbers(words);
    const Json state = asked(options, changes.empty() ? Json::object() : Json{{"world", changes}});
    show(unit_of(state, options).at("world"), !words.empty(), options, out);
}

void time(const std::vector<std::string>& words, const Options& options, std::ostream& out)
{
    const Json changes = named_numbers(words);
    const Json state = asked(options, changes.empty() ? Json::object() : Json{{"time", changes}});
    show({{"time_msec", state.at("time_msec")}, {"time_factor", state.at("time_factor")}}, !words.empty(), options,
         out);
}

}

std::vector<Sim_Command> sim_commands()
{
    return {
        {"sim fault", "What goes wrong, and how likely it is in each transaction",
         "KIND=PROBABILITY[:MSEC] from now on, KIND[:MSEC] once", fault},
        {"sim world", "What the unit measures", "NAME=NUMBER, as it is shown without values", world},
        {"sim time", "The simulation's time, which starts at 0", "factor=X, advance=SECONDS", time},
    };
}

}
