#include "tests/support/cases.h"

using namespace zavra::test;

static_assert(!std::is_copy_constructible_v<VELM_ZAVRA_API> && !std::is_copy_assignable_v<VELM_ZAVRA_API>);
static_assert(sizeof(VELM_ZAVRA_API) == 2 * sizeof(void*), "a virtual destructor and the device pointer");

constexpr const char* banner = "VELM ZAVRA API Library\nv1.18, 19.Nov.2020 ";

TEST_F(Platform_Test, an_object_announces_itself_connects_and_is_destroyed_after_its_device)
{
    testing::internal::CaptureStdout();
    {
        VELM_ZAVRA_API api;
    }
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_THAT(printed, StartsWith(banner));
    EXPECT_THAT(printed, testing::ContainsRegex("19.Nov.2020 [^\n]+\nVELM_ZAVRA_API: Instantiate ZAVRA module\n"));
    EXPECT_EQ(platform.events, (Lines{"description Fine ADCS module", "connect 10 i2c-0", "base destroyed"}));
    EXPECT_THAT(platform.debug, StartsWith("\033[36m --> P14VELM_ZAVRA_API constructor: \033[0m\n"
                                           "\033[36m --> P9ZAVRA_100 constructor: "));
    EXPECT_THAT(platform.debug, EndsWith("ZAVRA_100 class destroyed with virtual destructor\033[0m\n"
                                         "\033[36m <-- P14VELM_ZAVRA_API destructor: \033[0m\n"));
}

TEST_F(Platform_Test, an_object_is_where_it_is_told_and_configures_what_it_is_told)
{
    const auto printed_by = [](auto&&... arguments) {
        testing::internal::CaptureStdout();
        VELM_ZAVRA_API{arguments...};
        return testing::internal::GetCapturedStdout();
    };
    EXPECT_EQ(printed_by(11U, "i2c-1", "", false), "");
    EXPECT_EQ(platform.events_of("connect "), Lines{"11 i2c-1"});
    EXPECT_THAT(printed_by(12U, "i2c-2"),
                testing::MatchesRegex(std::string(banner) + "[^\n]+\nVELM_ZAVRA_API: Inst[^\n]+\n"));
    EXPECT_EQ(platform.parser_calls, Lines{});
    EXPECT_THAT(printed_by(12U, "i2c-2", "our.ini", false),
                testing::AllOf(testing::StartsWith("-----"), testing::HasSubstr("INI file: our.ini\n")));
}

TEST_F(Platform_Test, construction_without_a_bus_fails_with_the_platforms_reason)
{
    platform.connect_failure = "no bus";
    testing::internal::CaptureStdout();
    EXPECT_EQ(message_of<Api_Failure>([] { VELM_ZAVRA_API(); }),
              "Failed to instantiate ZAVRA API (Failed to instantiate ZAVRA I2C Device (no bus))");
    testing::internal::GetCapturedStdout();
}

TEST_F(Operation_Test, print_info_shows_the_library_and_the_bus)
{
    testing::internal::CaptureStdout();
    api.Print_Info();
    const std::string rule(73, '-');
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
                MatchesRegex(rule + "\n" + banner + "[^\n]+\n[^\n]+\n" + rule + "\nplatform info\n"));
}

TEST_F(Operation_Test, wheel_speeds_convert_between_rpm_and_rad_per_second)
{
    EXPECT_EQ(api.rpm_to_radps(60.0F), 6.2831855F);
    EXPECT_EQ(api.rpm_to_radps(-30.0F), -3.1415927F);
    EXPECT_FLOAT_EQ(api.radps_to_rpm(6.2831855F), 60.0F);
    // The first step is taken in single precision and may overflow there.
    EXPECT_EQ(api.rpm_to_radps(3.0e38F), std::numeric_limits<float>::infinity());
    EXPECT_EQ(api.radps_to_rpm(-1.0e38F), -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(api.rpm_to_radps(std::nanf(""))));
}
