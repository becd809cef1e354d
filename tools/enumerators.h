#pragma once

#include "leaf.h"

namespace zavra::tools
{

/// The names of the values that an argument of a method may have; none where they are not known.
std::span<const Enumerator> enumerators_of(const std::string& method, const std::string& argument);

/// What a refused value should have been: "; index: 0 to 2", for the arguments of a method whose values have names.
std::string known_ranges(const Leaves& arguments);

}
