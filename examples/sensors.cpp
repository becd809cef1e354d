// Configures the unit's sensors from an INI file and shows a measurement of each.

#include <VELM_ZAVRA_API.h>

#include <cstdio>
#include <exception>
#include <iostream>
#include <string>

namespace
{

void show(const std::string& sensor, const VELM_ZAVRA_API_SENSOR_VALUES& values, const char* unit,
          unsigned long long interval_msec)
{
    std::printf("  %-15s %12.4e %12.4e %12.4e %-5s  at %llu, every %llu ms\n", sensor.c_str(),
                static_cast<double>(values.x), static_cast<double>(values.y), static_cast<double>(values.z), unit,
                values.timestamp, interval_msec);
}

}

int main(int argc, char* argv[])
try {
    if (argc != 2) {
        std::cerr << "Usage: " << argv[0] << " INI_FILE" << std::endl;
        return 2;
    }
    VELM_ZAVRA_API api;
    api.Initialize_Device(argv[1]);

    std::printf("\nMeasurements\n");
    for (const auto gyro : {VELM_ZAVRA_API_GYRO_0, VELM_ZAVRA_API_GYRO_1, VELM_ZAVRA_API_GYRO_2})
        show("gyroscope " + std::to_string(gyro), api.Get_Gyro_Values(gyro), "rad/s",
             api.Get_Gyro_Update_Interval(gyro));
    constexpr auto magnetometer = VELM_ZAVRA_API_MAGNETOMETER_0;
    show("magnetometer " + std::to_string(magnetometer), api.Get_Magnetometer_Values(magnetometer), "T",
         api.Get_Magnetometer_Update_Interval(magnetometer));
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
}
