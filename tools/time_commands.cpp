#include "commands.h"
#include "failure.h"

#include <charconv>
#include <ctime>

#include <time.h>

namespace zavra::tools
{

namespace
{

unsigned long long parse_time(const std::string& text)
{
    const char* const end = text.data() + text.size();
    unsigned long long msec = 0;
    if (const auto [stop, error] = std::from_chars(text.data(), end, msec); error == std::errc() && stop == end)
        return msec;

    std::tm parts{};
    const char* rest = ::strptime(text.c_str(), "%Y-%m-%dT%H:%M:%S", &parts);
    unsigned int fraction = 0;
    if (rest != nullptr && *rest == '.') {
        const auto [stop, error] = std::from_chars(rest + 1, end, fraction);
        rest = error == std::errc() && stop == rest + 4 ? stop : nullptr;
    }
    const std::time_t seconds = rest != nullptr && std::string(rest) == "Z" ? ::timegm(&parts) : -1;
    if (seconds < 0)
        throw Usage_Error("time: expected milliseconds since 1970 or a date like 2026-11-21T12:00:00Z, got \"" + text +
                          '"');
    return static_cast<unsigned long long>(seconds) * 1000 + fraction;
}

const Method& set_epoch_time()
{
    return method_named("Set_Epoch_Time");
}

}

Device_Action time_action()
{
    return {[](ZAVRA_100& device) {
        Answer answer;
        for (const char* const name : {"Get_Epoch_Time", "Get_System_Time"}) {
            const Method& method = method_named(name);
            answer.leaves.insert(answer.leaves.end(), method.results.begin(), method.results.end());
            answer.value.update(method.call(device, Json::object()));
            // The unit's time is as old as the answer to it.
            if (answer.leaves.size() == 1)
                answer.value["ahead_of_host_msec"] = static_cast<long long>(
                    answer.value.at("epoch_time_msec").get<unsigned long long>() - host_epoch_msec());
        }
        answer.leaves.push_back({"ahead_of_host_msec", "/ahead_of_host_msec", "ms", Leaf::Kind::signed_integer, 64});
        return answer;
    }};
}

Device_Action set_time_action(const std::string& time)
{
    const unsigned long long given = time.empty() ? 0 : parse_time(time);
    return {
        [given, now = time.empty()](ZAVRA_100& device) {
            return Answer{{}, set_epoch_time().call(device, {{"epoch_time_msec", now ? host_epoch_msec() : given}})};
        },
        false};
}

}
