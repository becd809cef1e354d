#include "program.h"

#include <fstream>

using namespace zavra::test;

struct Campaign_Test : testing::Test
{
    Ran campaign(const std::string& lines, const std::string& options = "")
    {
        std::ofstream(directory.path + "/results.jsonl") << lines;
        return zavractl("campaign " + directory.path + "/results.jsonl" + options);
    }

    static std::string run(int seed, const std::string& caught)
    {
        return R"({"seed":)" + std::to_string(seed) +
               R"(,"drawn":{"start.attitude":[0,0,0,1]},"results":{"caught_s":)" + caught +
               R"(,"settled_s":null},"command_line":"zavra-sim </script>"})" + '\n';
    }

    const Temporary_Directory directory;
};

TEST_F(Campaign_Test, percentiles_worst_and_missing_seeds_are_told)
{
    std::string lines = run(7, "1");
    for (int seed = 1; seed <= 100; ++seed)
        if (seed != 13 && seed != 14)
            lines += run(seed, seed == 60 ? "null" : std::to_string(10 * seed));
    const Ran ran = campaign(lines);
    EXPECT_EQ(ran.status, 0) << ran.errors;
    EXPECT_EQ(ran.out,
              "98 runs, seeds 1 to 100\n"
              "                                 came     median       95 %       99 %   greatest  worst seeds\n"
              "caught_s                           97        510        970      never      never  60 100 99\n"
              "settled_s                           0\n"
              "Seeds without a result: 13 14\n");
    EXPECT_EQ(campaign(lines, " -o " + directory.path + "/page.html").status, 0);
    std::stringstream page;
    page << std::ifstream(directory.path + "/page.html").rdbuf();
    EXPECT_THAT(page.str(), AllOf(StartsWith("<!DOCTYPE html>"), HasSubstr("\"zavra-sim \\u003c/script>\"")));
}

TEST_F(Campaign_Test, what_is_no_result_is_refused_with_its_line)
{
    for (const char* line : {"Simulated 3 h", "3", "{}", R"({"seed":-1,"drawn":{},"results":{}})",
                             R"({"seed":1,"drawn":[],"results":{}})", ""}) {
        const Ran ran = campaign(run(1, "1") + line + '\n');
        EXPECT_EQ(ran.status, 1) << line;
        EXPECT_THAT(ran.errors, HasSubstr("results.jsonl:2: not a result of zavra-sim --vary"));
    }
    EXPECT_THAT(campaign("").errors, HasSubstr("results.jsonl: there is no result in it"));
}
