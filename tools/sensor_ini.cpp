#include "check.h"
#include "commands.h"
#include "failure.h"

#include "../common/text.h"
#include "../protocol/sensor_ini.h"
#include "../protocol/sensors.h"

#include <VELM_INIPARSER.h>

#include <map>
#include <memory>
#include <set>

namespace zavra::tools
{

namespace
{

/// Where sections and keys stand, which the platform's parser does not tell.
struct Section
{
    std::size_t line = 0;
    std::map<std::string, std::size_t> keys;
};

class Ini_File
{
public:
    explicit Ini_File(const std::string& file)
    {
        find_lines(read_file(file));
        try {
            parser_.load_dict(file.c_str());
        } catch (const VELM_INIPARSER_Exception& error) {
            findings.push_back({0, error.what()});
            return;
        }
        for_each_sensor([&]<class Parameters>(const Sensor<Parameters>& sensor, unsigned int index) {
            Parameters parameters{};
            const std::string section = sensor.section + std::to_string(index);
            if (!read(section, parameters))
                return;
            sensors.emplace_back(section, [set = sensor.set, index, parameters](ZAVRA_100& device) {
                (device.*set)(static_cast<unsigned char>(index), parameters);
            });
        });
        if (sensors.empty() && findings.empty())
            findings.push_back({0, "no section configures a sensor"});
        // A misspelt section would go unnoticed.
        for (const auto& [name, section] : sections_)
            if (name.starts_with("zavra_dev_init_") && !known_.contains(name))
                findings.push_back({section.line, "section [" + name + "] is that of no sensor"});
        std::stable_sort(findings.begin(), findings.end(),
                         [](const Finding& a, const Finding& b) { return a.line < b.line; });
    }

    std::vector<Finding> findings;
    /// The sections that can be used, and what configures their sensors.
    std::vector<std::pair<std::string, std::function<void(ZAVRA_100&)>>> sensors;

private:
    template <class Parameters>
    struct Sensor
    {
        const char* section;
        void (ZAVRA_100::*set)(unsigned char, Parameters);
    };

    template <class Action>
    static void for_each_sensor(Action action)
    {
        for (unsigned int index = 0; index < protocol::number_of_gyroscopes; ++index)
            action(Sensor<ZAVRA_100_Gyroscope_Parameters>{gyroscope_section, &ZAVRA_100::Set_Gyro_Parameters}, index);
        for (unsigned int index = 0; index < protocol::number_of_magnetometers; ++index)
            action(Sensor<ZAVRA_100_Magnetometer_Parameters>{magnetometer_section,
                                                             &ZAVRA_100::Set_Magnetometer_Parameters},
                   index);
    }

    void find_lines(const std::string& text)
    {
        std::size_t number = 0;
        Section* section = nullptr;
        for (const std::string& each : lines_of(text)) {
            ++number;
            std::string line = trimmed(each.substr(0, each.find_first_of(";#")));
            make_lower_case(line);
            const auto equals = line.find('=');
            if (line.starts_with('[')) {
                section = &sections_[trimmed(line.substr(1, line.find(']') - 1))];
                section->line = section->line == 0 ? number : section->line;
            } else if (section != nullptr && equals != std::string::npos) {
                const std::string key = trimmed(line.substr(0, equals));
                if (!section->keys.emplace(key, number).second)
                    findings.push_back({number, key + " stands twice in its section"});
            }
        }
    }

    /// @return whether the section is there and good
    template <class Parameters>
    bool read(const std::string& name, Parameters& parameters)
    {
        known_.insert(name);
        const auto found = sections_.find(name);
        if (found == sections_.end())
            return false;
        const std::size_t findings_before = findings.size();
        std::set<std::string> expected;
        for_each_key(fields(parameters), "", [&](const std::string& key, auto& value) {
            expected.insert(key);
            const auto line = found->second.keys.find(key);
            if (line == found->second.keys.end())
                findings.push_back({found->second.line, "section [" + name + "] has no " + key});
            else if (parser_.get_value(name + ':' + key, &value) == 0)
                findings.push_back({line->second, key + " is not a number of type " + type_of(value)});
        });
        for (const auto& [key, line] : found->second.keys)
            if (!expected.contains(key))
                findings.push_back({line, key + " is no parameter of this sensor"});
        if (const auto count = static_cast<std::size_t>(parser_.get_number_of_section_keys(name));
            findings.size() == findings_before && count != expected.size())
            findings.push_back({found->second.line, "section [" + name + "] has " + std::to_string(count) +
                                                        " keys instead of " + std::to_string(expected.size())});
        return findings.size() == findings_before;
    }

    template <class T>
    static std::string type_of(const T&)
    {
        return type_name(leaves_of(items_of<T>("value")).front());
    }

    VELM_INIPARSER parser_;
    std::map<std::string, Section> sections_;
    std::set<std::string> known_;
};

}

std::vector<Finding> check_ini(const std::string& file)
{
    return Ini_File(file).findings;
}

Device_Action init_action(const std::string& file)
{
    const auto ini = std::make_shared<Ini_File>(file);
    if (!ini->findings.empty())
        throw Usage_Error(located(file, ini->findings.front()));
    return {[ini](Unit& unit) {
                Answer answer;
                for (const auto& [section, configure] : ini->sensors) {
                    unit.command("the configuration of " + section, configure);
                    answer.leaves.push_back({section, '/' + section, "", Leaf::Kind::text});
                    answer.value[section] = "configured";
                }
                return answer;
            },
            false};
}

}
