#include "sgp4.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zavra::simulator
{

namespace
{

constexpr double two_pi = 2.0 * std::numbers::pi;

// WGS-72
constexpr double earth_radius_km = 6378.135;
constexpr double mu_km3ps2 = 398600.8;
constexpr double j2 = 0.001082616;
constexpr double j3 = -0.00000253881;
constexpr double j4 = -0.00000165597;

/// Square root of the gravitational parameter, in Earth radii^1.5 per minute.
const double k_e = 60.0 * std::sqrt(mu_km3ps2 / (earth_radius_km * earth_radius_km * earth_radius_km));

constexpr double deep_space_period_min = 225.0;
constexpr double simple_drag_perigee_km = 220.0;
/// Below it, terms that are divided by the eccentricity are left out.
constexpr double small_eccentricity = 1e-4;

double square(double x)
{
    return x * x;
}
double cube(double x)
{
    return x * x * x;
}

double semi_major_axis_of(double mean_motion)
{
    return std::cbrt(square(k_e / mean_motion));
}

/// Kozai's mean motion includes a first-order secular term of J2; the theory starts from Brouwer's, without it.
double brouwer_mean_motion(const Two_Line_Elements& kozai)
{
    const double beta = std::sqrt(1.0 - square(kozai.eccentricity));
    const double bulge = 0.75 * j2 * (3.0 * square(std::cos(kozai.inclination)) - 1.0) / cube(beta);
    const double a_1 = semi_major_axis_of(kozai.mean_motion);
    const double delta_1 = bulge / square(a_1);
    const double a_0 = a_1 * (1.0 - delta_1 * (1.0 / 3.0 + delta_1 * (1.0 + 134.0 / 81.0 * delta_1)));
    return kozai.mean_motion / (1.0 + bulge / square(a_0));
}

/// Lower boundary s of the modelled atmosphere: 78 km, less for satellites that dip into it.
double atmosphere_boundary_km(double perigee_km)
{
    return perigee_km >= 156.0 ? 78.0 : std::max(perigee_km - 78.0, 20.0);
}

/// Solves Kepler's equation in the form U = E + a_yn cos E - a_xn sin E for the eccentric longitude E.
double eccentric_longitude(double u, double a_xn, double a_yn)
{
    constexpr int most_steps = 10;
    constexpr double tolerance = 1e-12;
    constexpr double longest_step = 0.95;
    double e = u;
    for (int i = 0; i < most_steps; ++i) {
        const double sin_e = std::sin(e);
        const double cos_e = std::cos(e);
        const double newton = (u - a_yn * cos_e + a_xn * sin_e - e) / (1.0 - a_xn * cos_e - a_yn * sin_e);
        const double step = std::clamp(newton, -longest_step, longest_step);
        e += step;
        if (std::abs(step) < tolerance) {
            break;
        }
    }
    return e;
}

}

Sgp4::Sgp4(const Two_Line_Elements& elements)
    : epoch_(elements),
      mean_motion_(brouwer_mean_motion(elements)),
      semi_major_axis_(semi_major_axis_of(mean_motion_)),
      beta_squared_(1.0 - square(elements.eccentricity)),
      cos_i_(std::cos(elements.inclination)),
      sin_i_(std::sin(elements.inclination)),
      three_cos2_minus_1_(3.0 * square(cos_i_) - 1.0),
      one_minus_cos2_(1.0 - square(cos_i_)),
      seven_cos2_minus_1_(7.0 * square(cos_i_) - 1.0)
{
    set_gravity_rates();
    set_drag_terms();
}

/// Secular effects of the zonal harmonics.
void Sgp4::set_gravity_rates()
{
    const double cos2 = square(cos_i_);
    const double cos4 = square(cos2);
    const double beta = std::sqrt(beta_squared_);
    const double inverse_p2 = 1.0 / square(semi_major_axis_ * beta_squared_);
    const double j2_first = 1.5 * j2 * inverse_p2 * mean_motion_;
    const double j2_second = 0.5 * j2 * inverse_p2 * j2_first;
    const double j4_first = -0.46875 * j4 * square(inverse_p2) * mean_motion_;

    rate_.mean_anomaly = mean_motion_ + 0.5 * j2_first * beta * three_cos2_minus_1_ +
                         0.0625 * j2_second * beta * (13.0 - 78.0 * cos2 + 137.0 * cos4);
    rate_.argument_of_perigee = -0.5 * j2_first * (1.0 - 5.0 * cos2) +
                                0.0625 * j2_second * (7.0 - 114.0 * cos2 + 395.0 * cos4) +
                                j4_first * (3.0 - 36.0 * cos2 + 49.0 * cos4);
    rate_.right_ascension_from_equatorial_bulge = -j2_first * cos_i_;
    rate_.right_ascension = rate_.right_ascension_from_equatorial_bulge +
                            (0.5 * j2_second * (4.0 - 19.0 * cos2) + 2.0 * j4_first * (3.0 - 7.0 * cos2)) * cos_i_;
}

/// Secular effects of an atmosphere whose density falls with the fourth power of the height over its boundary s.
void Sgp4::set_drag_terms()
{
    const double a = semi_major_axis_;
    const double n = mean_motion_;
    const double e = epoch_.eccentricity;
    const double b_star = epoch_.b_star;
    const double perigee_km = (a * (1.0 - e) - 1.0) * earth_radius_km;
    const double boundary_km = atmosphere_boundary_km(perigee_km);
    const double s = 1.0 + boundary_km / earth_radius_km;
    const double density = square(square((120.0 - boundary_km) / earth_radius_km)); // (q0 - s)^4

    const double xi = 1.0 / (a - s);
    const double eta = a * e * xi;
    const double eta2 = square(eta);
    const double e_eta = e * eta;
    const double psi2 = std::abs(1.0 - eta2);
    const double density_xi4 = density * square(square(xi));
    const double scale = density_xi4 / std::pow(psi2, 3.5);

    const double c2 = scale * n *
                      (a * (1.0 + 1.5 * eta2 + e_eta * (4.0 + eta2)) +
                       0.375 * j2 * xi / psi2 * three_cos2_minus_1_ * (8.0 + 3.0 * eta2 * (8.0 + eta2)));
    const double c1 = b_star * c2;
    const double bulge_over_orbit =
        -3.0 * three_cos2_minus_1_ * (1.0 - 2.0 * e_eta + eta2 * (1.5 - 0.5 * e_eta)) +
        0.75 * one_minus_cos2_ * (2.0 * eta2 - e_eta * (1.0 + eta2)) * std::cos(2.0 * epoch_.argument_of_perigee);

    // The drag terms are a series in the change of the semi-major axis over its height above the boundary, and run away
    // where that exceeds 1. Back in time the perigee hardly moves, so that the apogee rises by twice the change.
    drag_.highest_apogee = a * (1.0 + e) + 2.0 * (a - s);
    drag_.high_order = perigee_km >= simple_drag_perigee_km;
    drag_.eta = eta;
    drag_.c1 = c1;
    drag_.c4 = 2.0 * n * scale * a * beta_squared_ *
               (eta * (2.0 + 0.5 * eta2) + e * (0.5 + 2.0 * eta2) - j2 * xi / (a * psi2) * bulge_over_orbit);
    drag_.right_ascension_t2 = 3.5 * beta_squared_ * rate_.right_ascension_from_equatorial_bulge * c1;
    drag_.mean_longitude_t2 = 1.5 * c1;
    if (!drag_.high_order) {
        return;
    }

    drag_.c5 = 2.0 * scale * a * beta_squared_ * (1.0 + 2.75 * (eta2 + e_eta) + e_eta * eta2);
    if (e > small_eccentricity) {
        const double c3 = -2.0 * density_xi4 * xi * (j3 / j2) * n * sin_i_ / e;
        drag_.argument_of_perigee = b_star * c3 * std::cos(epoch_.argument_of_perigee);
        drag_.mean_anomaly = -2.0 / 3.0 * density_xi4 * b_star / e_eta;
    }
    const double c1_2 = square(c1);
    drag_.d2 = 4.0 * a * xi * c1_2;
    const double d2_xi_c1 = drag_.d2 * xi * c1 / 3.0;
    drag_.d3 = (17.0 * a + s) * d2_xi_c1;
    drag_.d4 = 0.5 * d2_xi_c1 * a * xi * (221.0 * a + 31.0 * s) * c1;
    drag_.mean_longitude_t3 = drag_.d2 + 2.0 * c1_2;
    drag_.mean_longitude_t4 = 0.25 * (3.0 * drag_.d3 + c1 * (12.0 * drag_.d2 + 10.0 * c1_2));
    drag_.mean_longitude_t5 =
        0.2 * (3.0 * drag_.d4 + 12.0 * c1 * drag_.d3 + 6.0 * square(drag_.d2) + 15.0 * c1_2 * (2.0 * drag_.d2 + c1_2));
}

Tle_Error Sgp4::propagate(double minutes_since_epoch, Orbit_State& state) const
{
    // Conditions are written so that a NaN, from elements or a time far outside the theory, fails them.
    if (!(mean_motion_ > two_pi / deep_space_period_min)) {
        return Tle_Error::deep_space;
    }
    Moment mean = mean_elements(minutes_since_epoch);
    constexpr double lowest_eccentricity = -0.001;
    constexpr double least_used_eccentricity = 1e-6;
    if (!(mean.eccentricity >= lowest_eccentricity && mean.eccentricity < 1.0)) {
        return Tle_Error::eccentricity_out_of_range;
    }
    mean.eccentricity = std::max(mean.eccentricity, least_used_eccentricity);
    if (!(mean.semi_major_axis >= 1.0)) {
        return Tle_Error::decayed;
    }
    if (!(mean.semi_major_axis * (1.0 + mean.eccentricity) <= drag_.highest_apogee)) {
        return Tle_Error::out_of_reach;
    }
    return osculating_state(mean, state);
}

/// The elements at epoch with the secular effects of gravity and drag.
Sgp4::Moment Sgp4::mean_elements(double t) const
{
    const double gravity_mean_anomaly = epoch_.mean_anomaly + rate_.mean_anomaly * t;
    const double gravity_argument_of_perigee = epoch_.argument_of_perigee + rate_.argument_of_perigee * t;
    const double t2 = t * t;

    double perigee_shift = 0.0;
    double axis_factor = 1.0 - drag_.c1 * t;
    double eccentricity_loss = epoch_.b_star * drag_.c4 * t;
    double longitude_gain = drag_.mean_longitude_t2 * t2;
    if (drag_.high_order) {
        const double t3 = t2 * t;
        const double t4 = t3 * t;
        perigee_shift = drag_.argument_of_perigee * t +
                        drag_.mean_anomaly * (cube(1.0 + drag_.eta * std::cos(gravity_mean_anomaly)) -
                                              cube(1.0 + drag_.eta * std::cos(epoch_.mean_anomaly)));
        axis_factor -= drag_.d2 * t2 + drag_.d3 * t3 + drag_.d4 * t4;
        eccentricity_loss +=
            epoch_.b_star * drag_.c5 * (std::sin(gravity_mean_anomaly + perigee_shift) - std::sin(epoch_.mean_anomaly));
        longitude_gain += drag_.mean_longitude_t3 * t3 + t4 * (drag_.mean_longitude_t4 + t * drag_.mean_longitude_t5);
    }

    Moment mean{};
    mean.semi_major_axis = semi_major_axis_ * axis_factor * std::abs(axis_factor); // below 0 once drag has used it up
    mean.mean_motion = k_e / std::pow(mean.semi_major_axis, 1.5);
    mean.eccentricity = epoch_.eccentricity - eccentricity_loss;
    mean.argument_of_perigee = gravity_argument_of_perigee - perigee_shift;
    mean.right_ascension = epoch_.right_ascension + rate_.right_ascension * t + drag_.right_ascension_t2 * t2;
    mean.mean_anomaly = gravity_mean_anomaly + perigee_shift + mean_motion_ * longitude_gain;
    return mean;
}

/// Long-period terms, Kepler's equation and short-period terms.
Tle_Error Sgp4::osculating_state(const Moment& mean, Orbit_State& state) const
{
    const double a = mean.semi_major_axis;
    const double inverse_mean_p = 1.0 / (a * (1.0 - square(mean.eccentricity)));

    // 1 + cos i vanishes for an exactly retrograde equatorial orbit.
    constexpr double least_one_plus_cos = 1.5e-12;
    const double one_plus_cos = std::max(1.0 + cos_i_, least_one_plus_cos);
    const double j3_term = -0.5 * (j3 / j2) * sin_i_ * inverse_mean_p;
    const double a_xn = mean.eccentricity * std::cos(mean.argument_of_perigee);
    const double a_yn = mean.eccentricity * std::sin(mean.argument_of_perigee) + j3_term;
    const double longitude_shift = 0.5 * j3_term * (3.0 + 5.0 * cos_i_) / one_plus_cos * a_xn;
    const double u_mean = std::fmod(mean.mean_anomaly + mean.argument_of_perigee + longitude_shift, two_pi);

    const double e_long = eccentric_longitude(u_mean, a_xn, a_yn);
    const double sin_e_long = std::sin(e_long);
    const double cos_e_long = std::cos(e_long);
    const double e_cos_e = a_xn * cos_e_long + a_yn * sin_e_long;
    const double e_sin_e = a_xn * sin_e_long - a_yn * cos_e_long;
    const double e_squared = square(a_xn) + square(a_yn);
    const double p = a * (1.0 - e_squared);
    if (!(p >= 0.0)) {
        return Tle_Error::semi_latus_rectum_negative;
    }

    const double r = a * (1.0 - e_cos_e);
    const double radial_rate = std::sqrt(a) * e_sin_e / r;
    const double transverse_rate = std::sqrt(p) / r;
    const double beta = std::sqrt(1.0 - e_squared);
    const double e_sin_e_term = e_sin_e / (1.0 + beta);
    const double sin_u = a / r * (sin_e_long - a_yn - a_xn * e_sin_e_term);
    const double cos_u = a / r * (cos_e_long - a_xn + a_yn * e_sin_e_term);
    const double sin_2u = 2.0 * sin_u * cos_u;
    const double cos_2u = 1.0 - 2.0 * square(sin_u);

    const double j2_p = 0.5 * j2 / p;
    const double j2_p2 = j2_p / p;
    const double radius = r * (1.0 - 1.5 * j2_p2 * beta * three_cos2_minus_1_) + 0.5 * j2_p * one_minus_cos2_ * cos_2u;
    const double u = std::atan2(sin_u, cos_u) - 0.25 * j2_p2 * seven_cos2_minus_1_ * sin_2u;
    const double node = mean.right_ascension + 1.5 * j2_p2 * cos_i_ * sin_2u;
    const double inclination = epoch_.inclination + 1.5 * j2_p2 * cos_i_ * sin_i_ * cos_2u;
    const double rate_scale = mean.mean_motion * j2_p / k_e;
    const double radial_velocity = radial_rate - rate_scale * one_minus_cos2_ * sin_2u;
    const double transverse_velocity =
        transverse_rate + rate_scale * (one_minus_cos2_ * cos_2u + 1.5 * three_cos2_minus_1_);
    if (!(radius >= 1.0)) {
        return Tle_Error::decayed;
    }

    const Eigen::Vector3d m{-std::sin(node) * std::cos(inclination), std::cos(node) * std::cos(inclination),
                            std::sin(inclination)};
    const Eigen::Vector3d n{std::cos(node), std::sin(node), 0.0};
    const Eigen::Vector3d outward = m * std::sin(u) + n * std::cos(u);
    const Eigen::Vector3d along = m * std::cos(u) - n * std::sin(u);
    state.position_km = outward * (radius * earth_radius_km);
    state.velocity_kmps = (radial_velocity * outward + transverse_velocity * along) * (earth_radius_km * k_e / 60.0);
    return Tle_Error::none;
}

}
