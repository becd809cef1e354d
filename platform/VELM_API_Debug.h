#pragma once

#include <ostream>

/// The debug output of the platform's libraries.
class VELM_API_Debug
{
public:
    /// 1 constructors, 2 destructors, 3 frames and decoded values, 4 warnings
    typedef unsigned int Level;

    /// Gives the stream that takes the debug output of a level. For a level that nobody listens to it is a stream
    /// without a buffer (rdbuf() is null), which discards what is written; it belongs to the calling thread.
    static std::ostream& dout(Level level);
};
