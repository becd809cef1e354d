#include "report.h"

#include <cmath>

namespace zavra::simulator
{

namespace
{

// For six hours, some 1 MB of data.
constexpr std::size_t most_buckets = 2048;
constexpr std::size_t most_attitudes = 16384;
constexpr std::size_t most_places = 1024;
constexpr std::size_t most_events = 2000;

constexpr int time_digits = 9;

/// Curves are of the columns from here on, and of what follows from them.
constexpr std::size_t first_curve = column("q_1");
constexpr std::size_t recorded_curves = record_columns.size() - first_curve;
constexpr std::array<std::string_view, 2> derived_curves{"angular_velocity_radps", "estimation_error_rad"};
constexpr std::size_t number_of_curves = recorded_curves + derived_curves.size();

/// "name":[1,2,3], of at least one number
void append_list(std::string& text, std::string_view name, std::span<const double> numbers, int digits)
{
    ((text += '"') += name) += "\":[";
    for (const double number : numbers) {
        append_json(text, number, digits);
        text += ',';
    }
    text.back() = ']';
}

void append_poses(std::string& text, std::string_view name, const Thinned_Poses& poses, int digits)
{
    ((text += ",\"") += name) += "\":[";
    for (const auto& row : poses.rows())
        for (std::size_t i = 0; i < row.size(); ++i) {
            append_json(text, row[i], i == 0 ? time_digits : digits);
            text += ',';
        }
    text.back() = ']';
}

Json numbers(const Eigen::Vector3d& vector)
{
    return {vector.x(), vector.y(), vector.z()};
}

}

Report::Report(Origin origin, const Actuator_Limits& limits)
    : origin_(std::move(origin)),
      summary_(limits),
      curves_(number_of_curves, most_buckets),
      attitudes_(most_attitudes),
      places_(most_places)
{
}

void Report::add(const Sample& sample)
{
    const double time = sample[column("time_s")];
    if (!begun_)
        start_epoch_msec_ = sample[column("epoch_time_msec")] - 1000 * time;
    begun_ = true;
    summary_.add(sample);

    std::array<double, number_of_curves> row;
    std::copy(sample.begin() + first_curve, sample.end(), row.begin());
    row[recorded_curves] = vector_of(sample, column("angular_velocity_x_radps")).norm();
    row[recorded_curves + 1] = estimation_error_rad(sample);
    curves_.add(time, row);

    const auto attitude = quaternion_of(sample, column("q_1"));
    if (attitudes_.wants())
        attitudes_.add({time, attitude.x(), attitude.y(), attitude.z(), attitude.w()});
    if (places_.wants()) {
        const Eigen::Matrix3d to_inertial = attitude.toRotationMatrix();
        std::vector<double> place{time};
        for (const Eigen::Vector3d& vector :
             {vector_of(sample, column("position_x_km")), vector_of(sample, column("velocity_x_kmps")),
              Eigen::Vector3d(to_inertial * vector_of(sample, column("magnetic_field_x_t"))),
              Eigen::Vector3d(to_inertial * vector_of(sample, column("sun_vector_x")))})
            place.insert(place.end(), vector.begin(), vector.end());
        places_.add(std::move(place));
    }
    add_shadow(sample);
}

void Report::add_shadow(const Sample& sample)
{
    const bool dark = sample[column("sunlight")] < 0.5;
    const double time = sample[column("time_s")];
    if (dark && !in_shadow_)
        shadows_.push_back({time, time});
    if (dark)
        shadows_.back().until_s = time;
    in_shadow_ = dark;
}

void Report::add_event(double time_s, const std::string& kind, const std::string& text)
{
    if (events_.size() == most_events)
        ++events_left_out_;
    else
        events_.push_back({{"time_s", time_s}, {"kind", kind}, {"text", text}});
}

std::string Report::data(const Json& live) const
{
    Json about{{"title", origin_.title},
               {"start_epoch_msec", start_epoch_msec_},
               {"command_line", origin_.command_line},
               {"files", Json::array()},
               {"caught_radps", Summary::caught_radps},
               {"settled_rad", Summary::settled_rad},
               {"hold_s", Settling::hold_s},
               {"summary", summary_.to_json()},
               {"shadows", Json::array()},
               {"events", events_},
               {"events_left_out", events_left_out_},
               {"mode_names", Modes::mode_names},
               {"live", live}};
    for (const auto& [name, text] : origin_.files)
        about["files"].push_back({{"name", name}, {"text", text}});
    for (const Interval& shadow : shadows_)
        about["shadows"].push_back({shadow.from_s, shadow.until_s});
    if (const auto& satellite = origin_.satellite)
        about["satellite"] = {{"inertia_kgm2", numbers(satellite->inertia_kgm2.diagonal())},
                              {"line_of_sight", numbers(satellite->sensors.star_tracker.axis)}};

    std::string text = in_script(about);
    text.back() = ',';
    append_list(text, "time_s", curves_.times(), time_digits);
    text += ",\"curves\":{";
    for (std::size_t i = 0; i < number_of_curves; ++i) {
        if (const auto values = curves_.values(i); !values.empty()) {
            append_list(text,
                        i < recorded_curves ? record_columns[first_curve + i] : derived_curves[i - recorded_curves],
                        values, 5);
            text += ',';
        }
    }
    if (text.back() == ',')
        text.pop_back();
    text += '}';
    append_poses(text, "attitudes", attitudes_, 4);
    append_poses(text, "places", places_, 5);
    return text + '}';
}

std::string Report::html(const Json& live) const
{
    return page_with(report_page, data(live));
}

std::string page_with(std::string_view page, const std::string& data)
{
    constexpr std::string_view mark = "@data@";
    const std::size_t place = page.find(mark);
    return std::string(page.substr(0, place)) + data + std::string(page.substr(place + mark.size()));
}

std::string in_script(const Json& value)
{
    std::string text;
    for (const char c : json::shown(value))
        c == '<' ? text += "\\u003c" : text += c;
    return text;
}

}
