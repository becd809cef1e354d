#include "command_cases.h"

namespace zavra::test
{

void Command_Test::check(const std::vector<Command_Case>& cases)
{
    for (const Command_Case& each : cases) {
        SCOPED_TRACE(each.name);

        platform = {};
        std::vector<std::string> expected{"write " + hexadecimal(with_crc(octets(each.frame))), "sleep 100000"};
        if (!each.response.empty()) {
            platform.reply(each.response);
            expected.push_back("read " + std::to_string(octets(each.response).size() + 1));
        }
        EXPECT_NO_THROW(each.call(device));
        EXPECT_EQ(platform.events, expected);
        if (!each.dumped.empty()) {
            EXPECT_EQ(platform.dumped(), each.dumped);
        }

        platform = {};
        platform.write_failure = "no bus";
        const std::string transport = each.response.empty()
                                          ? "Failed to use Generic-SET for ZAVRA (no bus)"
                                          : "Failed to use Generic-GET for ZAVRA: Generic-SET command failed "
                                            "(Failed to use Generic-SET for ZAVRA (no bus))";
        EXPECT_EQ(message_of<ZAVRA_100_Exception>([&] { each.call(device); }),
                  "Failed to " + each.action + " (" + transport + ")");
        EXPECT_EQ(platform.events, std::vector<std::string>{}) << "a failed write is not followed by a sleep";
    }
}

}
