#include "simulator/orbit/frames.h"
#include "simulator/orbit/sgp4.h"
#include "tests/simulator/number_table.h"

using namespace zavra::simulator;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::Pointwise;

constexpr double degree = std::numbers::pi / 180.0;
const std::string line_1 = "1 00005U 58002B   00179.78495062  .00000023  00000-0  28098-4 0  4753";
const std::string line_2 = "2 00005  34.2682 348.7242 1859667 331.7664  19.3264 10.82419157413667";

/// The line with its last digit corrected.
static std::string with_checksum(std::string line)
{
    int sum = 0;
    for (const char c : line.substr(0, 68))
        sum += c == '-' ? 1 : (c >= '0' && c <= '9' ? c - '0' : 0);
    line[68] = static_cast<char>('0' + sum % 10);
    return line;
}

static std::string changed(std::string line, std::size_t column, std::string_view text)
{
    return with_checksum(line.replace(column - 1, text.size(), text));
}

static std::vector<std::string> lines_of(const std::string& file)
{
    std::ifstream stream(std::string(ZAVRA_TEST_DATA_DIR) + "/sgp4/" + file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

TEST(Sgp4, agrees_with_the_published_verification_vectors)
{
    struct Case
    {
        Sgp4 orbit;
        double stop, step, last;
    };
    std::map<unsigned int, Case> near_earth;
    std::size_t deep_space = 0, rows = 0;
    Orbit_State state{};
    const auto lines = lines_of("SGP4-VER.TLE");
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        if (line->starts_with('#'))
            continue;
        // The sets 33333 to 33335 were made by hand and have wrong checksums. Columns 70 on hold start, stop and step.
        SCOPED_TRACE(*line);
        const bool by_hand = line->starts_with("1 3333");
        const std::string first = line->substr(0, 69), second = (++line)->substr(0, 69);
        Two_Line_Elements elements{};
        ASSERT_EQ(parse_tle(by_hand ? with_checksum(first) : first, by_hand ? with_checksum(second) : second, elements),
                  Tle_Error::none);
        Case one{Sgp4(elements), 0.0, 0.0, 0.0};
        std::istringstream(line->substr(69)) >> one.last >> one.stop >> one.step;
        if (one.orbit.propagate(0.0, state) == Tle_Error::deep_space)
            ++deep_space;
        else
            near_earth.emplace(elements.satellite_number, one);
    }
    EXPECT_EQ(deep_space, 24U);

    auto current = near_earth.end();
    for (const std::string& line : lines_of("tcppver.out")) {
        SCOPED_TRACE(line);
        std::istringstream words(line);
        if (unsigned int number = 0; line.ends_with("xx")) {
            words >> number;
            current = near_earth.find(number);
        } else if (current != near_earth.end()) {
            auto& [orbit, stop, step, last] = current->second;
            Eigen::Vector3d r, v;
            words >> last >> r[0] >> r[1] >> r[2] >> v[0] >> v[1] >> v[2];
            ASSERT_TRUE(words);
            ASSERT_EQ(orbit.propagate(last, state), Tle_Error::none);
            EXPECT_LT((state.position_km - r).norm(), 1e-7);
            EXPECT_LT((state.velocity_kmps - v).norm(), 1e-8);
            ++rows;
        }
    }
    EXPECT_EQ(rows, 158U);

    std::vector<unsigned int> ends_in_error;
    for (const auto& [number, one] : near_earth)
        if (one.last + one.step < one.stop + 1e-6) {
            EXPECT_NE(one.orbit.propagate(one.last + one.step, state), Tle_Error::none);
            ends_in_error.push_back(number);
        }
    EXPECT_THAT(ends_in_error, ElementsAre(22312, 28350, 28872, 29141));
}

TEST(Sgp4, refuses_what_it_cannot_propagate)
{
    constexpr double in_1970 = -1.6e7;                                                    // minutes
    const std::string low_2 = changed(changed(line_2, 53, "16.20000000"), 27, "0000000"); // 220 km high, circular
    const std::tuple<const char*, std::string, std::string, double, Tle_Error> cases[] = {
        {"just under 225 minutes", line_1, changed(line_2, 53, " 6.41000000"), 0.0, Tle_Error::none},
        {"just over 225 minutes", line_1, changed(line_2, 53, " 6.39000000"), 0.0, Tle_Error::deep_space},
        {"below the ground", line_1, changed(line_2, 53, "17.50000000"), 0.0, Tle_Error::decayed},
        {"long after the epoch", line_1, line_2, 1e12, Tle_Error::eccentricity_out_of_range},
        {"long before the epoch", line_1, line_2, -1e12, Tle_Error::eccentricity_out_of_range},
        {"almost a parabola", line_1, changed(line_2, 27, "9999999"), 0.0, Tle_Error::semi_latus_rectum_negative},
        {"not a time", line_1, line_2, std::numeric_limits<double>::quiet_NaN(), Tle_Error::eccentricity_out_of_range},
        {"equatorial, circular", line_1, changed(changed(line_2, 9, "  0.0000"), 27, "0000000"), 9.0, Tle_Error::none},
        {"equatorial, retrograde", line_1, changed(line_2, 9, "180.0000"), 9.0, Tle_Error::none},
        {"in 1970, hardly any drag since", line_1, line_2, in_1970, Tle_Error::none},
        {"in 1970, drag since", line_1, low_2, in_1970, Tle_Error::decayed},
        {"in 1970, drag since, not high-order", line_1, changed(low_2, 27, "0010000"), in_1970,
         Tle_Error::out_of_reach},
    };
    for (const auto& [what, first, second, minutes, expected] : cases) {
        SCOPED_TRACE(what);
        Two_Line_Elements elements{};
        ASSERT_EQ(parse_tle(first, second, elements), Tle_Error::none);
        Orbit_State state{};
        EXPECT_EQ(Sgp4(elements).propagate(minutes, state), expected);
        const double radius = state.position_km.norm();
        EXPECT_TRUE(expected == Tle_Error::none ? radius > 6378.0 && radius < 16000.0 : radius == 0.0) << radius;
    }
}

TEST(Tle, reads_every_field)
{
    Two_Line_Elements e{};
    ASSERT_EQ(parse_tle(line_1, line_2, e), Tle_Error::none);
    EXPECT_EQ(std::tuple(e.satellite_number, e.revolution_number, e.epoch_year, e.epoch_day, e.epoch.day),
              std::tuple(5U, 41366U, 2000, 179.78495062, 2451722.5));
    EXPECT_THAT(
        (std::array{e.epoch.fraction, e.mean_motion * 1440.0 / 360.0 / degree, e.eccentricity, e.inclination / degree,
                    e.right_ascension / degree, e.argument_of_perigee / degree, e.mean_anomaly / degree, e.b_star}),
        Pointwise(DoubleNear(1e-11),
                  std::array{0.78495062, 10.82419157, 0.1859667, 34.2682, 348.7242, 331.7664, 19.3264, 0.28098e-4}));

    ASSERT_EQ(parse_tle(changed(changed(changed(line_1, 3, "Z9999"), 19, "57365.5"), 54, "-13525+1"),
                        changed(line_2, 3, "Z9999"), e),
              Tle_Error::none);
    EXPECT_EQ(std::tuple(e.satellite_number, e.epoch_year, e.epoch.day), std::tuple(339999U, 1957, 2436203.5));
    EXPECT_DOUBLE_EQ(e.b_star, -1.3525);
}

TEST(Tle, names_what_is_wrong_and_keeps_the_elements)
{
    const std::tuple<const char*, std::string, std::string, Tle_Error, int> cases[] = {
        {"short line 1", line_1.substr(0, 68), line_2, Tle_Error::line_1_length, 1},
        {"no blank after the line number", changed(line_1, 2, "1"), line_2, Tle_Error::line_1_number, 2},
        {"changed digit", line_1.substr(0, 68) + "4", line_2, Tle_Error::line_1_checksum, 3},
        {"letter in the epoch", changed(line_1, 22, "O"), line_2, Tle_Error::line_1_field, 4},
        {"blank year", changed(line_1, 19, "  "), line_2, Tle_Error::line_1_field, 4},
        {"day 366 of 2001", changed(line_1, 19, "01366.0"), line_2, Tle_Error::line_1_field, 4},
        {"epoch too large for an integer", changed(line_1, 21, "999999999999"), line_2, Tle_Error::line_1_field, 4},
        {"derivative not a number", changed(line_1, 34, "       nan"), line_2, Tle_Error::line_1_field, 4},
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
    for (const auto& [what, first, second, expected, number] : cases) {
        SCOPED_TRACE(what);
        Two_Line_Elements elements{};
        EXPECT_EQ(parse_tle(first, second, elements), expected);
        EXPECT_EQ(static_cast<int>(expected), number);
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

TEST(Frames, teme_to_earth_fixed_to_geodetic_and_back)
{
    const auto rows = number_table("frames/teme_to_earth_fixed.csv");
    EXPECT_EQ(rows.size(), 10U);
    for (const auto& row : rows) {
        SCOPED_TRACE(row[0]);
        const Julian_Date ut1{row[0], row[1] / 86400.0};
        const Eigen::Vector3d teme(&row[2]), earth_fixed(&row[5]);
        const Eigen::Matrix3d rotation = teme_to_earth_fixed(ut1);
        EXPECT_LT((rotation * teme - earth_fixed).norm(), 1e-3);
        EXPECT_LT((rotation.transpose() * earth_fixed - teme).norm(), 1e-3);
        const Geodetic_Position position = geodetic_position(earth_fixed);
        EXPECT_NEAR(position.longitude_rad / degree, row[8], 1e-8);
        EXPECT_NEAR(position.latitude_rad / degree, row[9], 1e-8);
        EXPECT_NEAR(position.altitude_km, row[10], 1e-6);
        EXPECT_LT((earth_fixed_position(position) - earth_fixed).norm(), 1e-6);
    }
}

TEST(Frames, geodetic_position)
{
    const std::tuple<const char*, Eigen::Vector3d, double, double, double> cases[] = {
        {"equator, west", {0.0, -6378.137, 0.0}, 0.0, -90.0, 0.0},
        {"south pole: the semi-minor axis of WGS 84", {0.0, 0.0, -6356.752314}, -90.0, 0.0, 0.0},
    };
    for (const auto& [what, earth_fixed_km, latitude, longitude, altitude_km] : cases) {
        SCOPED_TRACE(what);
        const Geodetic_Position position = geodetic_position(earth_fixed_km);
        EXPECT_NEAR(position.latitude_rad / degree, latitude, 1e-6);
        EXPECT_NEAR(position.longitude_rad / degree, longitude, 1e-6);
        EXPECT_NEAR(position.altitude_km, altitude_km, 1e-6);
        EXPECT_LT((earth_fixed_position(position) - earth_fixed_km).norm(), 1e-6);
    }
}
