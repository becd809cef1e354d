#include "failure.h"
#include "method.h"
#include "monitor.h"
#include "output.h"

#include <utility>

namespace zavra::tools
{

void Monitor_Model::read(ZAVRA_100& device)
{
    constexpr std::pair<const char*, const char*> frames[] = {
        {"info", "Get_Info_Frame"},
        {"standard", "Get_Standard_Telemetry"},
        {"sensor", "Get_Sensor_Telemetry"},
        {"actuator", "Get_Actuator_Telemetry"},
        {"attitude", "Get_Attitude_Telemetry"},
        {"power", "Get_Power_Telemetry"},
    };
    lines_.clear();
    for (const auto& [name, getter] : frames) {
        const Method& method = method_named(getter);
        std::string problem;
        Json values;
        try {
            values = method.call(device, Json::object());
        } catch (const ZAVRA_100_Exception& error) {
            problem = in_short(error.what());
        }
        lines_.push_back({name, problem, true, false});
        for (const Leaf& leaf : method.results) {
            std::string& before = before_[name + leaf.pointer];
            const std::string value = problem.empty() ? text_with_unit(leaf, values) : before;
            lines_.push_back({leaf.path, value, false, !before.empty() && value != before});
            before = value;
        }
    }
}

}
