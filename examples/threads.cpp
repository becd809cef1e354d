// One unit, two threads: one looks at the attitude, the other commands; the unit sees one call at a time.

#include <VELM_ZAVRA_SHARED.h>
#include <VELM_ZAVRA_VALUES.h>

#include <atomic>
#include <exception>
#include <iostream>
#include <thread>

namespace
{

typedef velm_zavra::Shared<VELM_ZAVRA_API> Shared_Unit;

/// Sets a word and asks whether the unit took it, with no other thread's command between the two.
bool took(Shared_Unit& unit, unsigned int scheduler_register)
{
    const Shared_Unit::Lock calls = unit.lock();
    calls->Set_System_Scheduler_Register(scheduler_register);
    return calls->Get_System_Scheduler_Register() == scheduler_register;
}

}

int main()
try {
    Shared_Unit unit(velm_zavra::default_address, velm_zavra::default_bus);
    std::atomic<bool> finished(false);
    std::atomic<int> readings(0);
    std::exception_ptr failure;
    std::thread watch([&] {
        try {
            while (!finished) {
                unit->Get_Attitude_Telemetry();
                ++readings;
            }
        } catch (...) {
            failure = std::current_exception();
        }
    });
    int commands = 0;
    int refused = 0;
    try {
        for (; commands < 10; ++commands)
            refused += took(unit, static_cast<unsigned int>(commands)) ? 0 : 1;
    } catch (...) {
        finished = true;
        watch.join();
        throw;
    }
    finished = true;
    watch.join();
    if (failure)
        std::rethrow_exception(failure);
    std::cout << "\nTwo threads\n  " << commands << " commands, " << refused << " not taken; " << readings
              << " readings of the attitude meanwhile\n  " << unit->Get_Attitude_Telemetry() << std::endl;
    return refused == 0 ? 0 : 1;
} catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
}
