#include "simulator/orbit/frames.h"
#include "simulator/satellite/eclipse.h"
#include "simulator/satellite/geomagnetic_field.h"
#include "simulator/satellite/sun.h"
#include "tests/simulator/number_table.h"

#include <Eigen/Geometry>
#include <gmock/gmock.h>

#include <cmath>
#include <numbers>
#include <stdexcept>

namespace zavra::simulator
{

namespace
{

constexpr double degree = std::numbers::pi / 180.0;
constexpr double astronomical_unit_km = 149597870.7;

}

TEST(Geomagnetic_Field, agrees_with_the_official_program)
{
    const auto rows = number_table("geomagnetism/igrf14_points.txt");
    EXPECT_EQ(rows.size(), 73U);
    for (const auto& row : rows) {
        const double radius = row[1], colatitude = row[2] * degree, longitude = row[3] * degree;
        const double sin_colatitude = std::sin(colatitude), cos_colatitude = std::cos(colatitude);
        const double sin_longitude = std::sin(longitude), cos_longitude = std::cos(longitude);
        const Eigen::Vector3d up(sin_colatitude * cos_longitude, sin_colatitude * sin_longitude, cos_colatitude);
        const Eigen::Vector3d east(-sin_longitude, cos_longitude, 0.0);
        const Eigen::Vector3d expected_nt = row[4] * up.cross(east) + row[5] * east - row[6] * up;
        const double off_nt = (Geomagnetic_Field(row[0]).at(radius * up) * 1e9 - expected_nt).norm();
        EXPECT_LT(off_nt, 1.0) << row[0] << ' ' << up.transpose();
    }
}

TEST(Geomagnetic_Field, of_degree_1_is_a_dipole_at_the_poles_too)
{
    const Eigen::Vector3d dipole_nt(-1410.3, 4545.5, -29350.0); // g11, h11, g10 in 2025
    const Geomagnetic_Field field(2025.0, 1);
    for (const Eigen::Vector3d& up :
         {Eigen::Vector3d(0, 0, 1), Eigen::Vector3d(0, 0, -1), Eigen::Vector3d(0.6, 0, 0.8)})
        EXPECT_LT((field.at(2.0 * 6371.2 * up) * 1e9 - (3.0 * dipole_nt.dot(up) * up - dipole_nt) / 8.0).norm(), 1e-9);
}

/// Whatever its coefficients, a field of a potential without sources has no divergence and no curl.
TEST(Geomagnetic_Field, of_every_degree_has_no_sources)
{
    const Eigen::Vector3d position(-1200.0, 4300.0, 5400.0);
    constexpr double step = 0.1;
    for (int highest = 1; highest <= Geomagnetic_Field::highest_degree; ++highest) {
        const Geomagnetic_Field field(2026.9, highest);
        Eigen::Matrix3d gradient;
        for (int axis = 0; axis < 3; ++axis) {
            const Eigen::Vector3d offset = step * Eigen::Vector3d::Unit(axis);
            gradient.col(axis) = (field.at(position + offset) - field.at(position - offset)) / (2.0 * step);
        }
        EXPECT_NEAR(gradient.trace() / gradient.norm(), 0.0, 1e-6) << highest;
        EXPECT_NEAR((gradient - gradient.transpose()).norm() / gradient.norm(), 0.0, 1e-6) << highest;
    }
}

TEST(Geomagnetic_Field, refuses_what_it_does_not_know)
{
    for (const double year : {2014.99, 2030.01, std::nan("")})
        EXPECT_THROW(Geomagnetic_Field{year}, std::out_of_range) << year;
    for (const int highest : {0, 14})
        EXPECT_THROW((Geomagnetic_Field{2026.0, highest}), std::out_of_range) << highest;
}

TEST(Geomagnetic_Field, decimal_year)
{
    EXPECT_DOUBLE_EQ(decimal_year({2460676.5, 0.0}), 2025.0);
    EXPECT_DOUBLE_EQ(decimal_year({2460858.5, 0.5}), 2025.5); // 02.07.2025 12:00
    EXPECT_DOUBLE_EQ(decimal_year({2461770.5, 0.0}), 2027.0 + 364.0 / 365.0);
    EXPECT_DOUBLE_EQ(decimal_year({2462136.5, 0.0}), 2028.0 + 365.0 / 366.0); // a leap year's last day
}

TEST(Sun, direction_and_distance)
{
    const auto rows = number_table("sun/sun_teme.csv");
    EXPECT_EQ(rows.size(), 10U);
    for (const auto& row : rows) {
        const Eigen::Vector3d sun = sun_position({row[0], 0.0});
        const double off_arcsec = sun.cross(Eigen::Vector3d(&row[1])).norm() / sun.norm() / degree * 3600.0;
        EXPECT_LT(off_arcsec, 40.0) << row[0];
        EXPECT_GT(sun.dot(Eigen::Vector3d(&row[1])), 0.0) << row[0];
    }
    // Meeus, Astronomical Algorithms, example 25.a: 13.10.1992 0:00.
    EXPECT_NEAR(sun_position({2448908.5, 0.0}).norm() / astronomical_unit_km, 0.99766, 3e-4);
}

TEST(Eclipse, lasts_as_long_as_geometry_says)
{
    const struct
    {
        double sun_angle, umbra_s, umbra_and_penumbra_s;
    } cases[] = {{0.0, 2136.9, 2153.7}, {60.0, 1286.4, 1333.4}};
    constexpr double radius_km = 6878.137, period_s = 5676.978, step_s = 0.1;
    for (const auto& [sun_angle, umbra_s, umbra_and_penumbra_s] : cases) {
        SCOPED_TRACE(sun_angle);
        const Eigen::Vector3d sun =
            astronomical_unit_km * Eigen::Vector3d(std::cos(sun_angle * degree), 0.0, std::sin(sun_angle * degree));
        int dark = 0, dim = 0;
        for (double t = 0.0; t < period_s; t += step_s) {
            const double angle = 2.0 * std::numbers::pi * t / period_s;
            const double fraction =
                visible_fraction_of_sun(radius_km * Eigen::Vector3d(std::cos(angle), std::sin(angle), 0.0), sun);
            dark += fraction == 0.0;
            dim += fraction < 1.0;
        }
        EXPECT_NEAR(dark * step_s, umbra_s, 2.0);
        EXPECT_NEAR(dim * step_s, umbra_and_penumbra_s, 2.0);
    }
}

TEST(Eclipse, visible_fraction_in_the_penumbra)
{
    const Eigen::Vector3d sun(astronomical_unit_km, 0.0, 0.0);
    // Half of the disc where its centre stands on the limb, but for the limb's bend and the Sun's parallax.
    const double limb = std::asin(wgs84_equatorial_radius_km / 6878.137);
    const auto at_limb = [&](double off) {
        return visible_fraction_of_sun(6878.137 * Eigen::Vector3d(-std::cos(limb + off), std::sin(limb + off), 0.0),
                                       sun);
    };
    EXPECT_NEAR(at_limb(0.0), 0.5, 0.02);
    EXPECT_NEAR(at_limb(0.002) + at_limb(-0.002), 1.0, 0.02);
    EXPECT_LT(at_limb(-0.002), at_limb(0.0));
    // Beyond the umbra's tip the Earth covers the middle of the Sun: discs of 0.18 and 0.26 degrees' radius.
    EXPECT_NEAR(visible_fraction_of_sun({-2e6, 0.0, 0.0}, sun),
                1.0 - std::pow(wgs84_equatorial_radius_km / 2e6 / (695700.0 / (astronomical_unit_km + 2e6)), 2), 1e-4);
}

}
