#pragma once

#include "catalogue/commands.h"

namespace zavra::test
{

/// What one command writes and another reads: the same bytes, behind those that say of which sensor or axis.
struct Setting
{
    const Described_Command& set;
    const Described_Command& get;
    std::size_t index_bytes = wire_bytes(get.request);
    std::size_t value_bytes = wire_bytes(get.response);
};

inline std::vector<Setting> settings()
{
    std::vector<Setting> all;
    for (const Described_Command& set : described_commands())
        for (const Described_Command& get : described_commands())
            if (const Setting setting{set, get}; std::string_view(get.method).starts_with("Get_") &&
                                                 set.method == "Set_" + std::string(get.method).substr(4) &&
                                                 setting.index_bytes + setting.value_bytes == wire_bytes(set.request))
                all.push_back(setting);
    return all;
}

}
