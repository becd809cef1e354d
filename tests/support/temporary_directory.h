#pragma once

#include "bytes.h"
#include "common/temporary_directory.h"

namespace zavra::test
{

/// A directory of the test's own, removed with everything in it.
struct Temporary_Directory : zavra::Temporary_Directory
{
    Temporary_Directory() : zavra::Temporary_Directory("zavra_test") {}

    const std::string path = zavra::Temporary_Directory::path();

    std::string file(const std::string& name, const std::string& content) const
    {
        std::ofstream(path + "/" + name) << content;
        return path + "/" + name;
    }
};

}
