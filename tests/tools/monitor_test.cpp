#include "tests/support/simulated_bus.h"
#include "tools/monitor.h"

namespace zavra::test
{

using tools::Monitor_Line;
using Kind = Monitor_Line::Kind;

TEST_F(Connected_Test, the_monitor_shows_the_attitude_first_and_what_is_old_where_it_stands)
{
    tools::Monitor_Model model({});
    model.read(device);
    EXPECT_EQ(model.lines().front().name, "attitude");

    tools::Monitor_Model power({"power"});
    power.read(device);
    ZAVRA_100 nobody(11, "i2c-0");
    power.read(nobody);
    const auto& lines = power.lines();
    EXPECT_EQ(lines[0].kind, Kind::title);
    EXPECT_THAT(lines[0].value, testing::MatchesRegex("old, of ..:..:.. UTC"));
    EXPECT_EQ(lines[1].kind, Kind::problem);
    EXPECT_THAT(lines[1].name, testing::StartsWith("Failed to get power telemetry ("));
    EXPECT_TRUE(lines.back().old);
    EXPECT_THAT(lines.back().value, testing::EndsWith(" A (old)"));
}

TEST_F(Connected_Test, the_monitor_cuts_nothing_off_on_80_columns_and_uses_200)
{
    tools::Monitor_Model model({});
    model.read(device);
    ZAVRA_100 nobody(11, "i2c-0");
    model.read(nobody);
    for (const auto& [width, columns] : {std::pair{80, 1U}, std::pair{200, 2U}}) {
        const auto arranged = tools::arrange(model.lines(), 0, 23, width);
        EXPECT_GE(arranged.size(), columns);
        for (const auto& column : arranged)
            for (std::size_t i = column.first; i < column.last; ++i) {
                const Monitor_Line& line = model.lines()[i];
                const int left = line.kind == Kind::value ? column.left + column.name_width + 1
                                                          : column.left + static_cast<int>(line.name.size()) + 2;
                EXPECT_LE(left + static_cast<int>(line.value.size()), width) << line.name;
            }
    }
}

}
