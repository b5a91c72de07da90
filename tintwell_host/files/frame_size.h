// Frame sizes as the user writes them.
#pragma once

#include <string>

namespace program {

struct FrameSize {
    int width = 0;
    int height = 0;
};

// Reads "1920x1080"; up to 99999 either way. Throws Failure.
FrameSize parseFrameSize(const std::string& text);

}  // namespace program
