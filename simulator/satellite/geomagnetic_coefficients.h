#pragma once

#include <array>

namespace zavra::simulator
{

/// The Schmidt semi-normalised Gauss coefficients of one degree and order: nT in 2015, 2020 and 2025, and nT/year from
/// then until 2030.
struct Gauss_Coefficients
{
    int degree;
    int order;
    std::array<double, 4> g;
    std::array<double, 4> h;
};

/// International Geomagnetic Reference Field, 14th generation (IAGA 2024, igrf14coeffs.txt), by degree, then by order.
extern const std::array<Gauss_Coefficients, 104> igrf14;

}
