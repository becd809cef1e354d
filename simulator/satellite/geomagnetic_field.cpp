#include "geomagnetic_field.h"

#include "geomagnetic_coefficients.h"

#include <chrono>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace zavra::simulator
{

namespace
{

constexpr double reference_radius_km = 6371.2;

double in_year(const std::array<double, 4>& values, double year)
{
    const auto [in_2015, in_2020, in_2025, per_year] = values;
    if (year < 2020.0)
        return in_2015 + (in_2020 - in_2015) * (year - 2015.0) / 5.0;
    if (year < 2025.0)
        return in_2020 + (in_2025 - in_2020) * (year - 2020.0) / 5.0;
    return in_2025 + per_year * (year - 2025.0);
}

double factorial(int n)
{
    return n > 1 ? n * factorial(n - 1) : 1.0;
}

/// The Legendre function P_nm over its multiple whose highest power of sin(latitude) has the factor 1: (2n-1)!! /
/// (n-m)!
double leading_factor(int n, int m)
{
    return factorial(2 * n) / (std::ldexp(factorial(n), n) * factorial(n - m));
}

/// The factor that makes Schmidt's semi-normalised function of P_nm.
double schmidt_factor(int n, int m)
{
    return std::sqrt((m == 0 ? 1.0 : 2.0) * factorial(n - m) / factorial(n + m));
}

}

// The potential is a sum of solid harmonics V + iW = (a/r)^(n+1) P_nm(sin latitude) exp(i m longitude). Their gradients
// are harmonics of the next degree (Cunningham 1970; Montenbruck, Gill, "Satellite Orbits", section 3.2.4), so that the
// field is a sum of harmonics, too, whose factors do not depend on the position. V and W are kept divided by
// leading_factor(): then the recursion from degree to degree has one factor and the one from order to order has none.
Geomagnetic_Field::Geomagnetic_Field(double decimal_year, int degree) : degree_(degree)
{
    if (!(decimal_year >= first_year && decimal_year <= last_year))
        throw std::out_of_range("the geomagnetic field is known from 2015 to 2030 only");
    if (degree < 1 || degree > highest_degree)
        throw std::out_of_range("the geomagnetic field has degrees 1 to 13");

    const auto index = [](int n, int m) { return static_cast<std::size_t>(n * (n + 1) / 2 + m); };
    const Eigen::Array2d none = Eigen::Array2d::Zero();
    harmonics_.resize(index(degree + 2, 0), {none, none, none, 0.0});
    for (int n = 0; n <= degree + 1; ++n) {
        for (int m = 0; m <= n; ++m)
            harmonics_[index(n, m)].recursion = (n * n - m * m) / (4.0 * n * n - 1.0);
    }

    for (const Gauss_Coefficients& row : igrf14) {
        const int n = row.degree, m = row.order;
        if (n > degree)
            break;
        constexpr double tesla = 1e-9;
        const double g = in_year(row.g, decimal_year) * schmidt_factor(n, m) * tesla;
        const double h = in_year(row.h, decimal_year) * schmidt_factor(n, m) * tesla;

        const double half = m == 0 ? 1.0 : 0.5;
        Harmonic& above = harmonics_[index(n + 1, m + 1)];
        above.x += half * leading_factor(n + 1, m + 1) * Eigen::Array2d(g, h);
        above.y += half * leading_factor(n + 1, m + 1) * Eigen::Array2d(-h, g);
        Harmonic& same = harmonics_[index(n + 1, m)];
        same.z += (n - m + 1) * leading_factor(n + 1, m) * Eigen::Array2d(g, h);
        if (m > 0) {
            Harmonic& below = harmonics_[index(n + 1, m - 1)];
            const double factor = 0.5 * (n - m + 1) * (n - m + 2) * leading_factor(n + 1, m - 1);
            below.x -= factor * Eigen::Array2d(g, h);
            below.y -= factor * Eigen::Array2d(h, -g);
        }
    }
}

Eigen::Vector3d Geomagnetic_Field::at(const Eigen::Vector3d& earth_fixed_km) const
{
    const double r_squared = earth_fixed_km.squaredNorm();
    const Eigen::Vector3d scaled = earth_fixed_km * (reference_radius_km / r_squared);
    const double a_over_r_squared = reference_radius_km * reference_radius_km / r_squared;

    // By degree, not by order: neighbours do not wait for each other then, which halves the time.
    std::array<Eigen::Array2d, highest_degree + 3> one, other;
    Eigen::Array2d *here = one.data(), *below = other.data();
    here[0] = {std::sqrt(a_over_r_squared), 0.0};
    Eigen::Array2d x = Eigen::Array2d::Zero(), y = x, z = x;
    const Harmonic* harmonic = harmonics_.data();
    for (int n = 0; n <= degree_ + 1; ++n) {
        below[n] = Eigen::Array2d::Zero();
        for (int m = 0; m <= n; ++m, ++harmonic) {
            x += harmonic->x * here[m];
            y += harmonic->y * here[m];
            z += harmonic->z * here[m];
            below[m] = scaled.z() * here[m] - harmonic->recursion * a_over_r_squared * below[m];
        }
        std::swap(here, below);
        here[n + 1] = {scaled.x() * below[n][0] - scaled.y() * below[n][1],
                       scaled.x() * below[n][1] + scaled.y() * below[n][0]};
    }
    return {x.sum(), y.sum(), z.sum()};
}

double decimal_year(const Julian_Date& date)
{
    using namespace std::chrono;
    const double days_since_1970 = (date.day - julian_1970) + date.fraction;
    const sys_days day{days{static_cast<int>(std::floor(days_since_1970))}};
    const year_month_day calendar{day};
    const sys_days start = calendar.year() / January / 1, end = (calendar.year() + years(1)) / January / 1;
    const double days_in_year = static_cast<double>((end - start).count());
    return static_cast<int>(calendar.year()) +
           (days_since_1970 - static_cast<double>(start.time_since_epoch().count())) / days_in_year;
}

}
