#include "program.h"

using namespace zavra::test;

struct Check_Test : testing::Test
{
    /// What `check KIND` says of an example in which one text is replaced.
    std::string checked(const std::string& kind, const std::string& example, const std::string& old_text,
                        const std::string& new_text)
    {
        std::ostringstream text;
        text << std::ifstream(std::string(ZAVRA_EXAMPLES_DIR) + '/' + example).rdbuf();
        std::string changed = text.str();
        const auto found = changed.find(old_text);
        EXPECT_NE(found, std::string::npos) << old_text;
        changed.replace(found, old_text.size(), new_text);
        std::ofstream(file) << changed;
        const Ran ran = zavractl("check " + kind + ' ' + file);
        EXPECT_EQ(ran.status, 1);
        std::string answer = ran.out;
        for (auto at = answer.find(file); at != std::string::npos; at = answer.find(file))
            answer.replace(at, file.size(), "FILE");
        return answer;
    }

    Temporary_Directory directory;
    const std::string file = directory.path + "/file";
};

TEST_F(Check_Test, files_are_good_or_told_what_is_wrong_and_where)
{
    for (const char* good : {"ini " ZAVRA_EXAMPLES_DIR "/velm_zavra_dev_init.ini", "tle " ZAVRA_EXAMPLES_DIR "/iss.tle",
                             "map " ZAVRA_EXAMPLES_DIR "/zavra_sim_registers.ini",
                             "scenario " ZAVRA_EXAMPLES_DIR "/scenarios/commissioning.toml",
                             "satellite " ZAVRA_EXAMPLES_DIR "/satellites/3u.toml"})
        EXPECT_EQ(zavractl(std::string("check ") + good).status, 0) << good;

    EXPECT_EQ(checked("tle", "iss.tle", "25544U", "25545U"), "FILE:2: wrong checksum in line 1\n");
    EXPECT_EQ(checked("tle", "iss.tle", " 95614", ""), "FILE:3: line 2 has 63 characters instead of 69\n");
    EXPECT_EQ(checked("tle", "iss.tle", "\n1 ", "\n0 "), "FILE: no line 1 stands before line 2\n");

    const char* const ini = "velm_zavra_dev_init.ini";
    EXPECT_THAT(checked("ini", ini, "output_type ", "outputtype "),
                MatchesRegex("FILE:[0-9]+: section \\[zavra_dev_init_gyro0\\] has no output_type\n"
                             "FILE:[0-9]+: outputtype is no parameter of this sensor\n"));
    EXPECT_THAT(checked("ini", ini, "bias_counter ", "bias_counter = x ;"),
                MatchesRegex("FILE:[0-9]+: bias_counter is not a number of type uint32\n"));
    EXPECT_THAT(checked("ini", ini, "[zavra_dev_init_gyro1]", "[zavra_dev_init_gyro7]"),
                MatchesRegex("FILE:[0-9]+: section \\[zavra_dev_init_gyro7\\] is that of no sensor\n"));
    EXPECT_THAT(checked("ini", ini, "[zavra_dev_init_gyro1]", "[zavra_dev_init_gyro1"),
                StartsWith("FILE: Cannot load INI file FILE ("));
    EXPECT_THAT(checked("scenario", "scenarios/commissioning.toml", "[[event]]",
                        "[[event]]\nfualt = 1\n[[event]]\nat = -1\n[[event]]"),
                MatchesRegex("FILE:[0-9]+: event: there is no key \"fualt\"\n"
                             "FILE:[0-9]+: at: expected a number of seconds, got -1\n"));
    EXPECT_THAT(checked("satellite", "satellites/3u.toml", "inertia_kgm2", "inertia"),
                MatchesRegex("FILE:[0-9]+: body.inertia_kgm2 has not 3 or 9 numbers\n"));
    EXPECT_THAT(checked("satellite", "satellites/3u.toml", "2018-01-20", "2018-03-20"),
                MatchesRegex("FILE:[0-9]+: .*days.*"));
    EXPECT_THAT(checked("map", "zavra_sim_registers.ini", "0 = alive", "32 = alive"),
                MatchesRegex("FILE:? ?line [0-9]+, section \\[livelyhood\\], key \"32\": the key is not a bit "
                             "number from 0 to 31\n"));
}
