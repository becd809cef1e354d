#include "record.h"
#include "failure.h"
#include "frames.h"
#include "moment.h"
#include "stop.h"

#include "../protocol/frame.h"

#include <ostream>

namespace zavra::tools
{

namespace
{

std::string guarded(Octets bytes)
{
    bytes.push_back(crc8(bytes));
    return json::hexadecimal(bytes);
}

std::string request_of(const Method& method)
{
    return guarded({static_cast<unsigned char>(method.identifier >> 8U),
                    static_cast<unsigned char>(method.identifier & 0xFFU), 0, 0});
}

}

int record_frames(Unit& unit, std::chrono::nanoseconds interval, unsigned int count, std::ostream& out,
                  std::ostream& errors)
{
    out << "# zavractl record, " << utc(host_epoch_msec()) << ", explained by: zavractl decode\n";
    bool came_through = false;
    Rhythm rhythm(interval, Steady::now());
    for (unsigned int reading = 1;; ++reading) {
        for (const Frame& frame : frames) {
            const Method& method = method_named(frame.getter);
            const std::string asked = utc(host_epoch_msec());
            try {
                // The values as they travel; bytes that belong to no field are zero.
                const Octets payload = method.transact(unit.device, {});
                out << asked << " > " << request_of(method) << '\n'
                    << utc(host_epoch_msec()) << " < " << guarded(payload) << '\n';
                came_through = true;
            } catch (const ZAVRA_100_Exception& failure) {
                const std::string reason = printable(in_short(failure.what()));
                out << "# " << asked << ' ' << reason << '\n';
                errors << "zavractl: " << reason << std::endl;
            }
        }
        out.flush();
        if (reading == count || !wait_until(rhythm.next(Steady::now())))
            return came_through ? 0 : 1;
    }
}

}
