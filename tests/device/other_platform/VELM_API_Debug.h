#pragma once

/// A platform whose levels are an enumeration, and whose dout() writes something before each line.
class VELM_API_Debug
{
public:
    enum class Level : unsigned char { constructors = 1, destructors, values, warnings };

    static std::ostream& dout(Level level);
};
