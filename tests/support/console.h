#pragma once

#include "doubles.h"

#include <iostream>
#include <sstream>

namespace zavra::test
{

/// Shows what is written to std::cout among the debug lines of the double, but only once it is flushed: as a terminal
/// does.
class Console : public std::stringbuf
{
public:
    Console() : before_(std::cout.rdbuf(this)) {}
    ~Console() override { std::cout.rdbuf(before_); }

private:
    int sync() override
    {
        double_of_platform().debug += str();
        str("");
        return 0;
    }

    std::streambuf* before_;
};

}
