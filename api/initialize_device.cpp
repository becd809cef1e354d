#include "VELM_ZAVRA_API.h"

#include "../device/debug.h"
#include "../device/failure.h"
#include "../protocol/sensor_ini.h"
#include "../protocol/sensors.h"
#include "call.h"

#include <VELM_INIPARSER.h>

#include <cstdio>
#include <iostream>
#include <string>

using namespace zavra;

namespace
{

constexpr const char* separator = "--------------------------------------------------------------";

struct Sensor_Kind
{
    const char* name;
    const char* section_prefix;
    const char* unreadable;
};

// Quirk: the two warnings differ in one letter.
constexpr Sensor_Kind gyroscope{"Gyro ", gyroscope_section, "Failed to read all section key values."};
constexpr Sensor_Kind magnetometer{"Magnetometer ", magnetometer_section, "Failed to read all sections key values."};

/// Configures one sensor from its section; `set` is the API operation that sends its parameters.
template <class Device_Parameters, class Sensor, class Parameters>
void initialize_sensor(VELM_ZAVRA_API& api, void (VELM_ZAVRA_API::*set)(Sensor, Parameters), const Sensor_Kind& kind,
                       unsigned int index, VELM_INIPARSER& parser)
{
    const std::string title = kind.name + std::to_string(index) + ": ";
    const std::string section = kind.section_prefix + std::to_string(index);
    const auto fail = [] { std::cout << "FAILED" << std::endl; };
    const auto abort = [&] { std::cout << title << "ABORT initialization and proceed ..." << std::endl; };

    Device_Parameters parameters{};
    int num_keys = 0;
    for_each_key(fields(parameters), "", [&](const std::string&, auto&) { ++num_keys; });

    std::cout << separator << std::endl << title << "Checking for INI section ... ";
    const int num_section_keys = parser.get_number_of_section_keys(section);
    if (num_section_keys != num_keys) {
        std::cout << (num_section_keys == 0 ? "NOT FOUND" : "INVALID KEY COUNT") << std::endl;
        return;
    }
    std::cout << "FOUND" << std::endl << title << "Reading the section parameters ... ";
    int num_read = 0;
    for_each_key(fields(parameters), "", [&](const std::string& key, auto& value) {
        if (parser.get_value(section + ':' + key, &value) != 0)
            ++num_read;
    });
    if (num_read != num_keys) {
        fail();
        warn(kind.unreadable);
        abort();
        return;
    }
    // What the operation prints, on either stream, comes after the text that leads to it.
    std::cout << "DONE" << std::endl << title << "Initialize with parameters ... " << std::flush;
    try {
        (api.*set)(static_cast<Sensor>(index), convert<Parameters>(parameters));
    } catch (const VELM_ZAVRA_API_Exception&) {
        fail();
        abort();
        return;
    }
    std::cout << "DONE" << std::endl;
}

/// The parser prints through stdio, which may have a buffer of its own.
bool load(VELM_INIPARSER& parser, const std::string& ini_file)
try {
    std::cout << "Load and parse INI file into dictionary ... " << std::flush;
    parser.load_dict(ini_file.c_str());
    std::cout << "DONE" << std::endl << "Dump INI config dictionary:" << std::endl;
    parser.dump(stdout);
    std::fflush(stdout);
    return true;
} catch (const VELM_INIPARSER_Exception&) {
    std::fflush(stdout);
    std::cout << "FAILED" << std::endl;
    warn("Initialize_Device: Cannot parse INI file (file not found or invalid)");
    warn("ABORT initialization and proceed ...");
    return false;
}

}

void VELM_ZAVRA_API::Initialize_Device(std::string ini_file)
{
    VELM_INIPARSER parser;
    try {
        std::cout << separator << std::endl
                  << "Initialize ZAVRA-100 device from INI configuration file:" << std::endl
                  << "INI file: " << ini_file << std::endl
                  << separator << std::endl;
        if (!load(parser, ini_file))
            return;
        std::cout << separator << std::endl << "Initialize Sensors:" << std::endl;
        for (unsigned int index = 0; index < protocol::number_of_gyroscopes; ++index)
            initialize_sensor<ZAVRA_100_Gyroscope_Parameters>(*this, &VELM_ZAVRA_API::Set_Gyro_Parameters, gyroscope,
                                                              index, parser);
        for (unsigned int index = 0; index < protocol::number_of_magnetometers; ++index)
            initialize_sensor<ZAVRA_100_Magnetometer_Parameters>(*this, &VELM_ZAVRA_API::Set_Magnetometer_Parameters,
                                                                 magnetometer, index, parser);
        std::cout << separator << std::endl;
        parser.free_dict();
    } catch (const VELM_ZAVRA_API_Exception& inner) {
        parser.free_dict();
        fail<VELM_ZAVRA_API_Exception>(failure("Initialize ZAVRA-100 Device", inner.what()));
    }
}
