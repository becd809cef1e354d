#pragma once

#include "../orbit/julian_date.h"

#include <Eigen/Core>

#include <vector>

namespace zavra::simulator
{

/// The Earth's main magnetic field at one moment: the International Geomagnetic Reference Field, 14th generation (IAGA
/// 2024), which is linear in time between its epochs of 2015, 2020, 2025 and, by secular variation, 2030.
///
/// An object is made anew when the moment has moved on: the field changes by at most some 0.6 nT a day.
class Geomagnetic_Field
{
public:
    static constexpr int highest_degree = 13;
    static constexpr double first_year = 2015.0;
    static constexpr double last_year = 2030.0;

    /// `decimal_year` lies in first_year to last_year; `degree` in 1 to highest_degree leaves out the harmonics above
    /// it. Throws std::out_of_range otherwise.
    explicit Geomagnetic_Field(double decimal_year, int degree = highest_degree);

    /// Flux density in T at a position in km, both in the Earth-fixed frame. The position is outside the Earth's core;
    /// the poles are positions as any other.
    Eigen::Vector3d at(const Eigen::Vector3d& earth_fixed_km) const;

private:
    /// What one harmonic adds to x, y and z of the field, for its cosine and its sine part.
    struct Harmonic
    {
        Eigen::Array2d x, y, z;
        double recursion; // how much of the harmonic of two degrees below the next one holds
    };

    int degree_;
    std::vector<Harmonic> harmonics_; // by degree, then by order
};

/// The year with the part of it that has passed (UTC): 02.07.2025 12:00 is 2025.5.
double decimal_year(const Julian_Date& date);

}
