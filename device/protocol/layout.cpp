#include "layout.h"

#include "json.h"

namespace zavra
{

std::string layout::joined(const std::string& prefix, const char* name)
{
    return (prefix.empty() ? "" : prefix + '.') + json::key(name);
}

}
