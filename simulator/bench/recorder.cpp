#include "recorder.h"

#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <iostream>
#include <stdexcept>
#include <system_error>
#include <unistd.h>

namespace zavra::simulator
{

namespace
{

constexpr std::size_t buffer_bytes = 1U << 16U;

constexpr const char* names =
    "time_s,epoch_time_msec,position_x_km,position_y_km,position_z_km,velocity_x_kmps,velocity_y_kmps,velocity_z_kmps,"
    "q_1,q_2,q_3,q_4,angular_velocity_x_radps,angular_velocity_y_radps,angular_velocity_z_radps,"
    "magnetic_field_x_t,magnetic_field_y_t,magnetic_field_z_t,sun_vector_x,sun_vector_y,sun_vector_z,sunlight,"
    "wheel_speed_x_radps,wheel_speed_y_radps,wheel_speed_z_radps,wheel_speed_u_radps,wheel_speed_v_radps,"
    "wheel_speed_w_radps,dipole_moment_x_am2,dipole_moment_y_am2,dipole_moment_z_am2,mode,"
    "estimated_q_1,estimated_q_2,estimated_q_3,estimated_q_4,estimated_angular_velocity_x_radps,"
    "estimated_angular_velocity_y_radps,estimated_angular_velocity_z_radps,pointing_error_rad\n";

/// A line of a table under construction.
class Line
{
public:
    explicit Line(std::string& text) : text_(text) {}

    template <class Number>
    void add(Number number)
    {
        char digits[32];
        text_.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
        text_ += ',';
    }

    template <class Vector>
    void add_all(const Vector& numbers)
    {
        for (const double number : numbers)
            add(number);
    }

    void add(const Eigen::Quaterniond& q) { add_all(q.coeffs()); }
    void leave_empty(std::size_t places) { text_.append(places, ','); }
    void end() { text_.back() = '\n'; }

private:
    std::string& text_;
};

}

Recorder::Recorder(const std::string& path, Clock::Time interval)
    : path_(path),
      interval_(interval),
      file_(path == "-" ? ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)
                        : ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)),
      waiting_(names)
{
    if (!file_)
        throw std::runtime_error("Record " + path + ": " + std::generic_category().message(errno));
    if (interval.count() <= 0 || interval % Satellite_World::tick_length != Clock::Time(0))
        throw std::invalid_argument("The interval of a record is a multiple of " +
                                    std::to_string(Satellite_World::tick_length.count()) + " ms");
}

void Recorder::record(const Test_Bench::Unit& unit)
{
    const Satellite& satellite = unit.satellite->satellite;
    if (ended() || satellite.time() % interval_ != Clock::Time(0))
        return;
    const Surroundings& around = satellite.surroundings();
    Line line{waiting_};
    line.add(static_cast<double>(satellite.time().count()) / 1000);
    line.add(satellite.epoch_time_msec());
    line.add_all(around.position_km);
    line.add_all(around.velocity_kmps);
    line.add(satellite.attitude());
    line.add_all(satellite.angular_velocity_radps());
    line.add_all(satellite.in_body(around.magnetic_field_t));
    line.add_all(satellite.in_body(around.sun_vector));
    line.add(around.sunlight);
    line.add_all(satellite.wheel_speeds_radps());
    line.add_all(satellite.dipole_moment_am2());
    line.add(static_cast<unsigned int>(unit.unit.parts.modes.mode()));
    const auto estimate = unit.unit.software ? unit.unit.software->estimate() : std::nullopt;
    if (estimate) {
        line.add(estimate->attitude);
        line.add_all(estimate->angular_velocity_radps);
    } else {
        line.leave_empty(7);
    }
    if (estimate && estimate->pointing_error_rad)
        line.add(*estimate->pointing_error_rad);
    else
        line.leave_empty(1);
    line.end();
    ++lines_;
    if (waiting_.size() >= buffer_bytes)
        flush();
}

void Recorder::flush()
{
    for (std::size_t written = 0; !ended() && written < waiting_.size();) {
        const ssize_t size = ::write(file_.get(), waiting_.data() + written, waiting_.size() - written);
        if (size >= 0) {
            written += static_cast<std::size_t>(size);
        } else if (errno != EINTR) {
            std::cerr << "The record " + path_ + " ends here: " + std::generic_category().message(errno) + "\n"
                      << std::flush;
            file_ = File_Descriptor();
        }
    }
    waiting_.clear();
}

}
