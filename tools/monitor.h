#pragma once

#include <chrono>
#include <map>
#include <string>
#include <vector>

class ZAVRA_100;

namespace zavra::tools
{

/// One line of the monitor.
struct Monitor_Line
{
    std::string name;
    std::string value;
    bool title = false;
    bool changed = false; ///< since the reading before
};

/// The frames as lines, with a memory of what stood there before.
class Monitor_Model
{
public:
    /// Reads the six frames. A frame that fails keeps its old values and says why.
    void read(ZAVRA_100& device);

    const std::vector<Monitor_Line>& lines() const { return lines_; }

private:
    std::vector<Monitor_Line> lines_;
    std::map<std::string, std::string> before_;
};

/// Shows the model on the whole terminal until "q", a signal or, unless it is 0, `count` readings.
/// @throws Failure  when there is no terminal to draw on
void run_monitor(ZAVRA_100& device, std::chrono::nanoseconds interval, unsigned int count);

}
