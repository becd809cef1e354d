#include "unit.h"
#include "enumerators.h"
#include "failure.h"

namespace zavra::tools
{

namespace
{

using Telemetry = ZAVRA_100_Standard_Telemetry;

Telemetry standard_telemetry(ZAVRA_100& device, const std::string& consequence)
try {
    Telemetry telemetry;
    device.Get_Standard_Telemetry(&telemetry);
    return telemetry;
} catch (const ZAVRA_100_Exception& error) {
    throw Failure(consequence + ": " + in_short(error.what()));
}

/// Bits 0 and 1 are the unit's command errors; what bit 2 says is so on the simulated unit.
std::string reason(unsigned int error_register)
{
    constexpr std::pair<unsigned int, const char*> reasons[] = {
        {1U << 0U, "the request came damaged"},
        {1U << 1U, "it does not know the command, or not in this length"},
        {1U << 2U, "it refuses the values"},
    };
    std::string text;
    for (const auto& [bit, words] : reasons)
        if ((error_register & bit) != 0)
            text += (text.empty() ? "" : " or ") + std::string(words);
    return text.empty() ? "it does not say why" : text;
}

void check(const std::string& what, const Telemetry& before, const Telemetry& after)
{
    constexpr unsigned int command_errors = 0x3;
    const unsigned int failed = after.number_of_failed_commands - before.number_of_failed_commands;
    const unsigned int new_errors = after.system_error_register & ~before.system_error_register;
    if (failed == 0 && (new_errors & command_errors) == 0)
        return;
    // What is received between the two readings is the command and the second one, unless others talk to the unit, or
    // a reading had to be asked for again.
    constexpr unsigned int expected = 2;
    const unsigned int received = after.number_of_received_commands - before.number_of_received_commands;
    // A bit that was set before may have been meant again.
    throw Failure(
        "the unit did not take " + what + ": " + reason(new_errors != 0 ? new_errors : after.system_error_register) +
        (received == expected
             ? ""
             : "; or another command failed, of the " + std::to_string(received) + " that it received meanwhile"));
}

bool is_verified(const Method& method)
{
    // A reading in between would take the place of the star tracker's native reply.
    return (method.results.empty() || method.name == "Init_Orbit_Module") &&
           method.name.find("Native") == std::string::npos;
}

}

Json Unit::call(const Method& method, const Json& arguments)
try {
    if (!is_verified(method))
        return method.call(device, arguments);
    Json results;
    command(method.name, [&](ZAVRA_100& unit) { results = method.call(unit, arguments); });
    return results;
} catch (const std::invalid_argument& error) {
    throw Usage_Error(error.what());
}

void Unit::command(const std::string& what, const std::function<void(ZAVRA_100&)>& send)
{
    if (!verify_)
        return send(device);
    const Telemetry before = standard_telemetry(device, what + " was not sent");
    send(device);
    const Telemetry after = standard_telemetry(device, what + " was sent, and whether the unit took it cannot be told");
    check(what, before, after);
}

}
