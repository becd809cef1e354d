#pragma once

#include "doubles.h"

#include <VELM_ZAVRA_API.h>

#include <functional>
#include <memory>

/// Tables of API operations: the frame each must put on the bus, and the words of its failure.
namespace zavra::test
{

inline std::unique_ptr<VELM_ZAVRA_API> quietly_constructed_api()
{
    testing::internal::CaptureStdout();
    auto api = std::make_unique<VELM_ZAVRA_API>();
    testing::internal::GetCapturedStdout();
    return api;
}

struct Operation_Case
{
    std::function<void(VELM_ZAVRA_API&)> call; ///< may hold expectations on what comes back
    std::string frame;                         ///< header and payload, without the CRC
    std::string response;                      ///< payload of the response; empty for a command without one
    std::string action;                        ///< "get epoch time" of "Failed to get epoch time ("
    std::string device_action;                 ///< "Get Epoch Time"
};

class Operation_Test : public Platform_Test
{
protected:
    /// Runs every case on a bus that works and on one that does not.
    void check(const std::vector<Operation_Case>& cases)
    {
        for (const Operation_Case& each : cases) {
            SCOPED_TRACE(each.action);
            platform = {};
            if (!each.response.empty())
                platform.reply(each.response);
            EXPECT_NO_THROW(each.call(api));
            EXPECT_EQ(platform.frames(), std::vector<std::string>{hexadecimal(with_crc(octets(each.frame)))});

            platform.write_failure = "no bus";
            const std::string transport = each.response.empty()
                                              ? "Failed to use Generic-SET for ZAVRA (no bus)"
                                              : "Failed to use Generic-GET for ZAVRA: Generic-SET command failed "
                                                "(Failed to use Generic-SET for ZAVRA (no bus))";
            EXPECT_EQ(message_of<VELM_ZAVRA_API_Exception>([&] { each.call(api); }),
                      "Failed to " + each.action + " (Failed to " + each.device_action + " (" + transport + "))");
        }
    }

private:
    const std::unique_ptr<VELM_ZAVRA_API> constructed = quietly_constructed_api();

protected:
    VELM_ZAVRA_API& api = *constructed;
};

}
