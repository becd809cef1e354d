#include "simulator/orbit/frames.h"
#include "simulator/orbit/sgp4.h"

#include <gmock/gmock.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <map>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

namespace zavra
{

namespace
{

using testing::DoubleNear;
using testing::ElementsAre;
using testing::Pointwise;

constexpr double degree = std::numbers::pi / 180.0;
const std::string line_1 = "1 00005U 58002B   00179.78495062  .00000023  00000-0  28098-4 0  4753";
const std::string line_2 = "2 00005  34.2682 348.7242 1859667 331.7664  19.3264 10.82419157413667";

/// The line with its last digit corrected.
std::string with_checksum(std::string line)
{
    int sum = 0;
    for (const char c : line.substr(0, 68)) {
        sum += c == '-' ? 1 : (c >= '0' && c <= '9' ? c - '0' : 0);
    }
    line[68] = static_cast<char>('0' + sum % 10);
    return line;
}

std::string changed(std::string line, std::size_t column, std::string_view text)
{
    return with_checksum(line.replace(column - 1, text.size(), text));
}

std::vector<std::string> lines_of(const std::string& file)
{
    std::ifstream stream(std::string(ZAVRA_TEST_DATA_DIR) + "/sgp4/" + file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

struct Row
{
    double minutes;
    Orbit_State state;
};

/// The published ephemerides by the number that heads them.
std::map<unsigned int, std::vector<Row>> published_ephemerides()
{
    std::map<unsigned int, std::vector<Row>> all;
    std::vector<Row>* rows = nullptr;
    for (const std::string& line : lines_of("tcppver.out")) {
        std::istringstream words(line);
        if (line.ends_with("xx")) {
            unsigned int number = 0;
            words >> number;
            rows = &all[number];
            continue;
        }
        Row row{};
        auto& [r, v] = row.state;
        words >> row.minutes >> r[0] >> r[1] >> r[2] >> v[0] >> v[1] >> v[2];
        EXPECT_TRUE(words) << line;
        rows->push_back(row);
    }
    return all;
}

}

TEST(Sgp4, agrees_with_the_published_verification_vectors)
{
    auto ephemerides = published_ephemerides();
    const auto lines = lines_of("SGP4-VER.TLE");
    std::size_t rows = 0;
    std::vector<unsigned int> near_earth, ends_in_error;
    int deep_space = 0;
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        if (line->starts_with('#')) {
            continue;
        }
        // The sets 33333 to 33335 were made by hand and have wrong checksums. Columns 70 on hold start, stop and step.
        SCOPED_TRACE(*line);
        std::string first = line->substr(0, 69), second = (++line)->substr(0, 69);
        if (first.starts_with("1 3333")) {
            first = with_checksum(first);
            second = with_checksum(second);
        }
        Two_Line_Elements elements{};
        ASSERT_EQ(parse_tle(first, second, elements), Tle_Error::none);
        const Sgp4 orbit(elements);
        Orbit_State state{};
        if (orbit.propagate(0.0, state) == Tle_Error::deep_space) {
            ++deep_space;
            continue;
        }
        near_earth.push_back(elements.satellite_number);

        const std::vector<Row>& expected = ephemerides[elements.satellite_number];
        ASSERT_FALSE(expected.empty());
        for (const Row& row : expected) {
            SCOPED_TRACE(row.minutes);
            ASSERT_EQ(orbit.propagate(row.minutes, state), Tle_Error::none);
            EXPECT_THAT(state.position_km, Pointwise(DoubleNear(1e-7), row.state.position_km));
            EXPECT_THAT(state.velocity_kmps, Pointwise(DoubleNear(1e-8), row.state.velocity_kmps));
            ++rows;
        }
        double start = 0.0, stop = 0.0, step = 0.0;
        std::istringstream(line->substr(69)) >> start >> stop >> step;
        if (const double next = expected.back().minutes + step; next < stop + 1e-6) {
            EXPECT_NE(orbit.propagate(next, state), Tle_Error::none);
            ends_in_error.push_back(elements.satellite_number);
        }
    }
    EXPECT_THAT(near_earth, ElementsAre(5, 6251, 22312, 28057, 28350, 28872, 29141, 29238, 88888));
    EXPECT_THAT(ends_in_error, ElementsAre(22312, 28350, 28872, 29141));
    EXPECT_EQ(deep_space, 24);
    EXPECT_EQ(rows, 158U);
}

TEST(Sgp4, refuses_what_it_cannot_propagate)
{
    const struct
    {
        const char* what;
        std::string line_1, line_2;
        double minutes;
        Tle_Error expected;
    } cases[] = {
        {"just under 225 minutes", line_1, changed(line_2, 53, " 6.41000000"), 0.0, Tle_Error::none},
        {"just over 225 minutes", line_1, changed(line_2, 53, " 6.39000000"), 0.0, Tle_Error::deep_space},
        {"below the ground", line_1, changed(line_2, 53, "17.50000000"), 0.0, Tle_Error::decayed},
        {"long after the epoch", line_1, line_2, 1e12, Tle_Error::eccentricity_out_of_range},
        {"long before the epoch", line_1, line_2, -1e12, Tle_Error::eccentricity_out_of_range},
        {"almost a parabola", line_1, changed(line_2, 27, "9999999"), 0.0, Tle_Error::semi_latus_rectum_negative},
        {"not a time", line_1, line_2, std::numeric_limits<double>::quiet_NaN(), Tle_Error::eccentricity_out_of_range},
        {"equatorial, circular", line_1, changed(changed(line_2, 9, "  0.0000"), 27, "0000000"), 9.0, Tle_Error::none},
        {"equatorial, retrograde", line_1, changed(line_2, 9, "180.0000"), 9.0, Tle_Error::none},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Two_Line_Elements elements{};
        ASSERT_EQ(parse_tle(c.line_1, c.line_2, elements), Tle_Error::none);
        Orbit_State state{};
        EXPECT_EQ(Sgp4(elements).propagate(c.minutes, state), c.expected);
        const double radius = std::hypot(state.position_km[0], state.position_km[1], state.position_km[2]);
        if (c.expected == Tle_Error::none) {
            EXPECT_GT(radius, 6378.0);
            EXPECT_LT(radius, 16000.0);
        } else {
            EXPECT_EQ(radius, 0.0);
        }
    }
}

TEST(Tle, reads_every_field)
{
    Two_Line_Elements e{};
    ASSERT_EQ(parse_tle(line_1, line_2, e), Tle_Error::none);
    EXPECT_EQ(e.satellite_number, 5U);
    EXPECT_EQ(e.epoch_year, 2000);
    EXPECT_EQ(e.epoch_day, 179.78495062);
    EXPECT_EQ(e.epoch.day, 2451722.5);
    EXPECT_NEAR(e.epoch.fraction, 0.78495062, 1e-12);
    EXPECT_DOUBLE_EQ(e.mean_motion, 10.82419157 * 360.0 * degree / 1440.0);
    EXPECT_EQ(e.eccentricity, 0.1859667);
    EXPECT_DOUBLE_EQ(e.inclination, 34.2682 * degree);
    EXPECT_DOUBLE_EQ(e.right_ascension, 348.7242 * degree);
    EXPECT_DOUBLE_EQ(e.argument_of_perigee, 331.7664 * degree);
    EXPECT_DOUBLE_EQ(e.mean_anomaly, 19.3264 * degree);
    EXPECT_DOUBLE_EQ(e.b_star, 0.28098e-4);
    EXPECT_EQ(e.revolution_number, 41366U);

    ASSERT_EQ(parse_tle(changed(changed(changed(line_1, 3, "Z9999"), 19, "57365.5"), 54, "-13525+1"),
                        changed(line_2, 3, "Z9999"), e),
              Tle_Error::none);
    EXPECT_EQ(e.satellite_number, 339999U);
    EXPECT_EQ(e.epoch_year, 1957);
    EXPECT_EQ(e.epoch.day, 2436203.5); // 31.12.1957
    EXPECT_DOUBLE_EQ(e.b_star, -1.3525);
}

TEST(Tle, names_what_is_wrong_and_keeps_the_elements)
{
    const struct
    {
        const char* what;
        std::string line_1, line_2;
        Tle_Error expected;
        int number;
    } cases[] = {
        {"short line 1", line_1.substr(0, 68), line_2, Tle_Error::line_1_length, 1},
        {"long line 1", line_1 + " ", line_2, Tle_Error::line_1_length, 1},
        {"lines swapped", line_2, line_1, Tle_Error::line_1_number, 2},
        {"no blank after the line number", changed(line_1, 2, "1"), line_2, Tle_Error::line_1_number, 2},
        {"changed digit", line_1.substr(0, 68) + "4", line_2, Tle_Error::line_1_checksum, 3},
        {"letter in the epoch", changed(line_1, 22, "O"), line_2, Tle_Error::line_1_field, 4},
        {"blank year", changed(line_1, 19, "  "), line_2, Tle_Error::line_1_field, 4},
        {"day 366 of 2001", changed(line_1, 19, "01366.0"), line_2, Tle_Error::line_1_field, 4},
        {"epoch too large for an integer", changed(line_1, 21, "999999999999"), line_2, Tle_Error::line_1_field, 4},
        {"derivative not a number", changed(line_1, 34, "       nan"), line_2, Tle_Error::line_1_field, 4},
        {"letter in the drag term", changed(line_1, 56, "e"), line_2, Tle_Error::line_1_field, 4},
        {"drag term without exponent", changed(line_1, 60, "  "), line_2, Tle_Error::line_1_field, 4},
        {"letter I in the satellite number", changed(line_1, 3, "I"), line_2, Tle_Error::line_1_field, 4},
        {"short line 2", line_1, line_2.substr(0, 68), Tle_Error::line_2_length, 5},
        {"line 1 twice", line_1, line_1, Tle_Error::line_2_number, 6},
        {"checksum", line_1, line_2.substr(0, 68) + "8", Tle_Error::line_2_checksum, 7},
        {"not a number", line_1, changed(line_2, 9, "     nan"), Tle_Error::line_2_field, 8},
        {"inclination over 180", line_1, changed(line_2, 9, "180.0001"), Tle_Error::line_2_field, 8},
        {"sign in the eccentricity", line_1, changed(line_2, 27, "-"), Tle_Error::line_2_field, 8},
        {"no mean motion", line_1, changed(line_2, 53, " 0.00000000"), Tle_Error::line_2_field, 8},
        {"two satellites", line_1, changed(line_2, 3, "00006"), Tle_Error::satellite_numbers_differ, 9},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Two_Line_Elements elements{};
        EXPECT_EQ(parse_tle(c.line_1, c.line_2, elements), c.expected);
        EXPECT_EQ(static_cast<int>(c.expected), c.number);
        EXPECT_EQ(elements.mean_motion, 0.0);
    }
}

TEST(Frames, julian_date_and_sidereal_time)
{
    // Meeus, Astronomical Algorithms, examples 12.a and 12.b: 10.04.1987 0:00 and 19:21 UT.
    const Julian_Date midnight = julian_date(545011200000ULL);
    const Julian_Date evening = julian_date(545011200000ULL + 69660000ULL);
    EXPECT_EQ(midnight.value(), 2446895.5);
    EXPECT_NEAR(evening.fraction, 0.80625, 1e-12);
    EXPECT_DOUBLE_EQ(minutes_between(midnight, evening), 1161.0);
    EXPECT_NEAR(greenwich_mean_sidereal_time(midnight) / degree, 15.0 * (13.0 + 10.0 / 60.0 + 46.3668 / 3600.0), 1e-6);
    EXPECT_NEAR(greenwich_mean_sidereal_time(evening) / degree, 128.7378734, 1e-6);
}

TEST(Frames, earth_fixed_position)
{
    // AIAA 2006-6753, appendix C: 06.04.2004 07:51:28.386009 UTC, UT1 - UTC = -0.4399619 s.
    const Julian_Date ut1{2453101.5, (7.0 * 3600.0 + 51.0 * 60.0 + 28.386009 - 0.4399619) / 86400.0};
    EXPECT_THAT(teme_to_earth_fixed({5094.18016210, 6127.64465950, 6380.34453270}, ut1),
                Pointwise(DoubleNear(1e-5), Orbit_Vector{-1033.47503130, 7901.30558560, 6380.34453270}));
}

TEST(Frames, geodetic_position)
{
    const struct
    {
        const char* what;
        Orbit_Vector position;
        double latitude, longitude, altitude;
    } cases[] = {
        {"Vallado, example 3-3", {6524.834, 6862.875, 6448.296}, 34.352496, 46.4464, 5085.22},
        {"equator, west", {0.0, -6378.137, 0.0}, 0.0, -90.0, 0.0},
        {"south pole: the semi-minor axis of WGS 84", {0.0, 0.0, -6356.752314}, -90.0, 0.0, 0.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Geodetic_Position position = geodetic_position(c.position);
        EXPECT_NEAR(position.latitude_rad / degree, c.latitude, 1e-6);
        EXPECT_NEAR(position.longitude_rad / degree, c.longitude, 1e-4);
        EXPECT_NEAR(position.altitude_km, c.altitude, 5e-3);
    }
}

TEST(Frames, sun_direction)
{
    // Meeus, Astronomical Algorithms, example 25.a: 13.10.1992 0:00, right ascension 198.38083, declination -7.78507.
    const Orbit_Vector sun = sun_direction({2448908.5, 0.0});
    EXPECT_NEAR(std::atan2(sun[1], sun[0]) / degree, 198.38083 - 360.0, 0.01);
    EXPECT_NEAR(std::asin(sun[2]) / degree, -7.78507, 0.01);
    EXPECT_NEAR(std::hypot(sun[0], sun[1], sun[2]), 1.0, 1e-12);
}

}
