#pragma once

#include "event.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zavra::simulator
{

/// What happens to the units of a bench and when, as a TOML file tells it: a table [[event]] with the keys of each
/// Event.
class Scenario
{
public:
    struct Problem
    {
        std::size_t line; ///< 0 where it concerns the whole file
        std::string text;
    };

    /// @throws std::runtime_error  when the file cannot be read or does not make sense, with the line
    explicit Scenario(const std::filesystem::path& file);

    /// @throws std::invalid_argument  when one does not make sense
    explicit Scenario(const std::vector<Json>& events);

    /// All that does not make sense in a file.
    static std::vector<Problem> problems(const std::filesystem::path& file);

    /// Told of an event when it has happened, and of why, if the unit refused it.
    using Observer = std::function<void(const Json& event, const std::string& refusal)>;

    /// Puts all of it on the bench's agenda. What a unit refuses to do is told on standard error when its time comes.
    /// @throws std::runtime_error  with the line, when it speaks of a unit that there is not
    void play(Test_Bench& bench, const std::vector<unsigned int>& addresses, const Observer& observer = {}) const;

private:
    struct Written_Event
    {
        Event event;
        std::size_t line;
        Json source;
    };

    Scenario() = default;
    void read(std::vector<Problem>& problems);

    std::string file_;
    std::vector<Written_Event> events_;
};

}
