#pragma once

#include <exception>
#include <string>

/// The one exception type that leaves VELM_ZAVRA_API on a failure of the unit or the transport, and on an argument that
/// is refused. The message nests the messages of the layers below, as in "Failed to get epoch time (Failed to Get Epoch
/// Time (Failed to use Generic-GET for ZAVRA (...)))". The words of some operations are another's; docs/quirks.md lists
/// them.
class VELM_ZAVRA_API_Exception : public std::exception
{
public:
    explicit VELM_ZAVRA_API_Exception(std::string message);
    ~VELM_ZAVRA_API_Exception() noexcept override;
    const char* what() const noexcept override;

private:
    std::string message_;
};
