#include <VELM_API_Debug.h>

#include <stdlib.h>
#include <unistd.h>

TEST(Debug, Prints_The_Levels_That_The_Environment_Names)
{
    const std::pair<const char*, std::string> cases[] = {{nullptr, "4"}, {"34", "34"}, {"1,2", "12"}, {"", ""}};
    for (const auto& [variable, printed] : cases) {
        SCOPED_TRACE(variable == nullptr ? "not set" : variable);
        EXPECT_EXIT(
            {
                variable == nullptr ? ::unsetenv("VELM_DEBUG") : ::setenv("VELM_DEBUG", variable, 1);
                for (VELM_API_Debug::Level level = 0; level < 70; ++level)
                    VELM_API_Debug::dout(level) << level;
                ::_exit(0);
            },
            testing::ExitedWithCode(0), testing::Eq(printed));
    }
}
