#include "command_line.h"
#include "failure.h"
#include "output.h"
#include "side_output.h"

#include <cerrno>
#include <csignal>
#include <iostream>
#include <ostream>

#include <unistd.h>

// The libraries below print to standard output now and then. The answer gets a descriptor of its own.
int main(int argc, char** argv)
try {
    std::signal(SIGPIPE, SIG_IGN);
    zavra::tools::Descriptor_Buffer buffer(::dup(STDOUT_FILENO));
    const zavra::tools::Side_Output side_output;
    std::ostream out(&buffer);
    out.exceptions(std::ios::badbit);
    const int status = zavra::tools::run(argc, argv, out, std::cerr);
    out.flush();
    return status;
} catch (const zavra::tools::Output_Failure& failure) {
    if (failure.error == EPIPE) {
        // Everything is tidied up; end like any program whose reader has gone.
        std::signal(SIGPIPE, SIG_DFL);
        std::raise(SIGPIPE);
    }
    std::cerr << "zavractl: cannot write the answer: " << failure.what() << std::endl;
    return 1;
}
