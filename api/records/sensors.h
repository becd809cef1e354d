#pragma once

#include "vectors.h"

/// @file
/// The unit's attitude sensors: their names, measurements and parameter sets. The units of standard deviations,
/// sensitivities and filter criteria, and the meaning of output types and filter counters, are the unit's own; the
/// library passes them through.

/// The gyroscopes; the value is the unit's index.
enum VELM_ZAVRA_API_GYROSCOPES : unsigned int {
    VELM_ZAVRA_API_GYRO_0 = 0,
    VELM_ZAVRA_API_GYRO_1 = 1,
    VELM_ZAVRA_API_GYRO_2 = 2,
};

/// The magnetometers; the value is the unit's index.
enum VELM_ZAVRA_API_MAGNETOMETERS : unsigned int {
    VELM_ZAVRA_API_MAGNETOMETER_0 = 0,
};

/// A measurement: angular velocity in rad/s of the body frame, or magnetic field as the unit gives it.
struct VELM_ZAVRA_API_SENSOR_VALUES
{
    float x;
    float y;
    float z;
    unsigned long long timestamp; ///< the unit's time of the measurement, passed on unchanged
};

/// One gyroscope's configuration.
struct VELM_ZAVRA_API_GYROSCOPE_PARAMETERS
{
    unsigned char output_type;                           ///< output type code of the gyroscope
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT sensor_stddev;      ///< standard deviation per axis
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT sensor_sensitivity; ///< sensitivity per axis
    VELM_ZAVRA_API_QUATERNION_FLOAT quaternion;          ///< mounting orientation of the sensor
    unsigned long long update_interval_msec;             ///< update interval in milliseconds
    unsigned char sensor_correction_enable;              ///< 0: correction off, otherwise on
    VELM_ZAVRA_API_MATRIX3X3_FLOAT correction_scale;     ///< correction matrix
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT correction_offset;  ///< correction offset per axis
    unsigned int bias_counter;                           ///< counter setting of the bias calculation
    unsigned char avg_filter_enable;                     ///< 0: averaging filter off, otherwise on
    unsigned int avg_filter_counter;                     ///< counter setting of the averaging filter
    float avg_filter_criterion;                          ///< criterion of the averaging filter
};

/// The magnetometer's configuration.
struct VELM_ZAVRA_API_MAGNETOMETER_PARAMETERS
{
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT sensor_stddev;      ///< standard deviation per axis
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT sensor_sensitivity; ///< sensitivity per axis
    VELM_ZAVRA_API_QUATERNION_FLOAT quaternion;          ///< mounting orientation of the sensor
    unsigned long long update_interval_msec;             ///< update interval in milliseconds
    unsigned char sensor_correction_enable;              ///< 0: correction off, otherwise on
    VELM_ZAVRA_API_MATRIX3X3_FLOAT correction_scale;     ///< correction matrix
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT correction_offset;  ///< correction offset per axis
    unsigned char avg_filter_enable;                     ///< 0: averaging filter off, otherwise on
    unsigned int avg_filter_counter;                     ///< counter setting of the averaging filter
    float avg_filter_criterion;                          ///< criterion of the averaging filter
    unsigned char moving_avg_filter_enable;              ///< 0: moving averaging filter off, otherwise on
    float moving_avg_filter_gain;                        ///< gain of the moving averaging filter
    float moving_avg_filter_criterion;                   ///< criterion of the moving averaging filter
};
