#include "side_output.h"

#include <iostream>
#include <string>

#include <cstdio>
#include <sys/mman.h>
#include <unistd.h>

namespace zavra::tools
{

Side_Output::Side_Output() : kept_(::memfd_create("standard output", MFD_CLOEXEC)), errors_(std::cerr.rdbuf())
{
    ::dup2(kept_ ? kept_.get() : STDERR_FILENO, STDOUT_FILENO);
    if (::isatty(STDERR_FILENO) == 0)
        std::cerr.rdbuf(&errors_);
}

Side_Output::~Side_Output()
{
    std::cout.flush();
    std::fflush(stdout);
    char last = '\n';
    char part[4096];
    ssize_t size = 0;
    for (::off_t at = 0; (size = ::pread(kept_.get(), part, sizeof part, at)) > 0; at += size) {
        std::cerr.write(part, size);
        last = part[size - 1];
    }
    if (last != '\n')
        std::cerr << '\n';
    std::cerr.flush();
    std::cerr.rdbuf(errors_.target());
}

Side_Output::Without_Colours::int_type Side_Output::Without_Colours::overflow(int_type character)
{
    const char c = traits_type::to_char_type(character);
    if (!traits_type::eq_int_type(character, traits_type::eof()))
        xsputn(&c, 1);
    return traits_type::not_eof(character);
}

std::streamsize Side_Output::Without_Colours::xsputn(const char* text, std::streamsize size)
{
    std::string plain;
    for (const char* c = text; c != text + size; ++c) {
        in_colour_ = in_colour_ || *c == '\033';
        if (!in_colour_)
            plain += *c;
        in_colour_ = in_colour_ && *c != 'm';
    }
    target_->sputn(plain.data(), static_cast<std::streamsize>(plain.size()));
    return size;
}

}
