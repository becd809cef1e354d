#include "commands.h"
#include "moment.h"

namespace zavra::tools
{

Device_Action time_action()
{
    return {[](Unit& unit) {
        Answer answer;
        for (const char* const name : {"Get_Epoch_Time", "Get_System_Time"}) {
            const Method& method = method_named(name);
            answer.leaves.insert(answer.leaves.end(), method.results.begin(), method.results.end());
            answer.value.update(unit.call(method, Json::object()));
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
    const unsigned long long given = time.empty() ? 0 : epoch_msec("time", time);
    return {[given, now = time.empty()](Unit& unit) {
                unit.command("Set_Epoch_Time",
                             [&](ZAVRA_100& device) { device.Set_Epoch_Time(now ? host_epoch_msec() : given); });
                return Answer();
            },
            false};
}

}
