#pragma once

#include "vectors.h"

/// @file
/// Star tracker and orbit module.

/// Attitude of the star tracker.
struct ZAVRA_100_Startracker_Quaternion
{
    ZAVRA_100_Quaternion_float quaternion;
    unsigned long long
        epoch_time_msec; ///< of the measurement, in ms since 01.01.1970 0:00:00 UTC; not sent to the unit
};

/// What the star tracker sees: as many events as the list has room for.
struct ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST
{
    /// Sets all events to zero, and leaves `header` and `num_event` unset.
    ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST() : xisf(), yisf() {}

    unsigned char header;    ///< list header; its meaning is the unit's own
    unsigned char num_event; ///< number of valid events, 0 to 23
    int xisf[23];            ///< x value of each event
    int yisf[23];            ///< y value of each event
};

/// A two-line element set. Each line has 69 characters and a terminating NUL.
struct ZAVRA_100_Orbit_TLE_Data
{
    char tle_1[70];
    char tle_2[70];
    unsigned long long update_interval_msec; ///< of the propagation, in ms
};

/// The propagated orbit. Frame and units are the unit's own; the simulated unit gives km and km/s in the true equator,
/// mean equinox frame (TEME).
struct ZAVRA_100_Orbit_Propagation_Data
{
    ZAVRA_100_Vector3_float position;
    ZAVRA_100_Vector3_float velocity;
    double julian_date; ///< of position and velocity
};
