#pragma once

#include <optional>
#include <string>

/// Units that people write behind a number.
namespace zavra::tools
{

struct Number_With_Unit
{
    double value;
    std::string unit; ///< empty when there is none
};

/// "10", "-.5", "1e-3 rad/s", "10rpm"; nothing for what does not begin with a number.
std::optional<Number_With_Unit> number_with_unit(const std::string& text);

/// What a number in `from` is multiplied with to be one in `to`; nothing where one is not made of the other.
std::optional<double> conversion(const std::string& from, const std::string& to);

/// The units that can be made into `to`, with commas between them; empty when there is only itself.
std::string other_units(const std::string& to);

}
