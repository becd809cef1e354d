#pragma once

#include <chrono>
#include <filesystem>
#include <memory>

namespace zavra::python
{

/// Time that passes where the driver would wait: a unit simulated in this process has its own. The module is linked so
/// that the driver's usleep() comes here; without a simulation it waits as ever.
class Simulated_Time
{
public:
    virtual ~Simulated_Time() = default;
    virtual void pass(std::chrono::microseconds time) = 0;

    /// Of a simulated bus of this process; null for any other.
    static std::shared_ptr<Simulated_Time> of_bus(const std::filesystem::path& socket);
    static void add_bus(const std::filesystem::path& socket, const std::shared_ptr<Simulated_Time>& time);

    /// While it lives, the thread waits by that time; null: by the clock on the wall.
    class Scope
    {
    public:
        explicit Scope(Simulated_Time* time);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
    };
};

}
