#pragma once

#include "vectors.h"

/// @file
/// Parameter sets of the unit's attitude sensors. The units of standard deviations, sensitivities and filter criteria,
/// and the meaning of output types and filter counters, are the unit's own; the library passes them through.

/// One gyroscope's configuration.
struct ZAVRA_100_Gyroscope_Parameters
{
    unsigned char output_type;                  ///< output type code of the gyroscope
    ZAVRA_100_Vector3_float sensor_stddev;      ///< standard deviation per axis
    ZAVRA_100_Vector3_float sensor_sensitivity; ///< sensitivity per axis
    ZAVRA_100_Quaternion_float quaternion;      ///< mounting orientation of the sensor
    unsigned long long update_interval_msec;    ///< update interval in milliseconds
    unsigned char sensor_correction_enable;     ///< 0: correction off, otherwise on
    ZAVRA_100_Matrix3x3_float correction_scale; ///< correction matrix
    ZAVRA_100_Vector3_float correction_offset;  ///< correction offset per axis
    unsigned int bias_counter;                  ///< counter setting of the bias calculation
    unsigned char avg_filter_enable;            ///< 0: averaging filter off, otherwise on
    unsigned int avg_filter_counter;            ///< counter setting of the averaging filter
    float avg_filter_criterion;                 ///< criterion of the averaging filter
};

/// The magnetometer's configuration.
struct ZAVRA_100_Magnetometer_Parameters
{
    ZAVRA_100_Vector3_float sensor_stddev;      ///< standard deviation per axis
    ZAVRA_100_Vector3_float sensor_sensitivity; ///< sensitivity per axis
    ZAVRA_100_Quaternion_float quaternion;      ///< mounting orientation of the sensor
    unsigned long long update_interval_msec;    ///< update interval in milliseconds
    unsigned char sensor_correction_enable;     ///< 0: correction off, otherwise on
    ZAVRA_100_Matrix3x3_float correction_scale; ///< correction matrix
    ZAVRA_100_Vector3_float correction_offset;  ///< correction offset per axis
    unsigned char avg_filter_enable;            ///< 0: averaging filter off, otherwise on
    unsigned int avg_filter_counter;            ///< counter setting of the averaging filter
    float avg_filter_criterion;                 ///< criterion of the averaging filter
    unsigned char moving_avg_filter_enable;     ///< 0: moving averaging filter off, otherwise on
    float moving_avg_filter_gain;               ///< gain of the moving averaging filter
    float moving_avg_filter_criterion;          ///< criterion of the moving averaging filter
};
