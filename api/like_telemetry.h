#pragma once

#include "../protocol/telemetry.h"
#include "../protocol/vectors.h"
#include "records/telemetry.h"

/// The frames in which the API groups fields that the device's record has one by one: the same order on the wire.
namespace zavra
{

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT> = field_list<ZAVRA_100_Vector3_float>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_QUATERNION_FLOAT> = field_list<ZAVRA_100_Quaternion_float>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_REACTIONWHEEL_SPEEDS> = field_list<ZAVRA_100_Vector6_float>;

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_SENSOR_TELEMETRY> = [](auto& r) {
    return List{Field{"EPOCH_TIME_MSEC", r.epoch_time_msec}.in("ms"),
                Field{"INDEX_OF_ACTIVE_STARTRACKER", r.index_of_active_startracker},
                Field{"QUATERNION_ATTITUDE_BF", r.quaternion_attitude_bf},
                Field{"INDEX_OF_ACTIVE_GYRO", r.index_of_active_gyro},
                Field{"MEASURED_ANGULAR_VELOCITY_GYRO_RADPS", r.measured_angular_velocity_gyro_radps}.in("rad/s"),
                Field{"INDEX_OF_ACTIVE_MAGNETOMETER", r.index_of_active_magnetometer},
                Field{"MEASURED_MAGNETIC_FIELD_MAGNETOMETER_T", r.measured_magnetic_field_magnetometer_t}.in("T"),
                Field{"MEASURED_SUN_VECTOR_SUNSENSOR", r.measured_sun_vector_sunsensor},
                Field{"TEMPERATURE_DEGC", r.temperature_degc, style::single_byte}.in("degC")};
};

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_ACTUATOR_TELEMETRY> = [](auto& r) {
    return List{Field{"EPOCH_TIME_MSEC", r.epoch_time_msec}.in("ms"),
                Field{"REACTIONWHEEL_TARGET_RADPS", r.reactionwheel_target_radps}.in("rad/s"),
                Field{"REACTIONWHEEL_CURRENT_SPEED_RADPS", r.reactionwheel_current_speed_radps}.in("rad/s"),
                Field{"MAGNETORQUERS_TARGET_DIPOLE_MOMENT_AM2", r.magnetorquers_target_dipole_moment_am2}.in("A m^2"),
                Field{"MAGNETORQUERS_CURRENT_STATE", r.magnetorquers_current_state}};
};

template <>
inline constexpr auto field_list<VELM_ZAVRA_API_ATTITUDE_TELEMETRY> = [](auto& r) {
    return List{
        Field{"EPOCH_TIME_MSEC", r.epoch_time_msec}.in("ms"),
        Field{"QUATERNION_ATTITUDE_BF", r.quaternion_attitude_bf},
        Field{"ANGULAR_VELOCITY_RADPS", r.angular_velocity_radps}.in("rad/s"),
        Field{"EPOCH_TIME_LAST_ATTITUDE_DETERMINATION_MSEC", r.epoch_time_last_attitude_determination_msec}.in("ms"),
        Field{"MEASURED_MAGNETIC_FIELD_BF_T", r.measured_magnetic_field_bf_t}.in("T"),
        Field{"EPOCH_TIME_LAST_MAGNETIC_FIELD_MEASUREMENT_MSEC", r.epoch_time_last_magnetic_field_measurement_msec}.in(
            "ms"),
        Field{"MEASURED_SUN_VECTOR_BF", r.measured_sun_vector_bf},
        Field{"EPOCH_TIME_LAST_SUN_VECTOR_MEASUREMENT_MSEC", r.epoch_time_last_sun_vector_measurement_msec}.in("ms")};
};

/// Records that describe the same bytes convert by way of these, however their fields are grouped.
template <Record To, Record From>
To regroup(const From& from)
{
    static_assert(wire_size<To> == wire_size<From>);
    Bytes<wire_size<From>> bytes;
    pack(bytes.data(), from);
    return unpack<To>(bytes.data());
}

}
