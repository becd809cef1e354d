#include "session.h"
#include "failure.h"

#include "../common/bus_directory.h"
#include "../common/temporary_directory.h"
#include "../protocol/frame.h"
#include "../simulator/bench/bus_server.h"
#include "../simulator/unit/simulated_unit.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <mutex>

namespace zavra::tools
{

namespace
{

/// Acknowledges what is written and answers with zeros, so that commands of several frames go on.
class Recorder : public simulator::Bus_Device
{
public:
    int write(std::span<const unsigned char> bytes) override
    {
        const std::lock_guard guard(mutex_);
        frames_.emplace_back(bytes.begin(), bytes.end());
        return 0;
    }
    int read(std::vector<unsigned char>& bytes) override
    {
        std::fill(bytes.begin(), bytes.end(), static_cast<unsigned char>(0));
        if (!bytes.empty())
            bytes.back() = crc8(std::span(bytes).first(bytes.size() - crc_bytes));
        return 0;
    }

    std::vector<std::vector<unsigned char>> frames() const
    {
        const std::lock_guard guard(mutex_);
        return frames_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::vector<unsigned char>> frames_;
};

/// The directory that was asked for; else that of a running simulator that was not told one either, where there is no
/// real bus of this name; else empty.
std::string bus_directory(const Target& target)
{
    namespace fs = std::filesystem;
    if (!target.bus_directory.empty() || !ZAVRA_SIMULATED_BUS || std::getenv("VELM_I2C_BUS_DIR") != nullptr)
        return target.bus_directory;
    std::error_code ignored;
    const bool simulated = !fs::exists("/dev/" + target.bus, ignored) &&
                           fs::is_socket(default_bus_directory() + '/' + target.bus, ignored);
    return simulated ? default_bus_directory() : "";
}

}

class Session::Private_Bus
{
public:
    explicit Private_Bus(const Target& target)
        : server_(directory_.path(), target.bus,
                  {{target.address, target.dry_run ? static_cast<simulator::Bus_Device*>(&recorder) : &unit_}})
    {
    }

    const std::filesystem::path& directory() const { return directory_.path(); }

    Recorder recorder;

private:
    Temporary_Directory directory_{"zavractl"};
    simulator::Canned_World world_;
    simulator::Steady_Clock clock_;
    simulator::Simulated_Unit unit_{world_, clock_, {.latency = simulator::Clock::Time(0)}};
    simulator::Bus_Server server_;
};

Session::Session(const Target& target)
{
    const bool is_private = target.simulate || target.dry_run;
    // Without that door the platform would take the bus in /dev instead.
    if (!ZAVRA_SIMULATED_BUS && (is_private || !target.bus_directory.empty()))
        throw Usage_Error("this build reaches no simulated bus; --simulate, --dry-run and --bus-dir need one");

    if (target.simulate && !target.bus_directory.empty())
        throw Usage_Error(
            "--simulate and --bus-dir exclude each other: a unit for this call alone is on no bus of others");

    if (is_private)
        bus_ = std::make_unique<Private_Bus>(target);
    const std::string directory = is_private ? bus_->directory().string() : bus_directory(target);
    if (!directory.empty())
        ::setenv("VELM_I2C_BUS_DIR", directory.c_str(), 1);
    try {
        device_ = std::make_unique<ZAVRA_100>(target.address, target.bus);
    } catch (const ZAVRA_100_Exception& error) {
        throw Failure(error.what());
    }
}

Session::~Session() = default;

std::vector<std::vector<unsigned char>> Session::frames() const
{
    return bus_ ? bus_->recorder.frames() : std::vector<std::vector<unsigned char>>();
}

}
