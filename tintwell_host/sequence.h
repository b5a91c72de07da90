// Frames as numbered files: a path with one "%d" or "%0Nd" in it names a sequence.
#pragma once

#include <string>
#include <vector>

namespace program {

struct FrameRange {
    int first;
    int last;  // inclusive
};

// Reads "A-B" or "A". Throws Failure.
FrameRange parseFrameRange(const std::string& text);

bool isSequence(const std::string& path);

// The file of one frame.
std::string frameFile(const std::string& pattern, int frame);

// The frames for which a file of the sequence exists, in order. Throws Failure when there are none.
std::vector<int> existingFrames(const std::string& pattern);

}  // namespace program
