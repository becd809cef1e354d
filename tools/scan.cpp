#include "commands.h"
#include "failure.h"

#include <VELM_I2C_DEV.h>

#include <chrono>
#include <thread>

namespace zavra::tools
{

namespace
{

enum class Presence { nobody, answers, taken };

/// Reads one byte: no unit acts on that, and a reply that waits for somebody else stays.
Presence look_for(unsigned int address, const std::string& bus)
{
    VELM_I2C_DEV place;
    bool connected = false;
    try {
        place.Connect(address, bus);
        connected = true;
        unsigned char byte = 0;
        place.I2CReadByteArray(&byte, 1);
        return Presence::answers;
    } catch (const VELM_I2C_DEV_Exception& error) {
        const std::string reason = error.what();
        if (connected && reason.find("not acknowledged") != std::string::npos)
            return Presence::nobody;
        if (!connected && reason.find("busy") != std::string::npos)
            return Presence::taken;
        throw Failure("the scan ends here: " + reason);
    }
}

std::string hexadecimal(unsigned int address)
{
    const unsigned char byte[] = {static_cast<unsigned char>(address)};
    return "0x" + json::hexadecimal(byte);
}

}

Device_Action scan_action(const std::string& bus)
{
    return {[bus](Unit&) {
        // The others are reserved.
        constexpr unsigned int first = 0x08;
        constexpr unsigned int last = 0x77;
        // A unit that prepares a reply does not answer.
        constexpr std::chrono::milliseconds patience{60};
        std::vector<Presence> found(last + 1, Presence::nobody);
        for (const bool again : {false, true}) {
            if (again)
                std::this_thread::sleep_for(patience);
            for (unsigned int address = first; address <= last; ++address)
                if (found[address] == Presence::nobody)
                    found[address] = look_for(address, bus);
        }
        Answer answer;
        for (unsigned int address = first; address <= last; ++address) {
            if (found[address] == Presence::nobody)
                continue;
            const std::string name = hexadecimal(address);
            answer.leaves.push_back({name, '/' + name, "", Leaf::Kind::text});
            answer.value[name] = found[address] == Presence::answers ? "answers (" + std::to_string(address) + ')'
                                                                     : "in use by a driver of this computer";
        }
        if (answer.leaves.empty())
            throw Failure("nobody answers on " + bus);
        return answer;
    }};
}

}
