#include "shell.h"

#include <fnmatch.h>
#include <vector>

namespace
{

struct Example
{
    std::string command;
    std::string pattern; ///< of the output; "..." stands for anything
};

std::string glob(const std::string& text)
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

/// Indented lines: "$ command", then what it prints.
std::vector<Example> examples()
{
    std::vector<Example> found;
    std::ifstream manual(ZAVRA_MANUAL);
    bool in_example = false;
    for (std::string line; std::getline(manual, line);) {
        if (line.starts_with("    $ ")) {
            found.push_back({line.substr(6), ""});
            in_example = true;
        } else if (in_example && line.starts_with("    ")) {
            found.back().pattern += glob(line.substr(4)) + '\n';
        } else {
            in_example = false;
        }
    }
    return found;
}

}

TEST_F(Shell_Test, every_example_of_the_manual_works_and_prints_what_the_manual_says)
{
    const auto all = examples();
    EXPECT_GT(all.size(), 25U);
    for (const Example& example : all) {
        SCOPED_TRACE(example.command);
        const std::string output = run(example.command);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(::fnmatch(example.pattern.c_str(), output.c_str(), 0), 0) << output;
    }
}
