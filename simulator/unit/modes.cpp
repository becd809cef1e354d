#include "modes.h"

#include "../../protocol/modes.h"
#include "../onboard/vectors.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zavra::simulator
{

namespace
{

using Vector = ZAVRA_100_Vector3_float;

Vector cross(const Vector& a, const Vector& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Vector normalised(const Vector& v)
{
    const float norm = std::hypot(v.x, v.y, v.z);
    return norm > 0 ? Vector{v.x / norm, v.y / norm, v.z / norm} : Vector{};
}

ZAVRA_100_Matrix3x3_float pointing_frame(const Vector& line_of_sight, const Vector& flight)
{
    const Vector z = normalised(line_of_sight);
    const Vector y = normalised(cross(z, flight));
    const Vector x = cross(y, z);
    return {x.x, x.y, x.z, y.x, y.y, y.z, z.x, z.y, z.z};
}

void require(bool condition, const char* otherwise)
{
    if (!condition)
        throw Refused(otherwise);
}

void require_on_earth(float latitude, float longitude)
{
    require(std::abs(double{latitude}) <= std::numbers::pi / 2, "latitude out of range");
    require(std::abs(double{longitude}) <= std::numbers::pi, "longitude out of range");
}

/// The constant terms of the attitude polynomials.
ZAVRA_100_Quaternion_float constant_attitude(const Inertial_Request& request)
{
    require(request.degree == 0 || request.degree == 6, "degree of the attitude polynomial");
    const std::size_t stride = request.degree + 1;
    const float* c = request.polynomial_coeff;
    return {c[0], c[stride], c[2 * stride], c[3 * stride]};
}

}

Modes::Modes(Command_Table& commands, const Unit_Time& time, const World& world, const Actuators& actuators,
             const std::optional<Onboard_Software::Report>& report)
    : time_(time),
      world_(world),
      actuators_(actuators),
      report_(report)
{
    using namespace protocol;
    commands.on(set_operationmode_idle, [this] { enter(idle); });
    commands.on(set_operationmode_safe, [this] { enter(safe); });
    commands.on(set_operationmode_measurement, [this] { enter(measurement); });
    commands.on(start_operationmode_detumbling,
                [this](const auto& p) { enter(detumbling, p.start_epoch_time, p.stop_epoch_time); });
    commands.on(start_operationmode_sun_pointing, [this](const auto& p) {
        enter(sun_pointing, p.start_epoch_time, p.stop_epoch_time);
        settings.sun_line_of_sight = p.los_vector_bf;
    });
    commands.on(start_targetpointing_nadir_mode, [this](const auto& p) { point(nadir, p); });
    commands.on(start_targetpointing_earth_fix_mode, [this](const auto& p) { point(earth_fixed, p); });
    commands.on(start_targetpointing_earth_const_velocity_mode,
                [this](const auto& p) { point(earth_const_velocity, p); });
    commands.on(start_targetpointing_inertial_mode, [this](const auto& p) { point(inertial, p); });
    // Stands for all six, which share its identifier.
    commands.on(stop_operationmode_detumbling, [this] { enter(idle); });

    commands.on(get_targetpointing_target_parameters_telemetry, [this] { return target(); });
    commands.on(get_targetpointing_operation_parameters_telemetry, [this] { return operation_parameters(); });
    commands.on(get_targetpointing_operation_data_telemetry, [this] { return operation_data(); });
    commands.on(set_targetpointing_operation_parameters, [this](const auto& p) { use(p); });
    commands.keep(set_kalmanfilter_parameters, get_kalmanfilter_parameters, settings.kalman_filter);
}

Modes::Mode Modes::mode() const
{
    const bool ended = settings.stop_epoch_time != 0 && time_.epoch_msec() > settings.stop_epoch_time;
    return ended ? idle : settings.mode;
}

bool Modes::waiting() const
{
    return mode() != idle && time_.epoch_msec() < settings.start_epoch_time;
}

void Modes::enter(Mode mode, unsigned long long start_epoch_time, unsigned long long stop_epoch_time)
{
    require(stop_epoch_time == 0 || start_epoch_time <= stop_epoch_time, "start after stop");
    settings.mode = mode;
    ++settings.starts;
    settings.start_epoch_time = start_epoch_time;
    settings.stop_epoch_time = stop_epoch_time;
}

template <class Request>
void Modes::point(Mode mode, const Request& request)
{
    auto operation = settings.operation_in_use;
    operation.determination_mode = request.determination_mode;
    operation.update_interval = request.update_interval;
    operation.target_latitude = operation.target_longitude = 0;
    ZAVRA_100_TargetPointing_Target_Parameters_Telemetry target{};
    target.control_mode = mode;
    target.offset_time_msec = request.offset_time;
    target.rotation_matrix = pointing_frame(request.los_vector_bf, request.flight_vector_bf);

    if constexpr (requires { request.tolerance_parameters; })
        operation.tolerance_parameters = request.tolerance_parameters;
    if constexpr (requires { request.start_epoch_time; }) {
        target.start_epoch_time = operation.start_epoch_time = request.start_epoch_time;
        target.stop_epoch_time = request.stop_epoch_time;
    } else {
        operation.start_epoch_time = 0;
    }
    if constexpr (requires { request.target_latitude; }) {
        require_on_earth(request.target_latitude, request.target_longitude);
        operation.target_latitude = target.start_latitude = target.stop_latitude = request.target_latitude;
        operation.target_longitude = target.start_longitude = target.stop_longitude = request.target_longitude;
    }
    if constexpr (requires { request.start_latitude; }) {
        require_on_earth(request.start_latitude, request.start_longitude);
        require_on_earth(request.stop_latitude, request.stop_longitude);
        target.start_latitude = request.start_latitude;
        target.start_longitude = request.start_longitude;
        target.stop_latitude = request.stop_latitude;
        target.stop_longitude = request.stop_longitude;
    }
    if constexpr (requires { request.polynomial_coeff; }) {
        target.start_quaternion = target.end_quaternion = constant_attitude(request);
        std::ranges::copy(request.polynomial_coeff, target.polynomial_coeff);
        settings.polynomial_degree = request.degree;
    }

    enter(mode, target.start_epoch_time, target.stop_epoch_time);
    settings.target = target;
    settings.operation_in_use = operation;
}

void Modes::use(const ZAVRA_100_TargetPointing_Operation_Parameters& parameters)
{
    settings.operation = parameters;
    auto& in_use = settings.operation_in_use;
    in_use.update_interval = parameters.update_interval;
    in_use.tolerance_parameters.prealignment_angle_tolerance_rad = parameters.angle_tolerance_rad;
    in_use.tolerance_parameters.prealignment_angle_tolerance_percent = parameters.angle_tolerance_perc;
    in_use.tolerance_parameters.prealignment_angular_velocity_tolerance_radps = parameters.speed_tolerance_radps;
}

ZAVRA_100_TargetPointing_Target_Parameters_Telemetry Modes::target() const
{
    auto t = settings.target;
    t.current_epoch_time_msec = time_.epoch_msec();
    return t;
}

ZAVRA_100_TargetPointing_Operation_Parameters_Telemetry Modes::operation_parameters() const
{
    auto t = settings.operation_in_use;
    t.general_mode = mode();
    return t;
}

ZAVRA_100_TargetPointing_Operation_Data_Telemetry Modes::operation_data() const
{
    ZAVRA_100_TargetPointing_Operation_Data_Telemetry t{};
    t.current_epoch_time_msec = time_.epoch_msec();
    t.main_register = main_status();
    if (mode() >= nadir) {
        t.state_target = pointing;
        t.current_state = waiting() ? waiting_for_start : pointing;
        t.next_action_epoch_time_msec = waiting() ? settings.start_epoch_time : settings.stop_epoch_time;
    }
    t.angular_velocity_bf = world_.angular_velocity_radps();
    t.target_quaternion = settings.target.end_quaternion;
    t.attitude_quaternion = world_.attitude();
    if (report_) {
        t.angular_velocity_bf = narrow(report_->attitude.angular_velocity_radps);
        t.attitude_quaternion = narrow(report_->attitude.attitude);
        t.target_quaternion = {};
    }
    if (report_ && report_->control.pointing) {
        const auto& p = *report_->control.pointing;
        t.current_state = p.state;
        t.prealignment_is_ready = p.ready;
        t.prealignment_current_rotation_axis = p.axis;
        t.prealignment_active_flag = {p.active[0], p.active[1], p.active[2]};
        t.prealignment_target_rotation_angle = narrow(p.target_angle_rad);
        t.prealignment_rotation_angle = narrow(p.angle_rad);
        t.target_quaternion = narrow(p.target);
    }
    t.target_rw_speed = actuators_.wheel_targets_radps();
    t.current_rw_speed = actuators_.wheel_speeds_radps();
    return t;
}

}
