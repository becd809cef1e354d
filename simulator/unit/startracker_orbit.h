#pragma once

#include "../../protocol/records/startracker_orbit.h"
#include "../orbit/sgp4.h"
#include "command_table.h"
#include "unit_time.h"
#include "world.h"

#include <deque>
#include <optional>

namespace zavra::simulator
{

/// The simulated unit's star tracker and orbit module.
///
/// The star tracker answers every native command with the command's own bytes.
///
/// The orbit module answers new elements with the number of a Tle_Error, and keeps the old ones unless that is 0. Its
/// position is in km and its velocity in km/s, in the true equator, mean equinox frame of date.
class Startracker_Orbit
{
public:
    Startracker_Orbit(Command_Table& commands, const Unit_Time& time, const World& world);

    /// The attitude that was set by command, or else the world's.
    ZAVRA_100_Startracker_Quaternion quaternion() const;

    /// Hands over up to `most` bytes of the native reply that waits.
    Command_Table::Octets take_native_reply(std::size_t most);

    Tle_Error load(const ZAVRA_100_Orbit_TLE_Data& tle_data);

    /// What was loaded.
    std::optional<Two_Line_Elements> elements() const;

    /// The state at the unit's epoch time when the last update interval began. Zeros without elements, or with
    /// elements that do not reach to that time; the Julian date is right even then.
    ZAVRA_100_Orbit_Propagation_Data orbit() const;

    void reset();

    /// What the star tracker sees where the world says nothing of it. num_event is what it says that it sees; 23 events
    /// of them travel.
    ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST event_list;

    struct Settings
    {
        std::optional<ZAVRA_100_Quaternion_float> quaternion;
        unsigned char operation_mode = 0;
    };

    Settings settings;
    std::deque<unsigned char> native_reply;

private:
    struct Propagation
    {
        Sgp4 model;
        Two_Line_Elements elements;
        unsigned long long start_msec; ///< system time
        unsigned long long interval_msec;
    };

    const Unit_Time& time_;
    const World& world_;
    std::optional<Propagation> propagation_;
};

}
