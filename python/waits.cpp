#include "waits.h"

#include <map>
#include <mutex>

#include <unistd.h>

namespace zavra::python
{

namespace
{

thread_local Simulated_Time* current = nullptr;

std::mutex mutex;
std::map<std::filesystem::path, std::weak_ptr<Simulated_Time>> buses;

}

std::shared_ptr<Simulated_Time> Simulated_Time::of_bus(const std::filesystem::path& socket)
{
    std::error_code ignored;
    const std::lock_guard guard(mutex);
    const auto found = buses.find(std::filesystem::weakly_canonical(socket, ignored));
    return found == buses.end() ? nullptr : found->second.lock();
}

void Simulated_Time::add_bus(const std::filesystem::path& socket, const std::shared_ptr<Simulated_Time>& time)
{
    const std::lock_guard guard(mutex);
    std::erase_if(buses, [](const auto& entry) { return entry.second.expired(); });
    buses[std::filesystem::weakly_canonical(socket)] = time;
}

Simulated_Time::Scope::Scope(Simulated_Time* time)
{
    current = time;
}

Simulated_Time::Scope::~Scope()
{
    current = nullptr;
}

}

extern "C" int __real_usleep(useconds_t usec);

extern "C" int __wrap_usleep(useconds_t usec)
{
    if (zavra::python::current == nullptr)
        return __real_usleep(usec);
    zavra::python::current->pass(std::chrono::microseconds(usec));
    return 0;
}
