#pragma once

#include <string>
#include <vector>

/// The lines that a dump is expected to write.
namespace zavra::test
{

using Lines = std::vector<std::string>;

inline Lines operator+(Lines a, const Lines& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/// The lines of fields whose values count up from `first`.
inline Lines counted(const std::string& frame, const Lines& labels, int first = 1)
{
    Lines lines;
    for (const std::string& label : labels)
        lines.push_back(frame + (frame.empty() ? "" : ".") + label + ": dec = " + std::to_string(first++));
    return lines;
}

}
