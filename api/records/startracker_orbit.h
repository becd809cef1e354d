#pragma once

#include "vectors.h"

/// @file
/// Star tracker, orbit module and TLE files.

/// Operation mode of the star tracker. What each code stands for is the star tracker's own; a code that has no name
/// here, up to 255, is passed on just the same.
enum VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE : unsigned int {
    VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE_0 = 0,
    VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE_1 = 1,
    VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE_2 = 2,
    VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE_3 = 3
};

/// Attitude of the star tracker.
struct VELM_ZAVRA_API_STARTRACKER_QUATERNION
{
    VELM_ZAVRA_API_QUATERNION_FLOAT quaternion;
    unsigned long long
        epoch_time_msec; ///< of the measurement, in ms since 01.01.1970 0:00:00 UTC; not sent to the unit
};

/// What the star tracker sees. Only the first events come through whole: see Get_Startracker_Event_List().
struct VELM_ZAVRA_API_STARTRACKER_EVENT_LIST
{
    /// Sets all events to zero, and leaves `header` and `num_event` unset.
    VELM_ZAVRA_API_STARTRACKER_EVENT_LIST() : xisf(), yisf() {}

    unsigned char header;    ///< list header; its meaning is the unit's own
    unsigned char num_event; ///< number of events that the unit gave, 0 to 23
    int xisf[23];            ///< x value of each event
    int yisf[23];            ///< y value of each event
};

/// A two-line element set. Each line has 69 characters and a terminating NUL.
struct VELM_ZAVRA_API_ORBIT_TLE_DATA
{
    char tle_1[70];
    char tle_2[70];
    unsigned long long update_interval_msec; ///< of the propagation, in ms
};

/// The propagated orbit. Frame and units are the unit's own; the simulated unit gives km and km/s in the true equator,
/// mean equinox frame (TEME).
struct VELM_ZAVRA_API_ORBIT_PROPAGATION_DATA
{
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT position;
    VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT velocity;
    double julian_date; ///< of position and velocity
};

/// What parse_TLE_file() found.
struct VELM_ZAVRA_API_TLE_FILE_DATA
{
    /// 0 no line, 1 only line 1, 2 line 2 (and line 1, if it came first), -3 line 1 has fewer than 69 characters,
    /// -4 line 2 has fewer
    int status;
    char tle_line_1[71]; ///< 69 characters, padded with NUL
    char tle_line_2[71]; ///< 69 characters, padded with NUL
};
