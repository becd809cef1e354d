#pragma once

#include "../common/file_descriptor.h"

#include <streambuf>

namespace zavra::tools
{

/// Where the libraries below print while it lives. What they write to standard output, not always in whole lines, goes
/// to standard error at the end, in whole lines; and what they write to standard error has colours on a terminal only.
class Side_Output
{
public:
    Side_Output();
    ~Side_Output();
    Side_Output(const Side_Output&) = delete;
    Side_Output& operator=(const Side_Output&) = delete;

private:
    /// Passes on what is no colour.
    class Without_Colours : public std::streambuf
    {
    public:
        explicit Without_Colours(std::streambuf* target) : target_(target) {}
        std::streambuf* target() const { return target_; }

    protected:
        int_type overflow(int_type character) override;
        std::streamsize xsputn(const char* text, std::streamsize size) override;
        int sync() override { return target_->pubsync(); }

    private:
        std::streambuf* target_;
        bool in_colour_ = false;
    };

    File_Descriptor kept_; ///< what was written to standard output
    Without_Colours errors_;
};

}
