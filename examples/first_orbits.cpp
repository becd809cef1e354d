// The first orbits of a satellite that was just released: it tumbles; its unit is configured, gets clock and orbit,
// stops the tumbling, points to the sun and then to the Earth. A log tells what the application waits for, and why.
// Usage: first_orbits INI_FILE TLE_FILE     beside zavra-sim --satellite examples/satellites/3u.toml --time-factor 100
//
// Waits go by the unit's epoch time. The exit status is 0 after the mission, 3 when something did not happen in time,
// and 1 when the unit or the bus failed.

#include <VELM_ZAVRA_API.h>
#include <VELM_ZAVRA_VALUES.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <exception>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>
#include <thread>

namespace
{

using std::chrono::minutes;
using velm_zavra::degrees;
using velm_zavra::to_msec;

constexpr VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT solar_panel{1, 0, 0}; ///< the axis of the largest moment of inertia, too
/// The 3U's star tracker looks along -y, which is up when this is down.
constexpr VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT camera{0, 1, 0}, forward{1, 0, 0};

/// The simulated unit's bits of sat_main_register.
constexpr unsigned int orbit_known = 1U << 0U, attitude_known = 1U << 1U, eclipse = 1U << 6U;

struct Timed_Out : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

class Mission
{
public:
    explicit Mission(VELM_ZAVRA_API& unit) : unit_(unit) {}

    /// The clock, unless somebody has set it: it counts from 0 after a reset. The simulated satellite's is its file's.
    void set_clock()
    {
        const bool was_reset = unit_.Get_Epoch_Time() < to_msec(std::chrono::hours(24 * 365));
        if (was_reset)
            unit_.Set_Epoch_Time(to_msec(velm_zavra::now()));
        start_ = last_ = unit_.Get_Epoch_Time();
        say(was_reset ? "clock set to this computer's" : "the unit has a clock that runs: kept");
    }

    void load_orbit(const std::string& tle_file)
    {
        const auto elements = velm_zavra::read_orbit_elements(unit_, tle_file, std::chrono::seconds(1));
        if (unit_.Init_Orbit_Module(elements) != 0)
            throw std::runtime_error("The unit refused the elements");
        wait("the orbit, without which there is neither a field to compare with nor a nadir", minutes(0), minutes(10),
             [this] { return known(orbit_known); });
    }

    void detumble()
    {
        unit_.Start_Operation_Mode_Detumbling({0, 0});
        wait("less than 0.5 deg/s: faster, and sun pointing starts with a nutation", minutes(5), minutes(240),
             [this] { return below(rate_degps(), 0.5, "deg/s"); });
    }

    void point_to_the_sun()
    {
        unit_.Start_Operation_Mode_Sun_Pointing({solar_panel, 0, 0});
        wait("the sun within 10 deg of +x, to load the batteries; in shadow there is none to see", minutes(10),
             minutes(300), [this] {
                 const auto sun = unit_.Get_Attitude_Telemetry().measured_sun_vector_bf;
                 if (sun.x == 0 && sun.y == 0 && sun.z == 0)
                     return Progress{false, "no sun"};
                 return below(degrees(velm_zavra::angle_between(sun, solar_panel)), 10, "deg");
             });
    }

    void point_to_nadir()
    {
        unit_.Start_Target_Pointing_Nadir_Mode({0, camera, forward, 0, 1000, {0.02F, 5, 0.001F, 0}});
        wait("nadir within 1 deg, which the camera needs; the spin goes into the wheels", minutes(10), minutes(60),
             [this] {
                 const auto data = unit_.Get_Target_Pointing_Operation_Data_Telemetry();
                 if (!known(attitude_known).reached)
                     return Progress{false, "attitude unknown"};
                 const double error = velm_zavra::angle_between(data.attitude_quaternion, data.target_quaternion);
                 return below(degrees(error), 1, "deg");
             });
    }

    void say(const std::string& text) const
    {
        std::printf("%7.1f min  %s\n", static_cast<double>(last_ - start_) / 60e3, text.c_str());
        std::fflush(stdout);
    }

    double rate_degps()
    {
        const auto rate = unit_.Get_Attitude_Telemetry().angular_velocity_radps;
        return degrees(std::sqrt(double{rate.x} * rate.x + double{rate.y} * rate.y + double{rate.z} * rate.z));
    }

    static std::string text(double value, const char* unit)
    {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "%.2f %s", value, unit);
        return buffer;
    }

private:
    struct Progress
    {
        bool reached;
        std::string text;
    };

    static Progress below(double value, double limit, const char* unit) { return {value < limit, text(value, unit)}; }

    Progress known(unsigned int bit)
    {
        const bool known = (telemetry().sat_main_register & bit) != 0;
        return {known, known ? "known" : "unknown"};
    }

    /// Says when the satellite enters or leaves the shadow, and when the attitude gets known or lost.
    /// @throws std::runtime_error when the unit's clock went back
    VELM_ZAVRA_API_STANDARD_TELEMETRY telemetry()
    {
        const auto now = unit_.Get_Standard_Telemetry();
        if (now.epoch_time_msec < last_)
            throw std::runtime_error("The unit's clock went back: it was reset");
        last_ = now.epoch_time_msec;
        const unsigned int changed = now.sat_main_register ^ register_;
        register_ = now.sat_main_register;
        if ((changed & eclipse) != 0)
            say((register_ & eclipse) != 0 ? "shadow" : "sunlight");
        if ((changed & attitude_known) != 0)
            say((register_ & attitude_known) != 0 ? "attitude known" : "attitude lost");
        return now;
    }

    /// Asks until the progress has been reached for so long, three times a second: each answer takes the library 0.1 s.
    void wait(const std::string& what, minutes hold, minutes time_out, const std::function<Progress()>& progress)
    {
        const auto started = telemetry().epoch_time_msec;
        unsigned long long since = 0; // when it was reached
        say("waits for " + what + (hold == minutes(0) ? "" : ", for " + std::to_string(hold.count()) + " min"));
        for (;;) {
            const auto asked = telemetry().epoch_time_msec;
            const Progress now = progress();
            if (now.reached != (since != 0)) {
                say((now.reached ? "reached: " : "left: ") + now.text);
                since = now.reached ? asked : 0;
            }
            if (now.reached && asked - since >= to_msec(hold))
                return;
            if (asked - started > to_msec(time_out))
                throw Timed_Out("not within " + std::to_string(time_out.count()) + " min: " + what + "; " + now.text);
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    }

    VELM_ZAVRA_API& unit_;
    unsigned long long start_ = 0, last_ = 0; ///< by the unit's clock
    unsigned int register_ = 0;
};

}

int main(int argc, char** argv)
try {
    if (argc != 3) {
        std::cerr << "Usage: first_orbits INI_FILE TLE_FILE" << std::endl;
        return 2;
    }
    VELM_ZAVRA_API unit;
    unit.Initialize_Device(argv[1]);
    Mission mission(unit);
    std::puts("\nMission");
    mission.set_clock();
    mission.say("turns with " + Mission::text(mission.rate_degps(), "deg/s"));
    mission.load_orbit(argv[2]);
    mission.detumble();
    mission.point_to_the_sun();
    mission.point_to_nadir();
    mission.say("the Earth is in the picture");
    return 0;
} catch (const Timed_Out& error) {
    std::cerr << error.what() << std::endl;
    return 3;
} catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
}
