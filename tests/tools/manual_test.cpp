#include "shell.h"

#include <fnmatch.h>

using namespace zavra::test;

static std::string glob(const std::string& text)
{
    std::string pattern;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 3, "...") == 0) {
            pattern += '*';
            i += 2;
        } else {
            pattern += std::string("*?[\\").find(text[i]) == std::string::npos ? "" : "\\";
            pattern += text[i];
        }
    }
    return pattern;
}

/// Commands and the patterns of their output. Indented lines: "$ command", then what it prints; "..." is anything.
static std::vector<std::pair<std::string, std::string>> examples()
{
    std::vector<std::pair<std::string, std::string>> found;
    std::ifstream manual(ZAVRA_MANUAL);
    bool in_example = false;
    for (std::string line; std::getline(manual, line);) {
        if (line.starts_with("    $ ")) {
            found.push_back({line.substr(6), ""});
            in_example = true;
        } else if (in_example && line.starts_with("    ")) {
            found.back().second += glob(line.substr(4)) + '\n';
        } else {
            in_example = false;
        }
    }
    return found;
}

TEST_F(Shell_Test, every_example_of_the_manual_works_and_prints_what_the_manual_says)
{
    const auto all = examples();
    EXPECT_GT(all.size(), 25U);
    for (const auto& [command, pattern] : all) {
        SCOPED_TRACE(command);
        const std::string output = run(command);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(::fnmatch(pattern.c_str(), output.c_str(), 0), 0) << output;
    }
}
