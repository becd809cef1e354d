// What a program does about a failure, by its cause. Here each is provoked.

#include <VELM_ZAVRA_API.h>
#include <VELM_ZAVRA_CAUSE.h>
#include <VELM_ZAVRA_VALUES.h>

#include <cstring>
#include <exception>
#include <functional>
#include <iostream>

namespace
{

const char* remedy(velm_zavra::Cause::Kind kind)
{
    switch (kind) {
    case velm_zavra::Cause::not_acknowledged:
    case velm_zavra::Cause::timeout:
        return "try again, then switch the unit off and on";
    case velm_zavra::Cause::damaged_reply:
        return "try again; the unit may have done it";
    case velm_zavra::Cause::refused_argument:
    case velm_zavra::Cause::file:
        return "mend what was given";
    case velm_zavra::Cause::bus:
    case velm_zavra::Cause::other:
        break;
    }
    return "give up";
}

/// @return whether it failed, and for this cause
bool fails(velm_zavra::Cause::Kind expected, const std::function<void()>& action)
{
    try {
        action();
    } catch (const std::exception& error) {
        const velm_zavra::Cause cause = velm_zavra::cause(error);
        std::cout << "  " << to_string(cause.kind);
        if (cause.error_number != 0)
            std::cout << " (" << std::strerror(cause.error_number) << ')';
        std::cout << ": " << remedy(cause.kind) << "\n    " << error.what() << std::endl;
        return cause.kind == expected;
    }
    return false;
}

}

int main()
try {
    using velm_zavra::Cause;
    VELM_ZAVRA_API api(velm_zavra::default_address, velm_zavra::default_bus);
    std::cout << "\nCauses" << std::endl;
    bool as_expected =
        fails(Cause::refused_argument, [&] { api.Set_Active_Gyroscope(static_cast<VELM_ZAVRA_API_GYROSCOPES>(7)); });
    as_expected &=
        fails(Cause::file, [&] { velm_zavra::read_orbit_elements(api, "no_such_file.tle", std::chrono::seconds(1)); });
    as_expected &= fails(Cause::bus, [] { VELM_ZAVRA_API(velm_zavra::default_address, "no_such_bus", "", false); });
    as_expected &= fails(Cause::not_acknowledged,
                         [] { VELM_ZAVRA_API(0x77, velm_zavra::default_bus, "", false).Get_Epoch_Time(); });
    if (!as_expected) {
        std::cerr << "A failure had another cause, or did not come" << std::endl;
        return 1;
    }
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
}
