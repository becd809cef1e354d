#pragma once

// Written by the build system, anew in every build.
#if __has_include("velm_zavra_build_identifier.h")
#include "velm_zavra_build_identifier.h"
#endif

#ifndef VELM_ZAVRA_BUILD_IDENTIFIER
#define VELM_ZAVRA_BUILD_IDENTIFIER "unversioned"
#endif

namespace zavra
{

inline constexpr const char* library_name = "VELM ZAVRA API Library";
inline constexpr const char* library_version = "v1.18, 19.Nov.2020 " VELM_ZAVRA_BUILD_IDENTIFIER;
inline constexpr const char* library_credit = "Written by the developers of the VELM ZAVRA API Library";

}
