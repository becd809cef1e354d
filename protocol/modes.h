#pragma once

#include "command.h"
#include "records/modes.h"
#include "vectors.h"

namespace zavra
{

/// What the inertial mode's command carries in place of its record: the attitude as a polynomial of each quaternion
/// component.
struct Inertial_Request
{
    unsigned int determination_mode;
    ZAVRA_100_Vector3_float los_vector_bf;
    ZAVRA_100_Vector3_float flight_vector_bf;
    unsigned int degree;
    float polynomial_coeff[28];
    unsigned long long start_epoch_time;
    unsigned long long stop_epoch_time;
    unsigned long long offset_time;
    unsigned long long update_interval;
};

// Runs of fields that the mode records share.
inline constexpr auto pointing_fields = [](auto& r) {
    return List{Field{"DETERMINATION_MODE", r.determination_mode},
                Field{"LOS_VECTOR_BF", r.los_vector_bf, style::lower_case},
                Field{"FLIGHT_VECTOR_BF", r.flight_vector_bf, style::lower_case}};
};

inline constexpr auto epoch_fields = [](auto& r) {
    return List{Field{"START_EPOCH_TIME", r.start_epoch_time}.in("ms"),
                Field{"STOP_EPOCH_TIME", r.stop_epoch_time}.in("ms")};
};

inline constexpr auto update_fields = [](auto& r) {
    return List{Field{"OFFSET_TIME", r.offset_time}.in("ms"), Field{"UPDATE_INTERVAL", r.update_interval}.in("ms")};
};

inline constexpr auto target_position_fields = [](auto& r) {
    return List{Field{"TARGET_LATITUDE", r.target_latitude}.in("rad"),
                Field{"TARGET_LONGITUDE", r.target_longitude}.in("rad")};
};

inline constexpr auto tolerance_field = [](auto& r) {
    return List{Field{"TOLERANCE_PARAMETERS", r.tolerance_parameters}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Detumbling_Mode_Parameters> = epoch_fields;

template <>
inline constexpr auto field_list<ZAVRA_100_SunPointing_Mode_Parameters> = [](auto& r) {
    return List{Field{"LOS_VECTOR_BF", r.los_vector_bf, style::lower_case}} + epoch_fields(r);
};

template <>
inline constexpr auto field_list<ZAVRA_100_TargetPointing_Tolerance_Parameters> = [](auto& r) {
    return List{
        Field{"PREALIGNMENT_ANGLE_TOLERANCE_RAD", r.prealignment_angle_tolerance_rad}.in("rad"),
        Field{"PREALIGNMENT_ANGLE_TOLERANCE_PERCENT", r.prealignment_angle_tolerance_percent}.in("%"),
        Field{"PREALIGNMENT_ANGULAR_VELOCITY_TOLERANCE_RADPS", r.prealignment_angular_velocity_tolerance_radps}.in(
            "rad/s"),
        Field{"PREALIGNMENT_TARGET_THRESHOLD_RAD", r.prealignment_target_threshold_rad}.in("rad")};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Earth_TargetPointing_Const_Velocity_Parameters> = [](auto& r) {
    return pointing_fields(r) +
           List{Field{"START_LATITUDE", r.start_latitude}.in("rad"), Field{"STOP_LATITUDE", r.stop_latitude}.in("rad"),
                Field{"START_LONGITUDE", r.start_longitude}.in("rad"),
                Field{"STOP_LONGITUDE", r.stop_longitude}.in("rad")} +
           epoch_fields(r) + update_fields(r) + tolerance_field(r);
};

template <>
inline constexpr auto field_list<ZAVRA_100_Earth_TargetPointing_Fixed_Parameters> =
    [](auto& r) { return pointing_fields(r) + target_position_fields(r) + update_fields(r) + tolerance_field(r); };

template <>
inline constexpr auto field_list<ZAVRA_100_NadirPointing_Parameters> =
    [](auto& r) { return pointing_fields(r) + update_fields(r) + tolerance_field(r); };

template <>
inline constexpr auto field_list<ZAVRA_100_TargetPointing_Inertial_Parameters> = [](auto& r) {
    return pointing_fields(r) + List{Field{"DEGREE", r.degree}, Field{"BASE_QUATERNION", r.base_quaternion}} +
           epoch_fields(r) + update_fields(r);
};

template <>
inline constexpr auto field_list<Inertial_Request> = [](auto& r) {
    return pointing_fields(r) + List{Field{"DEGREE", r.degree}, Field{"POLYNOMIAL_COEFF", r.polynomial_coeff}} +
           epoch_fields(r) + update_fields(r);
};

template <>
inline constexpr auto field_list<ZAVRA_100_KalmanFilter_Parameters> = [](auto& r) {
    return List{Field{"BIAS_PROCESS_VARIANCE", r.bias_process_variance},
                Field{"ATTITUDE_PROCESS_VARIANCE", r.attitude_process_variance},
                Field{"SUN_MAG_MEASUREMENT_VARIANCE", r.sun_mag_measurement_variance},
                Field{"STS_MEASUREMENT_VARIANCE", r.sts_measurement_variance}, Field{"DISABLE_BIAS", r.disable_bias}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_TargetPointing_Operation_Parameters> = [](auto& r) {
    return List{Field{"UPDATE_INTERVAL", r.update_interval}.in("ms"),
                Field{"ANGLE_TOLERANCE_RAD", r.angle_tolerance_rad}.in("rad"),
                Field{"ANGLE_TOLERANCE_PERC", r.angle_tolerance_perc}.in("%"),
                Field{"SPEED_TOLERANCE_RADPS", r.speed_tolerance_radps}.in("rad/s"),
                Field{"ANGLES", r.angles},
                Field{"WAIT_TIME", r.wait_time}.in("ms"),
                Skip<5>{}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_TargetPointing_Target_Parameters_Telemetry> = [](auto& r) {
    return List{Field{"CURRENT_EPOCH_TIME_MSEC", r.current_epoch_time_msec}.in("ms")} + epoch_fields(r) +
           List{Field{"OFFSET_TIME_MSEC", r.offset_time_msec}.in("ms"),
                Field{"CONTROL_MODE", r.control_mode},
                Field{"ROTATION_MATRIX", r.rotation_matrix, style::lower_case},
                Field{"POLYNOMIAL_COEFF", r.polynomial_coeff},
                Field{"START_QUATERNION", r.start_quaternion},
                Field{"END_QUATERNION", r.end_quaternion},
                Field{"START_LATITUDE", r.start_latitude}.in("rad"),
                Field{"START_LONGITUDE", r.start_longitude}.in("rad"),
                Field{"STOP_LATITUDE", r.stop_latitude}.in("rad"),
                Field{"STOP_LONGITUDE", r.stop_longitude}.in("rad")};
};

template <>
inline constexpr auto field_list<ZAVRA_100_TargetPointing_Operation_Parameters_Telemetry> = [](auto& r) {
    return List{Field{"GENERAL_MODE", r.general_mode}, Field{"DETERMINATION_MODE", r.determination_mode},
                Field{"UNPRINTED_U32", r.unprinted_u32, style::unprinted}} +
           tolerance_field(r) + List{Field{"START_EPOCH_TIME", r.start_epoch_time}.in("ms")} +
           target_position_fields(r) + List{Field{"UPDATE_INTERVAL", r.update_interval}.in("ms")};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Vector3_uint16> = [](auto& v) {
    return List{Field{"X", v.x, style::single_byte}, Field{"Y", v.y, style::single_byte},
                Field{"Z", v.z, style::single_byte}};
};

template <>
inline constexpr auto field_list<ZAVRA_100_TargetPointing_Operation_Data_Telemetry> = [](auto& r) {
    return List{Field{"CURRENT_EPOCH_TIME_MSEC", r.current_epoch_time_msec}.in("ms"),
                Field{"NEXT_ACTION_EPOCH_TIME_MSEC", r.next_action_epoch_time_msec}.in("ms"),
                Field{"MAIN_REGISTER", r.main_register}.in_hexadecimal(),
                Field{"CURRENT_STATE", r.current_state},
                Field{"STATE_TARGET", r.state_target},
                Field{"PREALIGNMENT_IS_READY", r.prealignment_is_ready},
                Field{"PREALIGNMENT_CURRENT_ROTATION_AXIS", r.prealignment_current_rotation_axis},
                Field{"PREALIGNMENT_ACTIVE_FLAG", r.prealignment_active_flag},
                Field{"PREALIGNMENT_TARGET_ROTATION_ANGLE", r.prealignment_target_rotation_angle}.in("rad"),
                Field{"PREALIGNMENT_ROTATION_ANGLE", r.prealignment_rotation_angle}.in("rad"),
                Field{"ANGULAR_VELOCITY_BF", r.angular_velocity_bf}.in("rad/s"),
                Field{"TARGET_QUATERNION", r.target_quaternion},
                Field{"ATTITUDE_QUATERNION", r.attitude_quaternion},
                Field{"TARGET_RW_SPEED", r.target_rw_speed}.in("rad/s"),
                Field{"CURRENT_RW_SPEED", r.current_rw_speed}.in("rad/s")};
};

namespace protocol
{

inline constexpr Command<void()> set_operationmode_safe{0xC103, "Set_OperationMode_Safe", "Set Operation Mode to Safe"};
inline constexpr Command<void()> set_operationmode_idle{0xC102, "Set_OperationMode_Idle", "Set Operation Mode to Idle"};
inline constexpr Command<void()> set_operationmode_measurement{0xC104, "Set_OperationMode_Measurement",
                                                               "Set Operation Mode to Measurement"};

inline constexpr Command<void(ZAVRA_100_Detumbling_Mode_Parameters)> start_operationmode_detumbling{
    0xC111, "Start_OperationMode_Detumbling", "Start Operation Mode Detumbling", {"parameters"}};
inline constexpr Command<void(ZAVRA_100_SunPointing_Mode_Parameters)> start_operationmode_sun_pointing{
    0xC121, "Start_OperationMode_Sun_Pointing", "Start Operation Mode Sun Pointing", {"parameters"}};
inline constexpr Command<void(ZAVRA_100_Earth_TargetPointing_Const_Velocity_Parameters)>
    start_targetpointing_earth_const_velocity_mode{0xC154,
                                                   "Start_TargetPointing_Earth_Const_Velocity_Mode",
                                                   "Start Target Pointing Earth Const Velocity Mode",
                                                   {"parameters"}};
inline constexpr Command<void(ZAVRA_100_Earth_TargetPointing_Fixed_Parameters)> start_targetpointing_earth_fix_mode{
    0xC153, "Start_TargetPointing_Earth_Fix_Mode", "Start Target Pointing Earth Fix Mode", {"parameters"}};
inline constexpr Command<void(ZAVRA_100_NadirPointing_Parameters)> start_targetpointing_nadir_mode{
    0xC152, "Start_TargetPointing_Nadir_Mode", "Start Target Pointing Nadir Mode", {"parameters"}};
inline constexpr Command<void(Inertial_Request)> start_targetpointing_inertial_mode{
    0xC151, "Start_TargetPointing_Inertial_Mode", "Start Target Pointing Inertial Mode", {"parameters"}};

/// Quirk: the unit has one stop for all its modes; only the words of a failure differ.
constexpr Command<void()> stop_mode(const char* method, const char* action)
{
    return {0xC101, method, action};
}

inline constexpr auto stop_operationmode_detumbling =
    stop_mode("Stop_OperationMode_Detumbling", "Stop Operation Mode Detumbling");
inline constexpr auto stop_operationmode_sun_pointing =
    stop_mode("Stop_OperationMode_Sun_Pointing", "Stop Operation Mode Sun Pointing");
inline constexpr auto stop_targetpointing_earth_const_velocity_mode =
    stop_mode("Stop_TargetPointing_Earth_Const_Velocity_Mode", "Stop Target Pointing Earth Const Velocity Mode");
inline constexpr auto stop_targetpointing_earth_fix_mode =
    stop_mode("Stop_TargetPointing_Earth_Fix_Mode", "Stop Target Pointing Earth Fix Mode");
inline constexpr auto stop_targetpointing_nadir_mode =
    stop_mode("Stop_TargetPointing_Nadir_Mode", "Stop Target Pointing Nadir Mode");
inline constexpr auto stop_targetpointing_inertial_mode =
    stop_mode("Stop_TargetPointing_Inertial_Mode", "Stop Target Pointing Inertial Mode");

inline constexpr Command<ZAVRA_100_TargetPointing_Target_Parameters_Telemetry()>
    get_targetpointing_target_parameters_telemetry{0xC160, "Get_TargetPointing_Target_Parameters_Telemetry",
                                                   "get target pointing target parameter telemetry"};
inline constexpr Command<ZAVRA_100_TargetPointing_Operation_Parameters_Telemetry()>
    get_targetpointing_operation_parameters_telemetry{0xC161, "Get_TargetPointing_Operation_Parameters_Telemetry",
                                                      "get target pointing operation parameter telemetry"};
inline constexpr Command<ZAVRA_100_TargetPointing_Operation_Data_Telemetry()>
    get_targetpointing_operation_data_telemetry{0xC162, "Get_TargetPointing_Operation_Data_Telemetry",
                                                "get target pointing operation data telemetry"};
inline constexpr Command<void(ZAVRA_100_TargetPointing_Operation_Parameters)> set_targetpointing_operation_parameters{
    0xC163, "Set_TargetPointing_Operation_Parameters", "Set Target Pointing operation parameters", {"parameters"}};

inline constexpr Command<void(ZAVRA_100_KalmanFilter_Parameters)> set_kalmanfilter_parameters{
    0xC312, "Set_KalmanFilter_Parameters", "Set Kalman Filter parameters", {"parameters"}};
inline constexpr Command<ZAVRA_100_KalmanFilter_Parameters()> get_kalmanfilter_parameters{
    0xC311, "Get_KalmanFilter_Parameters", "get Kalman Filter parameters"};

static_assert(start_operationmode_detumbling.request_size == 16);
static_assert(start_operationmode_sun_pointing.request_size == 28);
static_assert(start_targetpointing_earth_const_velocity_mode.request_size == 92);
static_assert(start_targetpointing_earth_fix_mode.request_size == 68);
static_assert(start_targetpointing_nadir_mode.request_size == 60);
static_assert(start_targetpointing_inertial_mode.request_size == 176);
static_assert(get_targetpointing_target_parameters_telemetry.response_size == 232);
static_assert(get_targetpointing_operation_parameters_telemetry.response_size == 52);
static_assert(get_targetpointing_operation_data_telemetry.response_size == 143);
static_assert(set_targetpointing_operation_parameters.request_size == 45);
static_assert(set_kalmanfilter_parameters.request_size == 33);

inline constexpr List modes_commands{set_operationmode_safe,
                                     set_operationmode_idle,
                                     set_operationmode_measurement,
                                     start_operationmode_detumbling,
                                     stop_operationmode_detumbling,
                                     start_operationmode_sun_pointing,
                                     stop_operationmode_sun_pointing,
                                     start_targetpointing_earth_const_velocity_mode,
                                     stop_targetpointing_earth_const_velocity_mode,
                                     start_targetpointing_earth_fix_mode,
                                     stop_targetpointing_earth_fix_mode,
                                     start_targetpointing_nadir_mode,
                                     stop_targetpointing_nadir_mode,
                                     start_targetpointing_inertial_mode,
                                     stop_targetpointing_inertial_mode,
                                     get_targetpointing_target_parameters_telemetry,
                                     get_targetpointing_operation_parameters_telemetry,
                                     get_targetpointing_operation_data_telemetry,
                                     set_targetpointing_operation_parameters,
                                     set_kalmanfilter_parameters,
                                     get_kalmanfilter_parameters};

static_assert(modes_commands.size == 21);

}

}
