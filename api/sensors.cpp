#include "VELM_ZAVRA_API.h"

#include "../device/ZAVRA_100.h"
#include "../protocol/sensors.h"
#include "call.h"

using namespace zavra;

namespace
{

/// Calls one of the device's two methods that give a measurement and its time.
VELM_ZAVRA_API_SENSOR_VALUES
measurement(ZAVRA_100& device, const char* action_words,
            void (ZAVRA_100::*method)(unsigned char, ZAVRA_100_Vector3_float*, unsigned long long*), unsigned int index)
{
    return operation(action_words, [&] {
        ZAVRA_100_Vector3_float vector{};
        unsigned long long timestamp = 0;
        (device.*method)(static_cast<unsigned char>(index), &vector, &timestamp);
        return VELM_ZAVRA_API_SENSOR_VALUES{vector.x, vector.y, vector.z, timestamp};
    });
}

}

void VELM_ZAVRA_API::Set_Gyro_Values(VELM_ZAVRA_API_GYROSCOPES gyro, VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT angular_velocity)
{
    command(*device_, "set gyro values", &ZAVRA_100::Set_Gyro_Values, gyro, angular_velocity);
}

VELM_ZAVRA_API_SENSOR_VALUES VELM_ZAVRA_API::Get_Gyro_Values(VELM_ZAVRA_API_GYROSCOPES gyro)
{
    return measurement(*device_, "get gyro values", &ZAVRA_100::Get_Gyro_Values, gyro);
}

void VELM_ZAVRA_API::Set_Gyro_Parameters(VELM_ZAVRA_API_GYROSCOPES gyro, VELM_ZAVRA_API_GYROSCOPE_PARAMETERS parameters)
{
    command(*device_, "set gyro parameters", &ZAVRA_100::Set_Gyro_Parameters, gyro, parameters);
}

VELM_ZAVRA_API_GYROSCOPE_PARAMETERS VELM_ZAVRA_API::Get_Gyro_Parameters(VELM_ZAVRA_API_GYROSCOPES gyro)
{
    return query<VELM_ZAVRA_API_GYROSCOPE_PARAMETERS>(*device_, "get gyro parameters", &ZAVRA_100::Get_Gyro_Parameters,
                                                      gyro);
}

void VELM_ZAVRA_API::Set_Gyro_Update_Interval(VELM_ZAVRA_API_GYROSCOPES gyro, unsigned long long interval_msec)
{
    command(*device_, "set gyro update interval", &ZAVRA_100::Set_Gyro_Update_Interval, gyro, interval_msec);
}

unsigned long long VELM_ZAVRA_API::Get_Gyro_Update_Interval(VELM_ZAVRA_API_GYROSCOPES gyro)
{
    return query<unsigned long long>(*device_, "get gyro update interval", &ZAVRA_100::Get_Gyro_Update_Interval, gyro);
}

void VELM_ZAVRA_API::Enable_Gyro_Correction(VELM_ZAVRA_API_GYROSCOPES gyro)
{
    command(*device_, "enable gyro correction", &ZAVRA_100::Enable_Gyro_Correction, gyro);
}

void VELM_ZAVRA_API::Disable_Gyro_Correction(VELM_ZAVRA_API_GYROSCOPES gyro)
{
    command(*device_, "disable gyro correction", &ZAVRA_100::Disable_Gyro_Correction, gyro);
}

void VELM_ZAVRA_API::Start_Gyro_Bias_Calculation(VELM_ZAVRA_API_GYROSCOPES gyro)
{
    command(*device_, "start gyro bias calculation", &ZAVRA_100::Start_Gyro_Bias_Calculation, gyro);
}

void VELM_ZAVRA_API::Set_Gyro_Bias_Value(VELM_ZAVRA_API_GYROSCOPES gyro, VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT bias)
{
    command(*device_, "set gyro bias values", &ZAVRA_100::Set_Gyro_Bias_Value, gyro, bias);
}

VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT VELM_ZAVRA_API::Get_Gyro_Bias_Value(VELM_ZAVRA_API_GYROSCOPES gyro)
{
    return query<VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT>(*device_, "get gyro bias values", &ZAVRA_100::Get_Gyro_Bias_Value,
                                                   gyro);
}

void VELM_ZAVRA_API::Enable_Gyro_Bias_Removement(VELM_ZAVRA_API_GYROSCOPES gyro)
{
    command(*device_, "enable gyro bias removement", &ZAVRA_100::Enable_Gyro_Bias_Removement, gyro);
}

void VELM_ZAVRA_API::Disable_Gyro_Bias_Removement(VELM_ZAVRA_API_GYROSCOPES gyro)
{
    command(*device_, "disable gyro bias removement", &ZAVRA_100::Disable_Gyro_Bias_Removement, gyro);
}

void VELM_ZAVRA_API::Enable_Gyro_Averaging_Filter(VELM_ZAVRA_API_GYROSCOPES gyro)
{
    command(*device_, "enable gyro averaging filter", &ZAVRA_100::Enable_Gyro_Averaging_Filter, gyro);
}

void VELM_ZAVRA_API::Disable_Gyro_Averaging_Filter(VELM_ZAVRA_API_GYROSCOPES gyro)
{
    command(*device_, "disable gyro averaging filter", &ZAVRA_100::Disable_Gyro_Averaging_Filter, gyro);
}

void VELM_ZAVRA_API::Set_Magnetometer_Values(VELM_ZAVRA_API_MAGNETOMETERS magnetometer,
                                             VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT magnetic_field)
{
    command(*device_, "set magnetometer values", &ZAVRA_100::Set_Magnetometer_Values, magnetometer, magnetic_field);
}

VELM_ZAVRA_API_SENSOR_VALUES VELM_ZAVRA_API::Get_Magnetometer_Values(VELM_ZAVRA_API_MAGNETOMETERS magnetometer)
{
    return measurement(*device_, "get magnetometer values", &ZAVRA_100::Get_Magnetometer_Values, magnetometer);
}

void VELM_ZAVRA_API::Set_Magnetometer_Parameters(VELM_ZAVRA_API_MAGNETOMETERS magnetometer,
                                                 VELM_ZAVRA_API_MAGNETOMETER_PARAMETERS parameters)
{
    command(*device_, "set magnetometer parameters", &ZAVRA_100::Set_Magnetometer_Parameters, magnetometer, parameters);
}

VELM_ZAVRA_API_MAGNETOMETER_PARAMETERS
VELM_ZAVRA_API::Get_Magnetometer_Parameters(VELM_ZAVRA_API_MAGNETOMETERS magnetometer)
{
    return query<VELM_ZAVRA_API_MAGNETOMETER_PARAMETERS>(*device_, "get magnetometer parameters",
                                                         &ZAVRA_100::Get_Magnetometer_Parameters, magnetometer);
}

void VELM_ZAVRA_API::Set_Magnetometer_Update_Interval(VELM_ZAVRA_API_MAGNETOMETERS magnetometer,
                                                      unsigned long long interval_msec)
{
    command(*device_, "set magnetometer update interval", &ZAVRA_100::Set_Magnetometer_Update_Interval, magnetometer,
            interval_msec);
}

unsigned long long VELM_ZAVRA_API::Get_Magnetometer_Update_Interval(VELM_ZAVRA_API_MAGNETOMETERS magnetometer)
{
    return query<unsigned long long>(*device_, "get magnetometer update interval",
                                     &ZAVRA_100::Get_Magnetometer_Update_Interval, magnetometer);
}

void VELM_ZAVRA_API::Enable_Magnetometer_Correction(VELM_ZAVRA_API_MAGNETOMETERS magnetometer)
{
    command(*device_, "enable magnetometer correction", &ZAVRA_100::Enable_Magnetometer_Correction, magnetometer);
}

void VELM_ZAVRA_API::Disable_Magnetometer_Correction(VELM_ZAVRA_API_MAGNETOMETERS magnetometer)
{
    command(*device_, "disable magnetometer correction", &ZAVRA_100::Disable_Magnetometer_Correction, magnetometer);
}

void VELM_ZAVRA_API::Enable_Magnetometer_Averaging_Filter(VELM_ZAVRA_API_MAGNETOMETERS magnetometer)
{
    command(*device_, "enable magnetometer averaging filter", &ZAVRA_100::Enable_Magnetometer_Averaging_Filter,
            magnetometer);
}

void VELM_ZAVRA_API::Disable_Magnetometer_Averaging_Filter(VELM_ZAVRA_API_MAGNETOMETERS magnetometer)
{
    command(*device_, "disable magnetometer averaging filter", &ZAVRA_100::Disable_Magnetometer_Averaging_Filter,
            magnetometer);
}

void VELM_ZAVRA_API::Enable_Magnetometer_Moving_Averaging_Filter(VELM_ZAVRA_API_MAGNETOMETERS magnetometer)
{
    command(*device_, "enable magnetometer moving averaging filter",
            &ZAVRA_100::Enable_Magnetometer_Moving_Averaging_Filter, magnetometer);
}

void VELM_ZAVRA_API::Disable_Magnetometer_Moving_Averaging_Filter(VELM_ZAVRA_API_MAGNETOMETERS magnetometer)
{
    command(*device_, "disable magnetometer moving averaging filter",
            &ZAVRA_100::Disable_Magnetometer_Moving_Averaging_Filter, magnetometer);
}

void VELM_ZAVRA_API::Set_Sun_Vector(VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT sun_vector, unsigned long long epoch_time_msec)
{
    command(*device_, "set sun vector", &ZAVRA_100::Set_Sun_Vector, sun_vector, epoch_time_msec);
}
