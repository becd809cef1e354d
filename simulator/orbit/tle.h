#pragma once

#include "julian_date.h"

#include <string_view>

namespace zavra::simulator
{

/// Why an element set, or the orbit it describes at a given time, is refused. The numbers are the simulated unit's
/// response codes to a new element set: 1 to 9 concern the text, 10 to 14 the orbit.
enum class Tle_Error : unsigned char {
    none = 0,
    line_1_length = 1,               ///< Line 1 does not have 69 characters
    line_1_number = 2,               ///< Line 1 does not start with "1 "
    line_1_checksum = 3,             ///< The last digit of line 1 is not its checksum
    line_1_field = 4,                ///< Line 1 has an unreadable number, or an epoch day that its year does not have
    line_2_length = 5,               ///< Line 2 does not have 69 characters
    line_2_number = 6,               ///< Line 2 does not start with "2 "
    line_2_checksum = 7,             ///< The last digit of line 2 is not its checksum
    line_2_field = 8,                ///< Line 2 has an unreadable number, or one outside its range
    satellite_numbers_differ = 9,    ///< The lines belong to different satellites
    deep_space = 10,                 ///< The period is 225 minutes or more; only near-Earth orbits are propagated
    decayed = 11,                    ///< The satellite is below the Earth's equatorial radius, or its mean orbit is
    eccentricity_out_of_range = 12,  ///< Drag has driven the eccentricity below 0 or to 1 and above
    semi_latus_rectum_negative = 13, ///< The long-period terms leave no ellipse
    out_of_reach = 14,               ///< So far from the epoch that the drag terms mean nothing
};

/// A short English description of the error.
const char* to_string(Tle_Error error);

/// Mean elements of a two-line element set. Angles in rad.
struct Two_Line_Elements
{
    unsigned int satellite_number; ///< A letter in the first place counts as 10 (A) to 33 (Z), without I and O
    int epoch_year;                ///< 1957 to 2056
    double epoch_day;              ///< Day of the year, from 1.0
    Julian_Date epoch;             ///< The same moment (UTC)
    double mean_motion;            ///< Kozai mean motion, rad/min
    double eccentricity;
    double inclination;
    double right_ascension; ///< Of the ascending node
    double argument_of_perigee;
    double mean_anomaly;
    double b_star; ///< Drag term, 1/Earth radii
    unsigned int revolution_number;

    bool operator==(const Two_Line_Elements&) const = default;
};

/// Reads the two lines, of exactly 69 characters each. `elements` is written only when the result is `none`; the first
/// error found is returned, line 1 before line 2.
Tle_Error parse_tle(std::string_view line_1, std::string_view line_2, Two_Line_Elements& elements);

}
