#include "session.h"
#include "failure.h"

#include "../simulator/bus_server.h"
#include "../simulator/simulated_unit.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <system_error>

#include <stdlib.h>

namespace zavra::tools
{

namespace
{

class Temporary_Directory
{
public:
    Temporary_Directory() : path_(std::filesystem::temp_directory_path() / "zavractl-XXXXXX")
    {
        std::string name = path_;
        if (::mkdtemp(name.data()) == nullptr)
            throw Failure("cannot make a directory like " + path_.string() + ": " +
                          std::generic_category().message(errno));
        path_ = name;
    }
    ~Temporary_Directory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Temporary_Directory(const Temporary_Directory&) = delete;
    Temporary_Directory& operator=(const Temporary_Directory&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// Acknowledges what is written and has nothing to read.
class Recorder : public Bus_Device
{
public:
    int write(std::span<const unsigned char> bytes) override
    {
        const std::lock_guard guard(mutex_);
        frames_.emplace_back(bytes.begin(), bytes.end());
        return 0;
    }
    int read(std::vector<unsigned char>&) override { return ENXIO; }

    std::vector<std::vector<unsigned char>> frames() const
    {
        const std::lock_guard guard(mutex_);
        return frames_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::vector<unsigned char>> frames_;
};

}

class Session::Private_Bus
{
public:
    explicit Private_Bus(const Target& target)
        : server_(directory_.path(), target.bus,
                  {{target.address, target.dry_run ? static_cast<Bus_Device*>(&recorder) : &unit_}})
    {
    }

    const std::filesystem::path& directory() const { return directory_.path(); }

    Recorder recorder;

private:
    Temporary_Directory directory_;
    Canned_World world_;
    Steady_Clock clock_;
    Simulated_Unit unit_{world_, clock_, {.latency = Clock::Time(0)}};
    Bus_Server server_;
};

Session::Session(const Target& target)
{
    const bool is_private = target.simulate || target.dry_run;
    // Without that door the platform would take the bus in /dev instead.
    if (!ZAVRA_SIMULATED_BUS && (is_private || !target.bus_directory.empty()))
        throw Usage_Error("this build reaches no simulated bus; --simulate, --dry-run and --bus-dir need one");

    if (is_private)
        bus_ = std::make_unique<Private_Bus>(target);
    const std::string directory = is_private ? bus_->directory().string() : target.bus_directory;
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
