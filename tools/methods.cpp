#include "enumerators.h"
#include "failure.h"
#include "method.h"
#include "signature.h"
#include "similar.h"

#include "../common/text.h"

#include "../protocol/commands.h"

#include <algorithm>
#include <vector>

namespace zavra
{

template <>
inline constexpr auto field_list<ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST> = [](auto& list) {
    return List{Field{"HEADER", list.header}, Field{"NUM_EVENT", list.num_event}, Field{"XISF", list.xisf},
                Field{"YISF", list.yisf}};
};

namespace tools
{

// This record has a constructor, so that it cannot be looked at while compiling.
template <>
const Item_List
    parameter_items<ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST> = items_of<ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST>();

namespace
{

// Methods that are not one command of the unit have descriptors of their own here, for the names.
constexpr Command<unsigned int()> check_command_errors{
    0, "Check_Command_Errors", "Check Command Errors", {}, {"command_errors"}};
constexpr Command<unsigned char()> read_startracker_native_reply{
    0, "Read_Startracker_Native_Reply", "Read Startracker Native Reply", {}, {"data"}};
constexpr Command<void(unsigned short, Native_Bytes)> generic_set{0, "ZAVRA_Generic_Set", "", {"command", "data"}};
constexpr Command<Native_Bytes(unsigned short, Native_Bytes, unsigned int)> generic_get{
    0, "ZAVRA_Generic_Get", "", {"command", "data", "num_response_bytes"}, {"response"}};
constexpr Command<Native_Bytes(unsigned int)> native_get{
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

std::vector<Method> make_table()
{
    using Z = ZAVRA_100;
    std::vector<Method> all;
    const auto add = [&all](const auto& command, auto call) { all.push_back(method(command, call)); };

    add(
        generic_set, +[](Z& device, unsigned short command, Octets data) {
            device.ZAVRA_Generic_Set(command, data.data(), length(data));
        });
    add(
        generic_get, +[](Z& device, unsigned short command, Octets data, unsigned int num_bytes, Octets* response) {
            *response = response_buffer(num_bytes);
            device.ZAVRA_Generic_Get(command, data.data(), length(data), response->data(), num_bytes);
        });
    add(
        check_command_errors, +[](Z& device, unsigned int* errors) { *errors = device.Check_Command_Errors(); });

    add(protocol::set_dcdc_configuration, &Z::Set_DCDC_Configuration);
    add(protocol::set_epoch_time, &Z::Set_Epoch_Time);
    add(protocol::get_epoch_time, &Z::Get_Epoch_Time);
    add(protocol::get_system_time, &Z::Get_System_Time);
    add(protocol::get_system_scheduler_register, &Z::Get_System_Scheduler_Register);
    add(protocol::set_system_scheduler_register, &Z::Set_System_Scheduler_Register);
    add(protocol::clear_system_error_register, &Z::Clear_System_Error_Register);
    add(protocol::set_active_gyroscope, &Z::Set_Active_Gyroscope);
    add(protocol::set_active_magnetometer, &Z::Set_Active_Magnetometer);
    add(protocol::set_temperature_update_interval, &Z::Set_Temperature_Update_Interval);
    add(protocol::get_temperature_update_interval, &Z::Get_Temperature_Update_Interval);
    add(protocol::set_power_update_interval, &Z::Set_Power_Update_Interval);
    add(protocol::get_power_update_interval, &Z::Get_Power_Update_Interval);
    add(protocol::set_hil_configuration, &Z::Set_HIL_Configuration);
    add(protocol::get_hil_configuration, &Z::Get_HIL_Configuration);

    add(protocol::get_info_frame, &Z::Get_Info_Frame);
    add(protocol::get_standard_telemetry, &Z::Get_Standard_Telemetry);
    add(protocol::get_sensor_telemetry, &Z::Get_Sensor_Telemetry);
    add(protocol::get_actuator_telemetry, &Z::Get_Actuator_Telemetry);
    add(protocol::get_attitude_telemetry, &Z::Get_Attitude_Telemetry);
    add(protocol::get_power_telemetry, &Z::Get_Power_Telemetry);

    add(protocol::set_gyro_values, &Z::Set_Gyro_Values);
    add(protocol::get_gyro_values, &Z::Get_Gyro_Values);
    add(protocol::set_gyro_parameters, &Z::Set_Gyro_Parameters);
    add(protocol::get_gyro_parameters, &Z::Get_Gyro_Parameters);
    add(protocol::set_gyro_update_interval, &Z::Set_Gyro_Update_Interval);
    add(protocol::get_gyro_update_interval, &Z::Get_Gyro_Update_Interval);
    add(protocol::enable_gyro_correction, &Z::Enable_Gyro_Correction);
    add(protocol::disable_gyro_correction, &Z::Disable_Gyro_Correction);
    add(protocol::start_gyro_bias_calculation, &Z::Start_Gyro_Bias_Calculation);
    add(protocol::set_gyro_bias_value, &Z::Set_Gyro_Bias_Value);
    add(protocol::get_gyro_bias_value, &Z::Get_Gyro_Bias_Value);
    add(protocol::enable_gyro_bias_removement, &Z::Enable_Gyro_Bias_Removement);
    add(protocol::disable_gyro_bias_removement, &Z::Disable_Gyro_Bias_Removement);
    add(protocol::enable_gyro_averaging_filter, &Z::Enable_Gyro_Averaging_Filter);
    add(protocol::disable_gyro_averaging_filter, &Z::Disable_Gyro_Averaging_Filter);
    add(protocol::set_magnetometer_values, &Z::Set_Magnetometer_Values);
    add(protocol::get_magnetometer_values, &Z::Get_Magnetometer_Values);
    add(protocol::set_magnetometer_parameters, &Z::Set_Magnetometer_Parameters);
    add(protocol::get_magnetometer_parameters, &Z::Get_Magnetometer_Parameters);
    add(protocol::set_magnetometer_update_interval, &Z::Set_Magnetometer_Update_Interval);
    add(protocol::get_magnetometer_update_interval, &Z::Get_Magnetometer_Update_Interval);
    add(protocol::enable_magnetometer_correction, &Z::Enable_Magnetometer_Correction);
    add(protocol::disable_magnetometer_correction, &Z::Disable_Magnetometer_Correction);
    add(protocol::enable_magnetometer_averaging_filter, &Z::Enable_Magnetometer_Averaging_Filter);
    add(protocol::disable_magnetometer_averaging_filter, &Z::Disable_Magnetometer_Averaging_Filter);
    add(protocol::enable_magnetometer_moving_averaging_filter, &Z::Enable_Magnetometer_Moving_Averaging_Filter);
    add(protocol::disable_magnetometer_moving_averaging_filter, &Z::Disable_Magnetometer_Moving_Averaging_Filter);
    add(protocol::set_sun_vector, &Z::Set_Sun_Vector);

    // Its record has a time, too, which is not sent.
    add(
        protocol::set_startracker_quaternion, +[](Z& device, ZAVRA_100_Quaternion_float quaternion) {
            device.Set_Startracker_Quaternion({quaternion, 0});
        });
    add(protocol::get_startracker_quaternion, &Z::Get_Startracker_Quaternion);
    add(protocol::get_startracker_event_list, &Z::Get_Startracker_Event_List);
    add(protocol::set_startracker_operation_mode, &Z::Set_Startracker_Operation_Mode);
    add(protocol::get_startracker_operation_mode, &Z::Get_Startracker_Operation_Mode);
    add(
        protocol::send_startracker_native_command,
        +[](Z& device, Octets data) { device.Send_Startracker_Native_Command(data.data(), length(data)); });
    add(protocol::check_startracker_native_reply, &Z::Check_Startracker_Native_Reply);
    add(
        read_startracker_native_reply,
        +[](Z& device, unsigned char* data) { device.Read_Startracker_Native_Reply(data, 1); });
    add(
        native_get, +[](Z& device, unsigned int num_bytes, Octets* response) {
            *response = response_buffer(num_bytes);
            device.ZAVRA_Startracker_Native_Get(response->data(), num_bytes);
        });
    add(protocol::init_orbit_module, &Z::Init_Orbit_Module);
    add(protocol::get_orbit_data, &Z::Get_Orbit_Data);

    add(protocol::set_reactionwheel_speed, &Z::Set_ReactionWheel_Speed);
    add(protocol::get_reactionwheel_speed, &Z::Get_ReactionWheel_Speed);
    add(protocol::set_reactionwheel_parameters, &Z::Set_ReactionWheel_Parameters);
    add(protocol::get_reactionwheel_parameters, &Z::Get_ReactionWheel_Parameters);
    add(protocol::set_reactionwheel_all_update_interval, &Z::Set_ReactionWheel_All_Update_Interval);
    add(protocol::get_reactionwheel_all_update_interval, &Z::Get_ReactionWheel_All_Update_Interval);
    add(protocol::enable_reactionwheel_idle_mode, &Z::Enable_ReactionWheel_Idle_Mode);
    add(protocol::set_reactionwheel_all_speeds, &Z::Set_ReactionWheel_All_Speeds);
    add(protocol::get_reactionwheel_all_speeds, &Z::Get_ReactionWheel_All_Speeds);
    add(protocol::set_reactionwheel_all_parameters, &Z::Set_ReactionWheel_All_Parameters);
    add(protocol::get_reactionwheel_all_parameters, &Z::Get_ReactionWheel_All_Parameters);
    add(protocol::enable_reactionwheel_all_idle_mode, &Z::Enable_ReactionWheel_All_Idle_Mode);
    add(protocol::set_reactionwheel_torque, &Z::Set_ReactionWheel_Torque);
    add(protocol::get_reactionwheel_torque, &Z::Get_ReactionWheel_Torque);
    add(protocol::set_magnettorquer_all_dipole_moments, &Z::Set_Magnettorquer_All_Dipole_Moments);
    add(protocol::get_magnettorquer_all_dipole_moments, &Z::Get_Magnettorquer_All_Dipole_Moments);
    add(protocol::suspend_all_magnettorquers, &Z::Suspend_All_Magnettorquers);
    add(protocol::resume_all_magnettorquers, &Z::Resume_All_Magnettorquers);
    add(protocol::set_magnettorquer_parameters, &Z::Set_Magnettorquer_Parameters);
    add(protocol::get_magnettorquer_parameters, &Z::Get_Magnettorquer_Parameters);
    add(protocol::set_magnettorquer_all_currents, &Z::Set_Magnettorquer_All_Currents);
    add(protocol::get_magnettorquer_all_currents, &Z::Get_Magnettorquer_All_Currents);

    add(protocol::set_singleaxis_angularvelocity_controller_parameters,
        &Z::Set_SingleAxis_AngularVelocity_Controller_Parameters);
    add(protocol::get_singleaxis_angularvelocity_controller_parameters,
        &Z::Get_SingleAxis_AngularVelocity_Controller_Parameters);
    add(protocol::start_singleaxis_angularvelocity_controller, &Z::Start_SingleAxis_AngularVelocity_Controller);
    add(protocol::stop_singleaxis_angularvelocity_controller, &Z::Stop_SingleAxis_AngularVelocity_Controller);
    add(protocol::set_singleaxis_anglestep_controller_parameters, &Z::Set_SingleAxis_AngleStep_Controller_Parameters);
    add(protocol::get_singleaxis_anglestep_controller_parameters, &Z::Get_SingleAxis_AngleStep_Controller_Parameters);
    add(protocol::start_singleaxis_anglestep_controller, &Z::Start_SingleAxis_AngleStep_Controller);
    add(protocol::stop_singleaxis_anglestep_controller, &Z::Stop_SingleAxis_AngleStep_Controller);
    add(protocol::set_threeaxis_bdot_controller_max_parameters, &Z::Set_ThreeAxis_BDot_Controller_Max_Parameters);
    add(protocol::get_threeaxis_bdot_controller_max_parameters, &Z::Get_ThreeAxis_BDot_Controller_Max_Parameters);
    add(protocol::set_threeaxis_bdot_controller_proportional_parameters,
        &Z::Set_ThreeAxis_BDot_Controller_Proportional_Parameters);
    add(protocol::get_threeaxis_bdot_controller_proportional_parameters,
        &Z::Get_ThreeAxis_BDot_Controller_Proportional_Parameters);
    add(protocol::set_threeaxis_sunpointing_controller_parameters, &Z::Set_ThreeAxis_SunPointing_Controller_Parameters);
    add(protocol::get_threeaxis_sunpointing_controller_parameters, &Z::Get_ThreeAxis_SunPointing_Controller_Parameters);
    add(protocol::set_threeaxis_sliding_controller_parameters, &Z::Set_ThreeAxis_Sliding_Controller_Parameters);
    add(protocol::get_threeaxis_sliding_controller_parameters, &Z::Get_ThreeAxis_Sliding_Controller_Parameters);

    add(protocol::set_operationmode_safe, &Z::Set_OperationMode_Safe);
    add(protocol::set_operationmode_idle, &Z::Set_OperationMode_Idle);
    add(protocol::set_operationmode_measurement, &Z::Set_OperationMode_Measurement);
    add(protocol::start_operationmode_detumbling, &Z::Start_OperationMode_Detumbling);
    add(protocol::start_operationmode_sun_pointing, &Z::Start_OperationMode_Sun_Pointing);
    add(protocol::start_targetpointing_earth_const_velocity_mode, &Z::Start_TargetPointing_Earth_Const_Velocity_Mode);
    add(protocol::start_targetpointing_earth_fix_mode, &Z::Start_TargetPointing_Earth_Fix_Mode);
    add(protocol::start_targetpointing_nadir_mode, &Z::Start_TargetPointing_Nadir_Mode);
    add(protocol::start_targetpointing_inertial_mode, &Z::Start_TargetPointing_Inertial_Mode);
    add(protocol::stop_operationmode_detumbling, &Z::Stop_OperationMode_Detumbling);
    add(protocol::stop_operationmode_sun_pointing, &Z::Stop_OperationMode_Sun_Pointing);
    add(protocol::stop_targetpointing_earth_const_velocity_mode, &Z::Stop_TargetPointing_Earth_Const_Velocity_Mode);
    add(protocol::stop_targetpointing_earth_fix_mode, &Z::Stop_TargetPointing_Earth_Fix_Mode);
    add(protocol::stop_targetpointing_nadir_mode, &Z::Stop_TargetPointing_Nadir_Mode);
    add(protocol::stop_targetpointing_inertial_mode, &Z::Stop_TargetPointing_Inertial_Mode);
    add(protocol::get_targetpointing_target_parameters_telemetry, &Z::Get_TargetPointing_Target_Parameters_Telemetry);
    add(protocol::get_targetpointing_operation_parameters_telemetry,
        &Z::Get_TargetPointing_Operation_Parameters_Telemetry);
    add(protocol::get_targetpointing_operation_data_telemetry, &Z::Get_TargetPointing_Operation_Data_Telemetry);
    add(protocol::set_targetpointing_operation_parameters, &Z::Set_TargetPointing_Operation_Parameters);
    add(protocol::set_kalmanfilter_parameters, &Z::Set_KalmanFilter_Parameters);
    add(protocol::get_kalmanfilter_parameters, &Z::Get_KalmanFilter_Parameters);
    return all;
}

const std::vector<Method>& table()
{
    static const std::vector<Method> all = make_table();
    return all;
}

std::string lower(std::string_view text)
{
    std::string result(text);
    make_lower_case(result);
    return result;
}

}

void Method_Builder::add(const Item_List& list, bool is_record, bool is_result)
{
    std::vector<Item>& items = is_result ? method.result_items : method.argument_items;
    const Value_Name& name = *(is_result ? result_++ : argument_++);
    const std::size_t first = items.size();
    // A record without a name lies open.
    const bool marked = is_record && *name.name != '\0';
    if (marked)
        items.push_back({name.name, name.unit, Item::Kind::open});
    items.insert(items.end(), list.items.begin(), list.items.begin() + static_cast<std::ptrdiff_t>(list.size));
    for (Item& item : std::span(items).subspan(first))
        if (*item.unit == '\0')
            item.unit = name.unit;
    if (!is_record)
        items[first].name = name.name;
    items[first].hexadecimal = items[first].hexadecimal || name.base == 16;
    items[first].is_field = is_record && !marked;
    if (marked)
        items.push_back({name.name, name.unit, Item::Kind::close});
}

Method Method_Builder::finish()
{
    method.arguments = leaves_of(method.argument_items);
    for (Leaf& leaf : method.arguments)
        leaf.names = enumerators_of(method.name, leaf.path);
    method.results = leaves_of(method.result_items);
    return std::move(method);
}

Json Method::call(ZAVRA_100& device, const Json& values) const
{
    return json::decode(result_items, transact(device, json::encode(argument_items, values, "",
                                                                    "has arguments that it does not know")));
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

std::vector<std::string> method_names()
{
    std::vector<std::string> names;
    for (const Method& method : table())
        names.push_back(method.name);
    return names;
}

const Method& method_named(std::string_view name)
{
    if (const Method* found = find_method(name))
        return *found;
    std::string similar;
    for (const Method& candidate : table())
        if (lower(candidate.name).find(lower(name)) != std::string::npos)
            similar += (similar.empty() ? "" : ", ") + candidate.name;
    if (similar.empty()) {
        const std::string meant = did_you_mean(std::string(name), method_names());
        throw Usage_Error("there is no method \"" + std::string(name) + '"' +
                          (meant.empty() ? "; see: zavractl list" : meant));
    }
    throw Usage_Error("there is no method \"" + std::string(name) + "\"; there is: " + similar);
}

}

}
