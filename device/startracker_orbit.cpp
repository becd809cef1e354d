#include "../protocol/startracker_orbit.h"
#include "dump.h"
#include "exchange.h"

using namespace zavra;

void ZAVRA_100::Set_Startracker_Quaternion(ZAVRA_100_Startracker_Quaternion quaternion)
{
    send(*this, protocol::set_startracker_quaternion, quaternion.quaternion);
}

void ZAVRA_100::Get_Startracker_Quaternion(ZAVRA_100_Startracker_Quaternion* quaternion)
{
    *quaternion = ask(*this, protocol::get_startracker_quaternion);
    dump("STARTRACKER QUATERNION: ", *quaternion, "STARTRACKER");
}

void ZAVRA_100::Get_Startracker_Event_List(ZAVRA_100_REDUCED_STARTRACKER_EVENT_LIST* event_list)
{
    auto& list = *event_list;
    decode_event_list(ask(*this, protocol::get_startracker_event_list), list);
    if (list.num_event > max_events) {
        warn("Event list of ", unsigned{list.num_event}, " events cut to ", unsigned{max_events});
        list.num_event = max_events;
    }
    debug_line(values, "REDUCED_EVENT_LIST.HEADER: hex = ", hex(list.header));
    debug_line(values, "REDUCED_EVENT_LIST.NUM_EVENT: hex = ", hex(list.num_event));
    for (unsigned int i = 0; i < list.num_event; ++i) {
        debug_line(values, "REDUCED_EVENT_LIST.XISF ", i, ": dec = ", list.xisf[i]);
        debug_line(values, "REDUCED_EVENT_LIST.YISF ", i, ": dec = ", list.yisf[i]);
    }
}

void ZAVRA_100::Set_Startracker_Operation_Mode(unsigned char mode)
{
    send(*this, protocol::set_startracker_operation_mode, mode);
}

void ZAVRA_100::Get_Startracker_Operation_Mode(unsigned char* mode)
{
    *mode = ask(*this, protocol::get_startracker_operation_mode);
}

void ZAVRA_100::Send_Startracker_Native_Command(unsigned char* data, unsigned int length)
{
    constexpr const auto& command = protocol::send_startracker_native_command;
    send_bytes(*this, command.identifier, command.action, data, length);
}

void ZAVRA_100::Check_Startracker_Native_Reply(unsigned int* status)
{
    *status = ask(*this, protocol::check_startracker_native_reply);
}

// Quirk: the unit hands a native reply over byte by byte, however many the caller has room for.
void ZAVRA_100::Read_Startracker_Native_Reply(unsigned char* data, unsigned int)
{
    unsigned char reply = 0;
    attempt("Read Startracker Native Reply", [&] { ZAVRA_Startracker_Native_Get(&reply, 1); });
    data[0] = reply;
}

void ZAVRA_100::Init_Orbit_Module(ZAVRA_100_Orbit_TLE_Data tle_data, unsigned char* response)
{
    dump_fields(tle_data);
    *response = ask(*this, protocol::init_orbit_module, tle_data);
    debug_line(values, "Response = ", unsigned{*response});
}

void ZAVRA_100::Get_Orbit_Data(ZAVRA_100_Orbit_Propagation_Data* orbit_data)
{
    *orbit_data = ask(*this, protocol::get_orbit_data);
    dump("ZAVRA_100_Orbit_Propagation_Data", *orbit_data);
}
