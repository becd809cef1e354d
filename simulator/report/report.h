#pragma once

#include "summary.h"
#include "thinning.h"

#include <string>
#include <string_view>
#include <vector>

namespace zavra::simulator
{

/// A page of curves, a moving picture and tables of a satellite's flight: one HTML file that needs nothing else.
class Report
{
public:
    /// What a run is repeated from. What is empty is not known.
    struct Origin
    {
        std::string title{};
        std::string command_line{};
        std::vector<std::pair<std::string, std::string>> files{}; ///< Their names, and what is in them
        std::optional<Satellite_Settings> satellite{};
    };

    explicit Report(Origin origin, const Actuator_Limits& limits = {});

    /// In order of time.
    void add(const Sample& sample);

    /// Something that happened, at a time in seconds since the start: a scenario's event, or a command on the bus.
    /// @param kind  "event", "command", "fault" or "refused"
    void add_event(double time_s, const std::string& kind, const std::string& text);

    const Summary& summary() const { return summary_; }

    /// The page.
    /// @param live  what it needs to go on with the flight; null when that is over
    std::string html(const Json& live = {}) const;

private:
    struct Interval
    {
        double from_s, until_s;
    };

    void add_shadow(const Sample& sample);
    std::string data(const Json& live) const;

    Origin origin_;
    Summary summary_;
    Thinned_Curves curves_;
    Thinned_Poses attitudes_, places_;
    std::vector<Interval> shadows_;
    bool in_shadow_ = false;
    Json events_ = Json::array();
    std::size_t events_left_out_ = 0;
    double start_epoch_msec_ = 0;
    bool begun_ = false;
};

/// The pages around their data, as the build put them together.
extern const std::string_view report_page;
extern const std::string_view campaign_page;

std::string page_with(std::string_view page, const std::string& data);

/// As text that may stand in a script element.
std::string in_script(const Json& value);

}
