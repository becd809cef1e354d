#pragma once

#include "vectors.h"

enum VELM_ZAVRA_API_GYROSCOPES : unsigned int {
    VELM_ZAVRA_API_GYRO_0 = 0,
    VELM_ZAVRA_API_GYRO_1 = 1,
    VELM_ZAVRA_API_GYRO_2 = 2
};

enum VELM_ZAVRA_API_MAGNETOMETERS : unsigned int { VELM_ZAVRA_API_MAGNETOMETER_0 = 0 };
