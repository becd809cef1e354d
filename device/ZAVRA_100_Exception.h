#pragma once

#include <exception>
#include <string>

/// Failure of the unit, of the transport or of the bus, as the device layer reports it. The message nests the messages
/// of the layers below: "Failed to Set Epoch Time (Failed to use Generic-SET for ZAVRA (...))". The words of some
/// commands are another command's; docs/quirks.md lists them.
class ZAVRA_100_Exception : public std::exception
{
public:
    explicit ZAVRA_100_Exception(std::string message);
    ~ZAVRA_100_Exception() noexcept override;
    const char* what() const noexcept override;

private:
    std::string message_;
};
