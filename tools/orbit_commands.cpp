#include "commands.h"
#include "failure.h"
#include "tle_file.h"

namespace zavra::tools
{

Device_Action load_orbit_action(const std::string& file, unsigned long long update_interval_msec)
{
    const Tle_File elements = read_tle_file(file);
    if (!elements.findings.empty())
        throw Usage_Error(located(file, elements.findings.front()));

    const Json arguments{
        {"tle_data",
         {{"tle_1", elements.line_1}, {"tle_2", elements.line_2}, {"update_interval_msec", update_interval_msec}}}};
    return {[arguments](ZAVRA_100& device) {
                const Method& method = method_named("Init_Orbit_Module");
                Answer answer{method.results, method.call(device, arguments)};
                if (const auto response = answer.value.at("response").get<unsigned int>(); response != 0)
                    throw Failure("the unit did not take the elements: it answered " + std::to_string(response));
                return answer;
            },
            false};
}

}
