#include "../protocol/modes.h"
#include "dump.h"
#include "exchange.h"

using namespace zavra;

namespace
{

constexpr const char* kalman_filter_title = "ZAVRA_100_KalmanFilter_Parameters";

template <class Parameters>
void send_dumped(ZAVRA_100& device, const Command<void(Parameters)>& command, const char* title,
                 const Parameters& parameters)
{
    dump(title, parameters);
    send(device, command, parameters);
}

template <class Telemetry>
void read_telemetry(ZAVRA_100& device, const Command<Telemetry()>& command, const char* name, Telemetry* telemetry)
{
    *telemetry = ask(device, command);
    debug_line(values, "TARGET_POINTING.", name, ":");
    dump_fields(*telemetry, name);
}

/// The unit takes polynomials of degree 6, seven coefficients for each quaternion component, the constant one first;
/// for every other degree the driver sends degree 0 and the four constants side by side.
Inertial_Request inertial_request(const ZAVRA_100_TargetPointing_Inertial_Parameters& p)
{
    constexpr unsigned int full_degree = 6;
    const bool full = p.degree == full_degree;
    const unsigned int stride = full ? full_degree + 1 : 1;
    Inertial_Request request{p.determination_mode, p.los_vector_bf,   p.flight_vector_bf, full ? full_degree : 0, {},
                             p.start_epoch_time,   p.stop_epoch_time, p.offset_time,      p.update_interval};
    request.polynomial_coeff[0] = p.base_quaternion.q_1;
    request.polynomial_coeff[stride] = p.base_quaternion.q_2;
    request.polynomial_coeff[2 * stride] = p.base_quaternion.q_3;
    request.polynomial_coeff[3 * stride] = p.base_quaternion.q_4;
    return request;
}

}

void ZAVRA_100::Set_OperationMode_Safe()
{
    send(*this, protocol::set_operationmode_safe);
}

void ZAVRA_100::Set_OperationMode_Idle()
{
    send(*this, protocol::set_operationmode_idle);
}

void ZAVRA_100::Set_OperationMode_Measurement()
{
    send(*this, protocol::set_operationmode_measurement);
}

void ZAVRA_100::Start_OperationMode_Detumbling(ZAVRA_100_Detumbling_Mode_Parameters parameters)
{
    send_dumped(*this, protocol::start_operationmode_detumbling, "ZAVRA_100_Detumbling_Mode_Parameters", parameters);
}

void ZAVRA_100::Stop_OperationMode_Detumbling()
{
    send(*this, protocol::stop_operationmode_detumbling);
}

void ZAVRA_100::Start_OperationMode_Sun_Pointing(ZAVRA_100_SunPointing_Mode_Parameters parameters)
{
    send_dumped(*this, protocol::start_operationmode_sun_pointing, "ZAVRA_100_SunPointing_Mode_Parameters", parameters);
}

void ZAVRA_100::Stop_OperationMode_Sun_Pointing()
{
    send(*this, protocol::stop_operationmode_sun_pointing);
}

void ZAVRA_100::Start_TargetPointing_Earth_Const_Velocity_Mode(
    ZAVRA_100_Earth_TargetPointing_Const_Velocity_Parameters parameters)
{
    send_dumped(*this, protocol::start_targetpointing_earth_const_velocity_mode,
                "ZAVRA_100_Earth_TargetPointing_Const_Velocity_Parameters", parameters);
}

void ZAVRA_100::Stop_TargetPointing_Earth_Const_Velocity_Mode()
{
    send(*this, protocol::stop_targetpointing_earth_const_velocity_mode);
}

void ZAVRA_100::Start_TargetPointing_Earth_Fix_Mode(ZAVRA_100_Earth_TargetPointing_Fixed_Parameters parameters)
{
    send_dumped(*this, protocol::start_targetpointing_earth_fix_mode, "ZAVRA_100_Earth_TargetPointing_Fixed_Parameters",
                parameters);
}

void ZAVRA_100::Stop_TargetPointing_Earth_Fix_Mode()
{
    send(*this, protocol::stop_targetpointing_earth_fix_mode);
}

void ZAVRA_100::Start_TargetPointing_Nadir_Mode(ZAVRA_100_NadirPointing_Parameters parameters)
{
    send_dumped(*this, protocol::start_targetpointing_nadir_mode, "ZAVRA_100_NadirPointing_Parameters", parameters);
}

void ZAVRA_100::Stop_TargetPointing_Nadir_Mode()
{
    send(*this, protocol::stop_targetpointing_nadir_mode);
}

void ZAVRA_100::Start_TargetPointing_Inertial_Mode(ZAVRA_100_TargetPointing_Inertial_Parameters parameters)
{
    dump("ZAVRA_100_TargetPointing_Inertial_Parameters", parameters);
    send(*this, protocol::start_targetpointing_inertial_mode, inertial_request(parameters));
}

void ZAVRA_100::Stop_TargetPointing_Inertial_Mode()
{
    send(*this, protocol::stop_targetpointing_inertial_mode);
}

void ZAVRA_100::Get_TargetPointing_Target_Parameters_Telemetry(
    ZAVRA_100_TargetPointing_Target_Parameters_Telemetry* telemetry)
{
    read_telemetry(*this, protocol::get_targetpointing_target_parameters_telemetry, "TARGET_PARAMETER_TELEMETRY",
                   telemetry);
}

void ZAVRA_100::Get_TargetPointing_Operation_Parameters_Telemetry(
    ZAVRA_100_TargetPointing_Operation_Parameters_Telemetry* telemetry)
{
    read_telemetry(*this, protocol::get_targetpointing_operation_parameters_telemetry, "OPERATION_PARAMETER_TELEMETRY",
                   telemetry);
}

void ZAVRA_100::Get_TargetPointing_Operation_Data_Telemetry(
    ZAVRA_100_TargetPointing_Operation_Data_Telemetry* telemetry)
{
    read_telemetry(*this, protocol::get_targetpointing_operation_data_telemetry, "OPERATION_DATA_TELEMETRY", telemetry);
}

void ZAVRA_100::Set_TargetPointing_Operation_Parameters(ZAVRA_100_TargetPointing_Operation_Parameters parameters)
{
    send_dumped(*this, protocol::set_targetpointing_operation_parameters,
                "ZAVRA_100_TargetPointing_Operation_Parameters", parameters);
}

void ZAVRA_100::Set_KalmanFilter_Parameters(ZAVRA_100_KalmanFilter_Parameters parameters)
{
    send_dumped(*this, protocol::set_kalmanfilter_parameters, kalman_filter_title, parameters);
}

void ZAVRA_100::Get_KalmanFilter_Parameters(ZAVRA_100_KalmanFilter_Parameters* parameters)
{
    *parameters = ask(*this, protocol::get_kalmanfilter_parameters);
    dump(kalman_filter_title, *parameters);
}
