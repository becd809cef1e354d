#include "VELM_ZAVRA_API.h"

#include "../device/ZAVRA_100.h"
#include "../device/debug.h"
#include "../protocol/startracker_orbit.h"
#include "call.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <string>

using namespace zavra;

namespace
{

using Event_Values = int[max_events];

/// Quirk: copies the first 23 bytes, not the first 23 values: values 0 to 4 arrive whole, of value 5 the three
/// low-order bytes, the others not at all.
void copy_event_values(const Event_Values& from, Event_Values& to)
{
    constexpr unsigned int copied_bytes = 23;
    constexpr unsigned int whole_values = copied_bytes / sizeof(int);
    constexpr unsigned int rest_mask = (1U << 8U * (copied_bytes % sizeof(int))) - 1U;
    std::copy_n(from, whole_values, to);
    to[whole_values] = static_cast<int>(static_cast<unsigned int>(from[whole_values]) & rest_mask);
}

/// Copies the line's first 69 characters, the others are NUL then.
/// @return whether the line has that many
bool copy_tle_line(const std::string& line, char (&to)[71])
{
    constexpr std::size_t tle_line_length = 69;
    std::fill(std::begin(to), std::end(to), '\0');
    return line.copy(to, tle_line_length) == tle_line_length;
}

}

void VELM_ZAVRA_API::Set_Startracker_Quaternion(VELM_ZAVRA_API_STARTRACKER_QUATERNION quaternion)
{
    command(*device_, "set star tracker quaternion", &ZAVRA_100::Set_Startracker_Quaternion, quaternion);
}

VELM_ZAVRA_API_STARTRACKER_QUATERNION VELM_ZAVRA_API::Get_Startracker_Quaternion()
{
    // Quirk: the words are the setter's.
    return query<VELM_ZAVRA_API_STARTRACKER_QUATERNION>(*device_, "set star tracker quaternion",
                                                        &ZAVRA_100::Get_Startracker_Quaternion);
}

VELM_ZAVRA_API_STARTRACKER_EVENT_LIST VELM_ZAVRA_API::Get_Startracker_Event_List()
{
    VELM_ZAVRA_API_STARTRACKER_EVENT_LIST list;
    ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST device_list;
    command(*device_, "get star tracker event list", &ZAVRA_100::Get_Startracker_Event_List, &device_list);
    list.header = device_list.header;
    list.num_event = device_list.num_event;
    copy_event_values(device_list.xisf, list.xisf);
    copy_event_values(device_list.yisf, list.yisf);
    return list;
}

void VELM_ZAVRA_API::Set_Startracker_Operation_Mode(VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE mode)
{
    command(*device_, "set star tracker operation mode", &ZAVRA_100::Set_Startracker_Operation_Mode, mode);
}

VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE VELM_ZAVRA_API::Get_Startracker_Operation_Mode()
{
    return query<VELM_ZAVRA_API_STARTRACKER_OPERATING_MODE>(*device_, "get star tracker operation mode",
                                                            &ZAVRA_100::Get_Startracker_Operation_Mode);
}

void VELM_ZAVRA_API::Send_Startracker_Native_Command(unsigned char* data, unsigned int length)
{
    command(*device_, "send star tracker native command", &ZAVRA_100::Send_Startracker_Native_Command, data, length);
}

unsigned int VELM_ZAVRA_API::Check_For_Startracker_Native_Reply()
{
    return query<unsigned int>(*device_, "check star tracker native reply", &ZAVRA_100::Check_Startracker_Native_Reply);
}

void VELM_ZAVRA_API::Read_Startracker_Native_Reply(unsigned char* data, unsigned int length)
{
    command(*device_, "read star tracker native reply", &ZAVRA_100::Read_Startracker_Native_Reply, data, length);
}

unsigned char VELM_ZAVRA_API::Init_Orbit_Module(VELM_ZAVRA_API_ORBIT_TLE_DATA tle_data)
{
    return query<unsigned char>(*device_, "initialize orbit module", &ZAVRA_100::Init_Orbit_Module, tle_data);
}

VELM_ZAVRA_API_ORBIT_PROPAGATION_DATA VELM_ZAVRA_API::Get_Orbit_Data()
{
    return query<VELM_ZAVRA_API_ORBIT_PROPAGATION_DATA>(*device_, "get orbit data", &ZAVRA_100::Get_Orbit_Data);
}

VELM_ZAVRA_API_TLE_FILE_DATA VELM_ZAVRA_API::parse_TLE_file(char* file_name)
{
    VELM_ZAVRA_API_TLE_FILE_DATA data{};
    std::ifstream file(file_name);
    if (!file)
        fail<VELM_ZAVRA_API_Exception>("ERROR: Not able to open TLE file. Check TLE file name and access rights.",
                                       errno);

    for (std::string line; data.status >= 0 && data.status < 2 && std::getline(file, line);) {
        // For line readers with a buffer of fixed size; this one grows with the line and leaves no failure behind.
        if (file.fail())
            fail<VELM_ZAVRA_API_Exception>(
                "ERROR: TLE File contains line with more that 256 characters. Check TLE file format.", 0);

        if (line.starts_with('1')) {
            const bool whole = copy_tle_line(line, data.tle_line_1);
            debug_line(values, whole ? "TLE line 1 found: " : "TLE line 1 too short: 1 ", data.tle_line_1);
            data.status = whole ? 1 : -3;
        } else if (line.starts_with('2')) {
            const bool whole = copy_tle_line(line, data.tle_line_2);
            // Quirk: a short line 2 is reported with the contents of line 1.
            if (whole)
                debug_line(values, "TLE line 2 found: ", data.tle_line_2);
            else
                debug_line(values, "ERROR: TLE line 2 too short: ", data.tle_line_1);
            data.status = whole ? 2 : -4;
        }
    }
    return data;
}
