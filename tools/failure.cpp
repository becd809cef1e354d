#include "failure.h"

#include <VELM_ZAVRA_CAUSE.h>

#include <string_view>
#include <system_error>

namespace zavra::tools
{

Output_Failure::Output_Failure(int error_number)
    : std::runtime_error(std::generic_category().message(error_number)),
      error(error_number)
{
}

bool is_refusal(const std::exception& error)
{
    return velm_zavra::cause(error).kind == velm_zavra::Cause::refused_argument;
}

std::string in_short(const std::string& message)
{
    constexpr std::string_view layer = "(Failed to ";
    const auto first = message.find(layer);
    if (first == std::string::npos)
        return message;
    // Every layer adds "Failed to ... (" in front and ")" at the end.
    std::size_t layers = 0;
    std::size_t last = first;
    for (auto next = first; next != std::string::npos; next = message.find(layer, next + 1)) {
        last = next;
        ++layers;
    }
    const auto reason = message.find(" (", last + 1);
    const auto begin = reason == std::string::npos ? last + 1 : reason + 2;
    layers += reason == std::string::npos ? 0 : 1;
    if (message.size() < begin + layers)
        return message;
    return message.substr(0, first + 1) + message.substr(begin, message.size() - layers - begin) + ')';
}

}
