#pragma once

#include <chrono>
#include <map>
#include <string>
#include <vector>

class ZAVRA_100;

namespace zavra::tools
{

struct Frame;

/// One line of the monitor.
struct Monitor_Line
{
    enum class Kind { title, problem, value };

    Kind kind;
    std::string name; ///< or the text of a problem
    std::string value;
    bool changed = false; ///< since the reading before
    bool old = false;     ///< its frame failed; this is what stood there before
};

/// The frames as lines, with a memory of what stood there before.
class Monitor_Model
{
public:
    /// @param names  of frames; none for all, the attitude first
    /// @throws Usage_Error  when there is no such frame
    explicit Monitor_Model(const std::vector<std::string>& names);

    /// Reads the frames. One that fails keeps its old values, marked as such, below the reason.
    void read(ZAVRA_100& device);

    const std::vector<Monitor_Line>& lines() const { return lines_; }

private:
    void read(ZAVRA_100& device, const Frame& frame);

    std::vector<const Frame*> frames_;
    std::vector<Monitor_Line> lines_;
    std::map<std::string, std::string> before_;
    std::map<std::string, std::string> last_read_; ///< frame to time of day
};

/// Columns of the monitor's lines that stand side by side on a screen, from the line `first` on; each is as wide as
/// its longest line.
struct Monitor_Column
{
    std::size_t first;
    std::size_t last; ///< behind the last line
    int left;
    int name_width;
};
std::vector<Monitor_Column> arrange(const std::vector<Monitor_Line>& lines, std::size_t first, int rows, int columns);

/// Shows the model on the whole terminal until "q", a signal or, unless it is 0, `count` readings.
/// @throws Failure  when there is no terminal to draw on
void run_monitor(ZAVRA_100& device, Monitor_Model& model, std::chrono::nanoseconds interval, unsigned int count);

}
