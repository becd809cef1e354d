#include "arguments.h"
#include "commands.h"
#include "failure.h"
#include "tle_file.h"

namespace zavra::tools
{

Device_Action load_orbit_action(const std::string& file, const std::string& update_interval)
{
    const Tle_File elements = read_tle_file(file);
    if (!elements.findings.empty())
        throw Usage_Error(located(file, elements.findings.front()));

    const Method& init = method_named("Init_Orbit_Module");
    Arguments arguments(init.arguments);
    arguments.take_words({"update_interval_msec=" + update_interval});
    arguments.complete_with({{"tle_data", {{"tle_1", elements.line_1}, {"tle_2", elements.line_2}}}});
    return {[&init, values = arguments.json()](Unit& unit) {
                Answer answer{init.results, unit.call(init, values)};
                if (const auto response = answer.value.at("response").get<unsigned int>(); response != 0)
                    throw Failure("the unit did not take the elements: it answered " + std::to_string(response));
                return answer;
            },
            false};
}

}
