#include "tests/support/doubles.h"

#include <VELM_ZAVRA_API.h>

#include <cmath>
#include <limits>
#include <type_traits>

namespace zavra::test
{

static_assert(!std::is_copy_constructible_v<VELM_ZAVRA_API> && !std::is_copy_assignable_v<VELM_ZAVRA_API>);
static_assert(sizeof(VELM_ZAVRA_API) == 2 * sizeof(void*), "a virtual destructor and the device pointer");

namespace
{

constexpr const char* banner = "VELM ZAVRA API Library\nv1.18, 19.Nov.2020 ";

}

TEST_F(Platform_Test, an_object_announces_itself_connects_and_is_destroyed_after_its_device)
{
    testing::internal::CaptureStdout();
    {
        VELM_ZAVRA_API api;
    }
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_THAT(printed, testing::StartsWith(banner));
    EXPECT_THAT(printed, testing::ContainsRegex("19.Nov.2020 [^\n]+\nVELM_ZAVRA_API: Instantiate ZAVRA module\n"));
    EXPECT_EQ(platform.events,
              (std::vector<std::string>{"description Fine ADCS module", "connect 10 i2c-0", "base destroyed"}));
    EXPECT_THAT(platform.debug, testing::StartsWith("\033[36m --> P14VELM_ZAVRA_API constructor: \033[0m\n"
                                                    "\033[36m --> P9ZAVRA_100 constructor: "));
    EXPECT_THAT(platform.debug, testing::EndsWith("ZAVRA_100 class destroyed with virtual destructor\033[0m\n"
                                                  "\033[36m <-- P14VELM_ZAVRA_API destructor: \033[0m\n"));
}

TEST_F(Platform_Test, construction_without_a_bus_fails_with_the_platforms_reason)
{
    platform.connect_failure = "no bus";
    testing::internal::CaptureStdout();
    EXPECT_EQ(message_of<VELM_ZAVRA_API_Exception>([] { VELM_ZAVRA_API(); }),
              "Failed to instantiate ZAVRA API (Failed to instantiate ZAVRA I2C Device (no bus))");
    testing::internal::GetCapturedStdout();
}

TEST_F(Platform_Test, print_info_shows_the_library_and_the_bus)
{
    testing::internal::CaptureStdout();
    VELM_ZAVRA_API api;
    testing::internal::GetCapturedStdout();

    testing::internal::CaptureStdout();
    api.Print_Info();
    const std::string rule(73, '-');
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
                testing::MatchesRegex(rule + "\n" + banner + "[^\n]+\n[^\n]+\n" + rule + "\nplatform info\n"));
}

TEST_F(Platform_Test, wheel_speeds_convert_between_rpm_and_rad_per_second)
{
    testing::internal::CaptureStdout();
    VELM_ZAVRA_API api;
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(api.rpm_to_radps(60.0F), 6.2831855F);
    EXPECT_EQ(api.rpm_to_radps(-30.0F), -3.1415927F);
    EXPECT_EQ(api.rpm_to_radps(0.0F), 0.0F);
    EXPECT_FLOAT_EQ(api.radps_to_rpm(6.2831855F), 60.0F);
    EXPECT_EQ(api.radps_to_rpm(0.0F), 0.0F);
    // The first step is taken in single precision and may overflow there.
    EXPECT_EQ(api.rpm_to_radps(3.0e38F), std::numeric_limits<float>::infinity());
    EXPECT_EQ(api.radps_to_rpm(-1.0e38F), -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(api.rpm_to_radps(std::nanf(""))));
}

}
