#pragma once

#include "values/attitude.h"
#include "values/constants.h"
#include "values/orbit.h"
#include "values/times.h"

#include "VELM_ZAVRA_RECORD_OPERATORS.h"
#include "VELM_ZAVRA_VERSION.h"

/// @file
/// Values that people think in, for applications that want them: times as std::chrono has them, attitudes, orbits from
/// TLE files, names for the numbers of the protocol, and == and << for every record. Header only; the library does not
/// know of it.
