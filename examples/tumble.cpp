// A satellite tumbles: what its gyroscopes and its magnetometer say of it, ten times within five seconds of the clock
// on the wall.

#include <VELM_ZAVRA_API.h>

#include <cmath>
#include <cstdio>
#include <exception>
#include <iostream>
#include <unistd.h>

int main()
try {
    VELM_ZAVRA_API api;
    std::printf("Turns with x, y, z (rad/s)          Magnetic field x, y, z (uT)\n");
    for (int i = 0; i < 10; ++i) {
        const auto rate = api.Get_Gyro_Values(VELM_ZAVRA_API_GYRO_0);
        const auto field = api.Get_Magnetometer_Values(VELM_ZAVRA_API_MAGNETOMETER_0);
        std::printf("%9.4f %9.4f %9.4f      %9.2f %9.2f %9.2f\n", static_cast<double>(rate.x),
                    static_cast<double>(rate.y), static_cast<double>(rate.z), 1e6 * static_cast<double>(field.x),
                    1e6 * static_cast<double>(field.y), 1e6 * static_cast<double>(field.z));
        std::fflush(stdout);
        usleep(300000);
    }
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
}
