#pragma once

#include "tests/support/temporary_directory.h"

#include <sys/wait.h>

namespace zavra::test
{

/// The program as a shell meets it, in a directory of its own.
struct Shell_Test : testing::Test
{
    Shell_Test()
    {
        namespace fs = std::filesystem;
        fs::create_directory(directory.path + "/tmp");
        fs::create_directory_symlink(ZAVRA_EXAMPLES_DIR, directory.path + "/examples");
        // Where the program is for another machine, its path has an emulator in front.
        const std::string program = directory.file("zavractl", "#!/bin/sh\nexec " ZAVRACTL " \"$@\"\n");
        fs::permissions(program, fs::perms::owner_all);
    }

    /// What a line of bash prints on either stream; its status is in `status`.
    std::string run(const std::string& line)
    {
        const std::string script = directory.file("script", "export TMPDIR=$PWD/tmp PATH=$PWD:$PATH\n" + line + "\n");
        std::FILE* const pipe = ::popen(("cd " + directory.path + " && bash script 2>&1").c_str(), "r");
        std::string output;
        for (int c; (c = std::fgetc(pipe)) != EOF;)
            output += static_cast<char>(c);
        status = WEXITSTATUS(::pclose(pipe));
        return output;
    }

    bool nothing_left_behind() const { return std::filesystem::is_empty(directory.path + "/tmp"); }

    Temporary_Directory directory;
    int status = -1;
};

}
