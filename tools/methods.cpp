#include "failure.h"
#include "method.h"

#include "../device/protocol/commands.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace zavra
{

template <>
inline constexpr auto field_list<ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST> = [](auto& list) {
    return std::tuple{Field{"HEADER", list.header}, Field{"NUM_EVENT", list.num_event}, Field{"XISF", list.xisf},
                      Field{"YISF", list.yisf}};
};

namespace tools
{

namespace
{

// Methods that are not one command of the unit have descriptors of their own here, for the names.
constexpr Command<unsigned int()> check_command_errors{
    0, "Check_Command_Errors", "Check Command Errors", {}, {"command_errors"}};
constexpr Command<unsigned char()> read_startracker_native_reply{
    0, "Read_Startracker_Native_Reply", "Read Startracker Native Reply", {}, {"data"}};
constexpr Command<void(unsigned short, Bytes<0>)> generic_set{0, "ZAVRA_Generic_Set", "", {"command", "data"}};
constexpr Command<Bytes<0>(unsigned short, Bytes<0>, unsigned int)> generic_get{
    0, "ZAVRA_Generic_Get", "", {"command", "data", "num_response_bytes"}, {"response"}};
constexpr Command<Bytes<0>(unsigned int)> native_get{
    0, "ZAVRA_Startracker_Native_Get", "", {"num_response_bytes"}, {"response"}};

unsigned int length(const Octets& bytes)
{
    return static_cast<unsigned int>(bytes.size());
}

// The transport refuses more bytes than it takes, but only the caller can provide the memory.
Octets response_buffer(unsigned int num_bytes)
{
    return Octets(std::min(num_bytes, 0xFFFFU));
}

const std::vector<Method>& table()
{
    using Z = ZAVRA_100;
    static const std::vector<Method> all{
        method(
            generic_set, +[](Z& device, unsigned short command,
                             Octets data) { device.ZAVRA_Generic_Set(command, data.data(), length(data)); }),
        method(
            generic_get,
            +[](Z& device, unsigned short command, Octets data, unsigned int num_bytes, Octets* response) {
                *response = response_buffer(num_bytes);
                device.ZAVRA_Generic_Get(command, data.data(), length(data), response->data(), num_bytes);
            }),
        method(
            check_command_errors, +[](Z& device, unsigned int* errors) { *errors = device.Check_Command_Errors(); }),

        method(protocol::set_dcdc_configuration, &Z::Set_DCDC_Configuration),
        method(protocol::set_epoch_time, &Z::Set_Epoch_Time),
        method(protocol::get_epoch_time, &Z::Get_Epoch_Time),
        method(protocol::get_system_time, &Z::Get_System_Time),
        method(protocol::get_system_scheduler_register, &Z::Get_System_Scheduler_Register),
        method(protocol::set_system_scheduler_register, &Z::Set_System_Scheduler_Register),
        method(protocol::clear_system_error_register, &Z::Clear_System_Error_Register),
        method(protocol::set_active_gyroscope, &Z::Set_Active_Gyroscope),
        method(protocol::set_active_magnetometer, &Z::Set_Active_Magnetometer),
        method(protocol::set_temperature_update_interval, &Z::Set_Temperature_Update_Interval),
        method(protocol::get_temperature_update_interval, &Z::Get_Temperature_Update_Interval),
        method(protocol::set_power_update_interval, &Z::Set_Power_Update_Interval),
        method(protocol::get_power_update_interval, &Z::Get_Power_Update_Interval),
        method(protocol::set_hil_configuration, &Z::Set_HIL_Configuration),
        method(protocol::get_hil_configuration, &Z::Get_HIL_Configuration),

        method(protocol::get_info_frame, &Z::Get_Info_Frame),
        method(protocol::get_standard_telemetry, &Z::Get_Standard_Telemetry),
        method(protocol::get_sensor_telemetry, &Z::Get_Sensor_Telemetry),
        method(protocol::get_actuator_telemetry, &Z::Get_Actuator_Telemetry),
        method(protocol::get_attitude_telemetry, &Z::Get_Attitude_Telemetry),
        method(protocol::get_power_telemetry, &Z::Get_Power_Telemetry),

        method(protocol::set_gyro_values, &Z::Set_Gyro_Values),
        method(protocol::get_gyro_values, &Z::Get_Gyro_Values),
        method(protocol::set_gyro_parameters, &Z::Set_Gyro_Parameters),
        method(protocol::get_gyro_parameters, &Z::Get_Gyro_Parameters),
        method(protocol::set_gyro_update_interval, &Z::Set_Gyro_Update_Interval),
        method(protocol::get_gyro_update_interval, &Z::Get_Gyro_Update_Interval),
        method(protocol::enable_gyro_correction, &Z::Enable_Gyro_Correction),
        method(protocol::disable_gyro_correction, &Z::Disable_Gyro_Correction),
        method(protocol::start_gyro_bias_calculation, &Z::Start_Gyro_Bias_Calculation),
        method(protocol::set_gyro_bias_value, &Z::Set_Gyro_Bias_Value),
        method(protocol::get_gyro_bias_value, &Z::Get_Gyro_Bias_Value),
        method(protocol::enable_gyro_bias_removement, &Z::Enable_Gyro_Bias_Removement),
        method(protocol::disable_gyro_bias_removement, &Z::Disable_Gyro_Bias_Removement),
        method(protocol::enable_gyro_averaging_filter, &Z::Enable_Gyro_Averaging_Filter),
        method(protocol::disable_gyro_averaging_filter, &Z::Disable_Gyro_Averaging_Filter),
        method(protocol::set_magnetometer_values, &Z::Set_Magnetometer_Values),
        method(protocol::get_magnetometer_values, &Z::Get_Magnetometer_Values),
        method(protocol::set_magnetometer_parameters, &Z::Set_Magnetometer_Parameters),
        method(protocol::get_magnetometer_parameters, &Z::Get_Magnetometer_Parameters),
        method(protocol::set_magnetometer_update_interval, &Z::Set_Magnetometer_Update_Interval),
        method(protocol::get_magnetometer_update_interval, &Z::Get_Magnetometer_Update_Interval),
        method(protocol::enable_magnetometer_correction, &Z::Enable_Magnetometer_Correction),
        method(protocol::disable_magnetometer_correction, &Z::Disable_Magnetometer_Correction),
        method(protocol::enable_magnetometer_averaging_filter, &Z::Enable_Magnetometer_Averaging_Filter),
        method(protocol::disable_magnetometer_averaging_filter, &Z::Disable_Magnetometer_Averaging_Filter),
        method(protocol::enable_magnetometer_moving_averaging_filter, &Z::Enable_Magnetometer_Moving_Averaging_Filter),
        method(protocol::disable_magnetometer_moving_averaging_filter,
               &Z::Disable_Magnetometer_Moving_Averaging_Filter),
        method(protocol::set_sun_vector, &Z::Set_Sun_Vector),

        // Its record has a time, too, which is not sent.
        method(
            protocol::set_startracker_quaternion,
            +[](Z& device, ZAVRA_100_Quaternion_float quaternion) {
                device.Set_Startracker_Quaternion({quaternion, 0});
            }),
        method(protocol::get_startracker_quaternion, &Z::Get_Startracker_Quaternion),
        method(protocol::get_startracker_event_list, &Z::Get_Startracker_Event_List),
        method(protocol::set_startracker_operation_mode, &Z::Set_Startracker_Operation_Mode),
        method(protocol::get_startracker_operation_mode, &Z::Get_Startracker_Operation_Mode),
        method(
            protocol::send_startracker_native_command,
            +[](Z& device, Octets data) { device.Send_Startracker_Native_Command(data.data(), length(data)); }),
        method(protocol::check_startracker_native_reply, &Z::Check_Startracker_Native_Reply),
        method(
            read_startracker_native_reply,
            +[](Z& device, unsigned char* data) { device.Read_Startracker_Native_Reply(data, 1); }),
        method(
            native_get,
            +[](Z& device, unsigned int num_bytes, Octets* response) {
                *response = response_buffer(num_bytes);
                device.ZAVRA_Startracker_Native_Get(response->data(), num_bytes);
            }),
        method(protocol::init_orbit_module, &Z::Init_Orbit_Module),
        method(protocol::get_orbit_data, &Z::Get_Orbit_Data),

        method(protocol::set_reactionwheel_speed, &Z::Set_ReactionWheel_Speed),
        method(protocol::get_reactionwheel_speed, &Z::Get_ReactionWheel_Speed),
        method(protocol::set_reactionwheel_parameters, &Z::Set_ReactionWheel_Parameters),
        method(protocol::get_reactionwheel_parameters, &Z::Get_ReactionWheel_Parameters),
        method(protocol::set_reactionwheel_all_update_interval, &Z::Set_ReactionWheel_All_Update_Interval),
        method(protocol::get_reactionwheel_all_update_interval, &Z::Get_ReactionWheel_All_Update_Interval),
        method(protocol::enable_reactionwheel_idle_mode, &Z::Enable_ReactionWheel_Idle_Mode),
        method(protocol::set_reactionwheel_all_speeds, &Z::Set_ReactionWheel_All_Speeds),
        method(protocol::get_reactionwheel_all_speeds, &Z::Get_ReactionWheel_All_Speeds),
        method(protocol::set_reactionwheel_all_parameters, &Z::Set_ReactionWheel_All_Parameters),
        method(protocol::get_reactionwheel_all_parameters, &Z::Get_ReactionWheel_All_Parameters),
        method(protocol::enable_reactionwheel_all_idle_mode, &Z::Enable_ReactionWheel_All_Idle_Mode),
        method(protocol::set_reactionwheel_torque, &Z::Set_ReactionWheel_Torque),
        method(protocol::get_reactionwheel_torque, &Z::Get_ReactionWheel_Torque),
        method(protocol::set_magnettorquer_all_dipole_moments, &Z::Set_Magnettorquer_All_Dipole_Moments),
        method(protocol::get_magnettorquer_all_dipole_moments, &Z::Get_Magnettorquer_All_Dipole_Moments),
        method(protocol::suspend_all_magnettorquers, &Z::Suspend_All_Magnettorquers),
        method(protocol::resume_all_magnettorquers, &Z::Resume_All_Magnettorquers),
        method(protocol::set_magnettorquer_parameters, &Z::Set_Magnettorquer_Parameters),
        method(protocol::get_magnettorquer_parameters, &Z::Get_Magnettorquer_Parameters),
        method(protocol::set_magnettorquer_all_currents, &Z::Set_Magnettorquer_All_Currents),
        method(protocol::get_magnettorquer_all_currents, &Z::Get_Magnettorquer_All_Currents),

        method(protocol::set_singleaxis_angularvelocity_controller_parameters,
               &Z::Set_SingleAxis_AngularVelocity_Controller_Parameters),
        method(protocol::get_singleaxis_angularvelocity_controller_parameters,
               &Z::Get_SingleAxis_AngularVelocity_Controller_Parameters),
        method(protocol::start_singleaxis_angularvelocity_controller, &Z::Start_SingleAxis_AngularVelocity_Controller),
        method(protocol::stop_singleaxis_angularvelocity_controller, &Z::Stop_SingleAxis_AngularVelocity_Controller),
        method(protocol::set_singleaxis_anglestep_controller_parameters,
               &Z::Set_SingleAxis_AngleStep_Controller_Parameters),
        method(protocol::get_singleaxis_anglestep_controller_parameters,
               &Z::Get_SingleAxis_AngleStep_Controller_Parameters),
        method(protocol::start_singleaxis_anglestep_controller, &Z::Start_SingleAxis_AngleStep_Controller),
        method(protocol::stop_singleaxis_anglestep_controller, &Z::Stop_SingleAxis_AngleStep_Controller),
        method(protocol::set_threeaxis_bdot_controller_max_parameters,
               &Z::Set_ThreeAxis_BDot_Controller_Max_Parameters),
        method(protocol::get_threeaxis_bdot_controller_max_parameters,
               &Z::Get_ThreeAxis_BDot_Controller_Max_Parameters),
        method(protocol::set_threeaxis_bdot_controller_proportional_parameters,
               &Z::Set_ThreeAxis_BDot_Controller_Proportional_Parameters),
        method(protocol::get_threeaxis_bdot_controller_proportional_parameters,
               &Z::Get_ThreeAxis_BDot_Controller_Proportional_Parameters),
        method(protocol::set_threeaxis_sunpointing_controller_parameters,
               &Z::Set_ThreeAxis_SunPointing_Controller_Parameters),
        method(protocol::get_threeaxis_sunpointing_controller_parameters,
               &Z::Get_ThreeAxis_SunPointing_Controller_Parameters),
        method(protocol::set_threeaxis_sliding_controller_parameters, &Z::Set_ThreeAxis_Sliding_Controller_Parameters),
        method(protocol::get_threeaxis_sliding_controller_parameters, &Z::Get_ThreeAxis_Sliding_Controller_Parameters),

        method(protocol::set_operationmode_safe, &Z::Set_OperationMode_Safe),
        method(protocol::set_operationmode_idle, &Z::Set_OperationMode_Idle),
        method(protocol::set_operationmode_measurement, &Z::Set_OperationMode_Measurement),
        method(protocol::start_operationmode_detumbling, &Z::Start_OperationMode_Detumbling),
        method(protocol::start_operationmode_sun_pointing, &Z::Start_OperationMode_Sun_Pointing),
        method(protocol::start_targetpointing_earth_const_velocity_mode,
               &Z::Start_TargetPointing_Earth_Const_Velocity_Mode),
        method(protocol::start_targetpointing_earth_fix_mode, &Z::Start_TargetPointing_Earth_Fix_Mode),
        method(protocol::start_targetpointing_nadir_mode, &Z::Start_TargetPointing_Nadir_Mode),
        method(protocol::start_targetpointing_inertial_mode, &Z::Start_TargetPointing_Inertial_Mode),
        method(protocol::stop_operationmode_detumbling, &Z::Stop_OperationMode_Detumbling),
        method(protocol::stop_operationmode_sun_pointing, &Z::Stop_OperationMode_Sun_Pointing),
        method(protocol::stop_targetpointing_earth_const_velocity_mode,
               &Z::Stop_TargetPointing_Earth_Const_Velocity_Mode),
        method(protocol::stop_targetpointing_earth_fix_mode, &Z::Stop_TargetPointing_Earth_Fix_Mode),
        method(protocol::stop_targetpointing_nadir_mode, &Z::Stop_TargetPointing_Nadir_Mode),
        method(protocol::stop_targetpointing_inertial_mode, &Z::Stop_TargetPointing_Inertial_Mode),
        method(protocol::get_targetpointing_target_parameters_telemetry,
               &Z::Get_TargetPointing_Target_Parameters_Telemetry),
        method(protocol::get_targetpointing_operation_parameters_telemetry,
               &Z::Get_TargetPointing_Operation_Parameters_Telemetry),
        method(protocol::get_targetpointing_operation_data_telemetry, &Z::Get_TargetPointing_Operation_Data_Telemetry),
        method(protocol::set_targetpointing_operation_parameters, &Z::Set_TargetPointing_Operation_Parameters),
        method(protocol::set_kalmanfilter_parameters, &Z::Set_KalmanFilter_Parameters),
        method(protocol::get_kalmanfilter_parameters, &Z::Get_KalmanFilter_Parameters),
    };
    return all;
}

std::string lower(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

}

std::span<const Method> methods()
{
    return table();
}

const Method* find_method(std::string_view name)
{
    const auto found =
        std::find_if(table().begin(), table().end(), [&](const Method& m) { return lower(m.name) == lower(name); });
    return found == table().end() ? nullptr : &*found;
}

const Method& method_named(std::string_view name)
{
    if (const Method* found = find_method(name))
        return *found;
    std::string similar;
    for (const Method& candidate : table())
        if (lower(candidate.name).find(lower(name)) != std::string::npos)
            similar += (similar.empty() ? "" : ", ") + candidate.name;
    throw Usage_Error("there is no method \"" + std::string(name) + '"' +
                      (similar.empty() ? "; see: zavractl list" : "; there is: " + similar));
}

}

}
