#include "../protocol/sensors.h"
#include "dump.h"
#include "exchange.h"

#include <cstdio>

using namespace zavra;

namespace
{

constexpr const char* unknown_gyro = "unknown gyro index";
constexpr const char* unknown_magnetometer = "unknown magnetometer index";

void check_gyro(unsigned char index, const char* action)
{
    if (index >= protocol::number_of_gyroscopes)
        reject(action, unknown_gyro);
}

void check_magnetometer(unsigned char index, const char* action, const char* reason = unknown_magnetometer)
{
    if (index >= protocol::number_of_magnetometers)
        reject(action, reason);
}

template <class... Argument>
void send_gyro(ZAVRA_100& device, const Command<void(unsigned char, Argument...)>& command, unsigned char index,
               const std::type_identity_t<Argument>&... arguments)
{
    check_gyro(index, command.action);
    send(device, command, index, arguments...);
}

template <class Result>
Result ask_gyro(ZAVRA_100& device, const Command<Result(unsigned char)>& command, unsigned char index)
{
    check_gyro(index, command.action);
    return ask(device, command, index);
}

template <class... Argument>
void send_magnetometer(ZAVRA_100& device, const Command<void(unsigned char, Argument...)>& command, unsigned char index,
                       const std::type_identity_t<Argument>&... arguments)
{
    check_magnetometer(index, command.action);
    send(device, command, index, arguments...);
}

void dump_gyro(unsigned char index, const ZAVRA_100_Gyroscope_Parameters& parameters)
{
    dump_fields(List{Field{"GYRO_INDEX", index, style::character}});
    dump("ZAVRA_100_Gyroscope_Parameters", parameters);
}

void dump_magnetometer(unsigned char index, const ZAVRA_100_Magnetometer_Parameters& parameters)
{
    dump("ZAVRA_100_Magnetometer_Parameters", List{Field{"MAGNETOMETER_INDEX", index, style::character}});
    dump_fields(parameters);
}

}

void ZAVRA_100::Set_Gyro_Values(unsigned char index, ZAVRA_100_Vector3_float angular_velocity)
{
    send_gyro(*this, protocol::set_gyro_values, index, angular_velocity);
}

void ZAVRA_100::Get_Gyro_Values(unsigned char index, ZAVRA_100_Vector3_float* angular_velocity,
                                unsigned long long* timestamp)
{
    std::tie(*angular_velocity, *timestamp) = ask_gyro(*this, protocol::get_gyro_values, index);
    dump_fields(*angular_velocity, "ANGULAR_VELOCITY_BF_RADPS");
}

void ZAVRA_100::Set_Gyro_Parameters(unsigned char index, ZAVRA_100_Gyroscope_Parameters parameters)
{
    check_gyro(index, protocol::set_gyro_parameters.action);
    dump_gyro(index, parameters);
    send(*this, protocol::set_gyro_parameters, index, parameters);
}

void ZAVRA_100::Get_Gyro_Parameters(unsigned char index, ZAVRA_100_Gyroscope_Parameters* parameters)
{
    *parameters = ask_gyro(*this, protocol::get_gyro_parameters, index);
    dump_gyro(index, *parameters);
}

void ZAVRA_100::Set_Gyro_Update_Interval(unsigned char index, unsigned long long interval_msec)
{
    send_gyro(*this, protocol::set_gyro_update_interval, index, interval_msec);
}

void ZAVRA_100::Get_Gyro_Update_Interval(unsigned char index, unsigned long long* interval_msec)
{
    *interval_msec = ask_gyro(*this, protocol::get_gyro_update_interval, index);
}

void ZAVRA_100::Enable_Gyro_Correction(unsigned char index)
{
    send_gyro(*this, protocol::enable_gyro_correction, index);
}

void ZAVRA_100::Disable_Gyro_Correction(unsigned char index)
{
    send_gyro(*this, protocol::disable_gyro_correction, index);
}

void ZAVRA_100::Start_Gyro_Bias_Calculation(unsigned char index)
{
    send_gyro(*this, protocol::start_gyro_bias_calculation, index);
}

// Quirk: the bias commands say "Values" where they refuse an index and "Value" where they fail.
void ZAVRA_100::Set_Gyro_Bias_Value(unsigned char index, ZAVRA_100_Vector3_float bias)
{
    check_gyro(index, "Set Gyro Bias Values");
    send(*this, protocol::set_gyro_bias_value, index, bias);
}

void ZAVRA_100::Get_Gyro_Bias_Value(unsigned char index, ZAVRA_100_Vector3_float* bias)
{
    check_gyro(index, "Get Gyro Bias Values");
    *bias = ask(*this, protocol::get_gyro_bias_value, index);
}

void ZAVRA_100::Enable_Gyro_Bias_Removement(unsigned char index)
{
    send_gyro(*this, protocol::enable_gyro_bias_removement, index);
}

void ZAVRA_100::Disable_Gyro_Bias_Removement(unsigned char index)
{
    send_gyro(*this, protocol::disable_gyro_bias_removement, index);
}

void ZAVRA_100::Enable_Gyro_Averaging_Filter(unsigned char index)
{
    send_gyro(*this, protocol::enable_gyro_averaging_filter, index);
}

void ZAVRA_100::Disable_Gyro_Averaging_Filter(unsigned char index)
{
    send_gyro(*this, protocol::disable_gyro_averaging_filter, index);
}

void ZAVRA_100::Set_Magnetometer_Values(unsigned char index, ZAVRA_100_Vector3_float magnetic_field)
{
    send_magnetometer(*this, protocol::set_magnetometer_values, index, magnetic_field);
}

void ZAVRA_100::Get_Magnetometer_Values(unsigned char index, ZAVRA_100_Vector3_float* magnetic_field,
                                        unsigned long long* timestamp)
{
    // Quirk: the refusal says "Values" where the failure says "Value", and "gyro".
    check_magnetometer(index, "Get Magnetometer Values", unknown_gyro);
    std::tie(*magnetic_field, *timestamp) = ask(*this, protocol::get_magnetometer_values, index);
}

void ZAVRA_100::Set_Magnetometer_Parameters(unsigned char index, ZAVRA_100_Magnetometer_Parameters parameters)
{
    constexpr auto command = protocol::set_magnetometer_parameters;
    unsigned char payload[command.request_size];
    pack(payload, index, parameters);
    dump_magnetometer(index, parameters);

    // Quirk: this payload goes to standard output as well, whatever the debug level.
    for (const unsigned char byte : payload)
        std::printf("%02x", unsigned{byte});
    std::fflush(stdout);

    send_bytes(*this, command.identifier, command.action, payload, sizeof payload);
}

void ZAVRA_100::Get_Magnetometer_Parameters(unsigned char index, ZAVRA_100_Magnetometer_Parameters* parameters)
{
    // Quirk: the request names magnetometer 0, the only one that the unit has; the index is only printed.
    *parameters = ask(*this, protocol::get_magnetometer_parameters, 0);
    dump_magnetometer(index, *parameters);
}

void ZAVRA_100::Set_Magnetometer_Update_Interval(unsigned char index, unsigned long long interval_msec)
{
    send_magnetometer(*this, protocol::set_magnetometer_update_interval, index, interval_msec);
}

void ZAVRA_100::Get_Magnetometer_Update_Interval(unsigned char index, unsigned long long* interval_msec)
{
    // Quirk: the refusal says "gyro".
    check_magnetometer(index, protocol::get_magnetometer_update_interval.action, unknown_gyro);
    *interval_msec = ask(*this, protocol::get_magnetometer_update_interval, index);
}

void ZAVRA_100::Enable_Magnetometer_Correction(unsigned char index)
{
    send_magnetometer(*this, protocol::enable_magnetometer_correction, index);
}

void ZAVRA_100::Disable_Magnetometer_Correction(unsigned char index)
{
    send_magnetometer(*this, protocol::disable_magnetometer_correction, index);
}

void ZAVRA_100::Enable_Magnetometer_Averaging_Filter(unsigned char index)
{
    send_magnetometer(*this, protocol::enable_magnetometer_averaging_filter, index);
}

void ZAVRA_100::Disable_Magnetometer_Averaging_Filter(unsigned char index)
{
    send_magnetometer(*this, protocol::disable_magnetometer_averaging_filter, index);
}

void ZAVRA_100::Enable_Magnetometer_Moving_Averaging_Filter(unsigned char index)
{
    send_magnetometer(*this, protocol::enable_magnetometer_moving_averaging_filter, index);
}

void ZAVRA_100::Disable_Magnetometer_Moving_Averaging_Filter(unsigned char index)
{
    send_magnetometer(*this, protocol::disable_magnetometer_moving_averaging_filter, index);
}

void ZAVRA_100::Set_Sun_Vector(ZAVRA_100_Vector3_float sun_vector, unsigned long long epoch_time_msec)
{
    dump_fields(sun_vector, "SUN_VECTOR_SF");
    debug_line(values, "EPOCH_TIME_msec: dec = ", epoch_time_msec);
    send(*this, protocol::set_sun_vector, sun_vector, epoch_time_msec);
}
