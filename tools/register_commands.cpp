#include "check.h"
#include "commands.h"
#include "failure.h"

#include "../protocol/registers.h"

#include <VELM_ZAVRA_REGISTER_MAP.h>

namespace zavra::tools
{

namespace
{

Json names_of_set_flags(const VELM_ZAVRA_API_REGISTER& reading)
{
    Json names = Json::array();
    for (const auto& flag : reading.flags)
        if (flag.state)
            names.push_back(flag.name);
    return names;
}

VELM_ZAVRA_REGISTER_MAP load_map(const std::string& file)
try {
    return file.empty() ? VELM_ZAVRA_REGISTER_MAP() : VELM_ZAVRA_REGISTER_MAP(file);
} catch (const VELM_ZAVRA_API_Exception& error) {
    throw Usage_Error(error.what());
}

}

Device_Action registers_action(const std::string& map_file)
{
    return {[map = load_map(map_file)](Unit& unit) {
        ZAVRA_100_Standard_Telemetry telemetry;
        unit.device.Get_Standard_Telemetry(&telemetry);
        Answer answer;
        std::vector<VELM_ZAVRA_API_REGISTER> readings;
        for (unsigned int which = 0; which < std::size(register_sources); ++which)
            readings.push_back(
                map.Decode(static_cast<VELM_ZAVRA_API_REGISTERS>(which), telemetry.*register_sources[which].word));
        unsigned int hil_configuration = 0;
        unit.device.Get_HIL_Configuration(&hil_configuration);
        readings.push_back(map.Decode(VELM_ZAVRA_API_HIL_CONFIGURATION, hil_configuration));
        for (const auto& reading : readings) {
            answer.value[reading.name] = {{"value", reading.value}, {"flags", names_of_set_flags(reading)}};
            answer.leaves.push_back(
                {reading.name, '/' + reading.name + "/value", "", Leaf::Kind::unsigned_integer, 32, true});
            answer.leaves.push_back({reading.name + ".flags", '/' + reading.name + "/flags", "", Leaf::Kind::names});
        }
        return answer;
    }};
}

std::vector<Finding> check_map(const std::string& file)
{
    read_file(file);
    try {
        VELM_ZAVRA_REGISTER_MAP{file};
        return {};
    } catch (const VELM_ZAVRA_API_Exception& error) {
        // "Failed to load register map (FILE, line 3, section [x], key "7": reason)"
        std::string text = error.what();
        if (const auto begin = text.find(file + ", "); begin != std::string::npos && text.ends_with(')'))
            text = text.substr(begin + file.size() + 2, text.size() - begin - file.size() - 3);
        return {{0, text}};
    }
}

}
