#include "report_file.h"

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace zavra::simulator
{

namespace
{

[[noreturn]] void fail(const std::string& path)
{
    throw std::runtime_error("Report " + path + ": " + std::generic_category().message(errno));
}

Report::Origin origin_of(const Test_Bench::Unit& unit, const std::string& command_line,
                         const std::vector<std::string>& files)
{
    Report::Origin origin{.command_line = command_line, .satellite = unit.satellite->satellite.settings()};
    for (const std::string& file : files) {
        if (file.empty())
            continue;
        std::ifstream stream(file, std::ios::binary);
        origin.files.emplace_back(file, std::string(std::istreambuf_iterator<char>(stream), {}));
        origin.title += (origin.title.empty() ? "" : ", ") + std::filesystem::path(file).stem().string();
    }
    return origin;
}

}

Report_File::Report_File(const std::string& path, Test_Bench::Unit& unit, const std::string& command_line,
                         const std::vector<std::string>& files)
    : path_(path),
      report_(origin_of(unit, command_line, files), limits_of(unit))
{
    if (!path_.empty())
        file_.open(path_, std::ios::binary);
    if (!file_)
        fail(path_);
}

void Report_File::add(Clock::Time time, Json event, const std::string& refusal)
{
    event.erase("at");
    event.erase("address");
    std::string text;
    if (event.contains("command")) {
        text = event["command"].get<std::string>() + ' ';
        event.erase("command");
        if (event.contains("arguments")) {
            event.update(Json(event["arguments"]));
            event.erase("arguments");
        }
    }
    if (event.size() == 1 && event.contains("satellite"))
        event = Json(event["satellite"]);
    if (!event.empty())
        text += json::shown(event);
    const bool refused = !refusal.empty();
    report_.add_event(static_cast<double>(time.count()) / 1000, refused ? "refused" : "event",
                      refused ? text + ": " + refusal : text);
}

void Report_File::add(const Json& journal_entry)
{
    const auto command = journal_entry.find("command");
    const bool fault = journal_entry.contains("fault");
    const bool writes = journal_entry["direction"] == "write";
    std::string text = command == journal_entry.end() ? std::string() : json::shown(*command);
    std::erase(text, '"');
    if (!fault && (!writes || text.empty() || text.find("Get_") != std::string::npos))
        return;
    if (writes && journal_entry.contains("fields") && !journal_entry["fields"].empty())
        text += ' ' + json::shown(journal_entry["fields"]);
    if (fault)
        text = journal_entry["fault"].get<std::string>() + (text.empty() ? "" : ": " + text);
    report_.add_event(journal_entry["time_msec"].get<double>() / 1000, fault ? "fault" : "command", text);
}

void Report_File::write()
{
    if (path_.empty())
        return;
    errno = 0;
    file_ << report_.html();
    file_.close();
    if (!file_)
        fail(path_);
}

std::string command_line(int argc, const char* const* argv)
{
    std::string line;
    for (int i = 0; i < argc; ++i) {
        std::string word = i == 0 ? std::filesystem::path(argv[0]).filename().string() : argv[i];
        if (word.empty() ||
            word.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./=:,+@") !=
                std::string::npos) {
            for (std::size_t quote = 0; (quote = word.find('\'', quote)) != std::string::npos; quote += 4)
                word.replace(quote, 1, "'\\''");
            word = '\'' + word + '\'';
        }
        line += (i == 0 ? "" : " ") + word;
    }
    return line;
}

}
