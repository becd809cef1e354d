// Operation modes: sets the unit's clock, starts and stops each mode, and prints what the unit's telemetry says of it.

#include <VELM_ZAVRA_API.h>
#include <VELM_ZAVRA_VALUES.h>

#include <chrono>
#include <cstdio>
#include <exception>
#include <functional>
#include <iostream>
#include <thread>

namespace
{

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;
using velm_zavra::to_msec;

float radians(double degrees)
{
    return static_cast<float>(velm_zavra::radians(degrees));
}

/// Reads the standard telemetry and prints one line of it.
/// @return the number of commands that the unit did not accept
unsigned int show(VELM_ZAVRA_API& api, const char* what)
{
    const auto telemetry = api.Get_Standard_Telemetry();
    std::printf("%-34s epoch time %llu ms   control main status 0x%08x   failed commands %u\n", what,
                telemetry.epoch_time_msec, telemetry.control_main_status, telemetry.number_of_failed_commands);
    return telemetry.number_of_failed_commands;
}

void show_pointing(VELM_ZAVRA_API& api)
{
    const auto target = api.Get_Target_Pointing_Target_Parameters_Telemetry();
    const auto operation = api.Get_Target_Pointing_Operation_Parameters_Telemetry();
    const auto data = api.Get_Target_Pointing_Operation_Data_Telemetry();
    std::printf("    target     control mode %u, start %llu ms, stop %llu ms, from %.4f, %.4f rad to %.4f, %.4f rad\n",
                target.control_mode, target.start_epoch_time, target.stop_epoch_time, target.start_latitude,
                target.start_longitude, target.stop_latitude, target.stop_longitude);
    std::printf("    operation  general mode %u, update interval %llu ms, angle tolerance %.4f rad\n",
                operation.general_mode, operation.update_interval,
                operation.tolerance_parameters.prealignment_angle_tolerance_rad);
    std::printf("    data       state %u (target %u), rate %.4f %.4f %.4f rad/s\n", unsigned{data.current_state},
                unsigned{data.state_target}, data.angular_velocity_bf.x, data.angular_velocity_bf.y,
                data.angular_velocity_bf.z);
    std::printf("               attitude %.3f %.3f %.3f %.3f, target %.3f %.3f %.3f %.3f\n",
                data.attitude_quaternion.q_1, data.attitude_quaternion.q_2, data.attitude_quaternion.q_3,
                data.attitude_quaternion.q_4, data.target_quaternion.q_1, data.target_quaternion.q_2,
                data.target_quaternion.q_3, data.target_quaternion.q_4);
}

/// Detumbling that starts one second from now and lasts one second.
void show_timed_mode(VELM_ZAVRA_API& api)
{
    const auto start = std::chrono::system_clock::now() + seconds(1);
    const auto stop = start + seconds(1);
    api.Start_Operation_Mode_Detumbling({to_msec(start), to_msec(stop)});
    show(api, "Detumbling, before its start");
    std::this_thread::sleep_until(start + milliseconds(300));
    show(api, "Detumbling, after its start");
    std::this_thread::sleep_until(stop + milliseconds(300));
    show(api, "Detumbling, after its stop");
}

}

int main()
try {
    VELM_ZAVRA_API api;
    api.Set_Epoch_Time(to_msec(velm_zavra::now()));
    std::puts("");
    const unsigned int failed_before = show(api, "Clock set");
    show_timed_mode(api);

    constexpr VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT camera{0, 0, 1};
    constexpr VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT forward{1, 0, 0};
    constexpr VELM_ZAVRA_API_TARGET_POINTING_TOLERANCE_PARAMETERS tolerances{0.02F, 5, 0.001F, 0.1F};
    constexpr unsigned int determination_mode = 0;
    const unsigned long long now = to_msec(velm_zavra::now());
    const unsigned long long in_an_hour = now + to_msec(hours(1));

    using Api = VELM_ZAVRA_API;
    const struct
    {
        const char* name;
        std::function<void()> start;
        void (Api::*stop)();
        bool has_target;
    } modes[] = {
        {"Safe", [&] { api.Set_Operation_Mode_Safe(); }, &Api::Set_Operation_Mode_Idle, false},
        {"Measurement", [&] { api.Set_Operation_Mode_Measurement(); }, &Api::Set_Operation_Mode_Idle, false},
        {"Detumbling",
         [&] {
             api.Start_Operation_Mode_Detumbling({now, in_an_hour});
         },
         &Api::Stop_Operation_Mode_Detumbling, false},
        {"Sun pointing",
         [&] {
             api.Start_Operation_Mode_Sun_Pointing({camera, now, in_an_hour});
         },
         &Api::Stop_Operation_Mode_Sun_Pointing, false},
        {"Nadir pointing",
         [&] {
             api.Start_Target_Pointing_Nadir_Mode({determination_mode, camera, forward, 0, 1000, tolerances});
         },
         &Api::Stop_Target_Pointing_Nadir_Mode, true},
        {"Earth-fixed pointing",
         [&] {
             api.Start_Target_Pointing_Earth_Fix_Mode(
                 {determination_mode, camera, forward, radians(49.8), radians(9.9), 0, 1000, tolerances});
         },
         &Api::Stop_Target_Pointing_Earth_Fix_Mode, true},
        {"Constant-velocity pointing",
         [&] {
             api.Start_Target_Pointing_Earth_Const_Velocity_Mode({determination_mode, camera, forward, radians(49.8),
                                                                  radians(52.5), radians(9.9), radians(13.4), now,
                                                                  in_an_hour, 0, 1000, tolerances});
         },
         &Api::Stop_Target_Pointing_Earth_Const_Velocity_Mode, true},
        {"Inertial pointing",
         [&] {
             VELM_ZAVRA_API_TARGET_POINTING_INERTIAL_MODE_PARAMETERS parameters{};
             parameters.los_vector_bf = camera;
             parameters.flight_vector_bf = forward;
             parameters.degree = velm_zavra::inertial_mode_degree;
             parameters.base_quaternion = velm_zavra::quaternion(velm_zavra::Euler_Angles{0, radians(73.74), 0});
             parameters.start_epoch_time = now;
             parameters.stop_epoch_time = in_an_hour;
             parameters.update_interval = 1000;
             api.Start_Target_Pointing_Inertial_Mode(parameters);
         },
         &Api::Stop_Target_Pointing_Inertial_Mode, true},
    };
    for (const auto& mode : modes) {
        mode.start();
        show(api, mode.name);
        if (mode.has_target)
            show_pointing(api);
        (api.*mode.stop)();
        if (show(api, "  stopped") != failed_before) {
            std::cerr << "The unit did not accept a command" << std::endl;
            return 1;
        }
    }
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
}
