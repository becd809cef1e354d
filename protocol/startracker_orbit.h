#pragma once

#include "command.h"
#include "records/startracker_orbit.h"
#include "vectors.h"

namespace zavra
{

template <>
inline constexpr auto field_list<ZAVRA_100_Startracker_Quaternion> = [](auto& r) {
    return List{Field{"QUATERNION", r.quaternion}, Field{"EPOCH_TIME_MSEC", r.epoch_time_msec}.in("ms")};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Orbit_TLE_Data> = [](auto& r) {
    return List{Field{"TLE_1", r.tle_1, style::raw_text}, Field{"TLE_2", r.tle_2, style::raw_text},
                Field{"UPDATE_INTERVAL_MSEC", r.update_interval_msec}.in("ms")};
};

template <>
inline constexpr auto field_list<ZAVRA_100_Orbit_Propagation_Data> = [](auto& r) {
    return List{Field{"POSITION", r.position}.in("km"), Field{"VELOCITY", r.velocity}.in("km/s"),
                Field{"JULIAN_DATE", r.julian_date}.in("d")};
};

/// The star tracker's event list as it travels: header, number of events, then x and y of each event in turn as words
/// in the star tracker's own byte order, and one byte that nobody reads.
using Event_List_Bytes = Bytes<187>;
inline constexpr unsigned char max_events = 23;
static_assert(std::tuple_size_v<Event_List_Bytes> == 2 + 2 * sizeof(int) * max_events + 1);

/// Calls transfer(bytes of the word, word) for the words of the events that arrive; num_event may promise more.
template <class Octet, class List, class Transfer>
constexpr void for_each_event_word(Octet* bytes, List& list, Transfer transfer)
{
    bytes += 2;
    for (unsigned int i = 0; i < std::min(list.num_event, max_events); ++i)
        for (auto* word : {&list.xisf[i], &list.yisf[i]}) {
            transfer(bytes, *word);
            bytes += sizeof *word;
        }
}

constexpr Event_List_Bytes encode_event_list(const ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST& list)
{
    Event_List_Bytes bytes{list.header, list.num_event};
    for_each_event_word(bytes.data(), list, [](unsigned char* to, int word) { put_little_endian(to, word); });
    return bytes;
}

/// Events beyond those that arrive keep their values.
constexpr void decode_event_list(const Event_List_Bytes& bytes, ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST& list)
{
    list.header = bytes[0];
    list.num_event = bytes[1];
    for_each_event_word(bytes.data(), list,
                        [](const unsigned char* from, int& word) { word = get_little_endian<int>(from); });
}

/// The bytes of a native star tracker command: any number of them, in the star tracker's own protocol.
struct Native_Bytes
{
};

template <>
inline constexpr auto field_list<Native_Bytes> = [](auto&) { return List{}; };

namespace protocol
{

inline constexpr Command<void(ZAVRA_100_Quaternion_float)> set_startracker_quaternion{
    0xAB01, "Set_Startracker_Quaternion", "Set Startracker Quaternion", {"quaternion"}};
inline constexpr Command<ZAVRA_100_Startracker_Quaternion()> get_startracker_quaternion{
    0xAB02, "Get_Startracker_Quaternion", "Get Startracker Quaternion"};
inline constexpr Command<Event_List_Bytes()> get_startracker_event_list{
    0xAB04, "Get_Startracker_Event_List", "Get Startracker Event List", {}, {"event_list"}};
inline constexpr Command<void(unsigned char)> set_startracker_operation_mode{
    0xAB11, "Set_Startracker_Operation_Mode", "Set Startracker Operation Mode", {"mode"}};
inline constexpr Command<unsigned char()> get_startracker_operation_mode{
    0xAB12, "Get_Startracker_Operation_Mode", "Get Startracker Operation Mode", {}, {"mode"}};

inline constexpr Command<void(Native_Bytes)> send_startracker_native_command{
    0xAB20, "Send_Startracker_Native_Command", "Send Startracker Native Command", {"data"}};
// Quirk: the words are the operation mode's.
inline constexpr Command<unsigned char()> check_startracker_native_reply{
    0xAB21, "Check_Startracker_Native_Reply", "Get Startracker Operation Mode", {}, {"status"}};

inline constexpr Command<unsigned char(ZAVRA_100_Orbit_TLE_Data)> init_orbit_module{
    0xAC01, "Init_Orbit_Module", "Init Orbit Module", {"tle_data"}, {"response"}};
inline constexpr Command<ZAVRA_100_Orbit_Propagation_Data()> get_orbit_data{0xAC02, "Get_Orbit_Data", "Get Orbit Data"};

static_assert(set_startracker_quaternion.request_size == 16);
static_assert(get_startracker_quaternion.response_size == 24);
static_assert(get_startracker_event_list.response_size == 187);
static_assert(init_orbit_module.request_size == 148);
static_assert(get_orbit_data.response_size == 32);

inline constexpr List startracker_orbit_commands{set_startracker_quaternion,
                                                 get_startracker_quaternion,
                                                 get_startracker_event_list,
                                                 set_startracker_operation_mode,
                                                 get_startracker_operation_mode,
                                                 send_startracker_native_command,
                                                 check_startracker_native_reply,
                                                 init_orbit_module,
                                                 get_orbit_data};

static_assert(startracker_orbit_commands.size == 9);

}

}
