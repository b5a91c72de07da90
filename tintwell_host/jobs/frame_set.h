// Sets of frames as people and render managers write them.
#pragma once

#include <string>
#include <vector>

namespace program {

struct FrameRange {
    int first;
    int last;  // inclusive
    int step;
};

// Reads "1-100", "1-100x2", "1-10,20-30", "14", "-8--5" and lists of these. Throws Failure.
std::vector<FrameRange> parseFrameSet(const std::string& text);

struct ChosenFrames {
    std::vector<int> frames;
    int cutAfter = 0;  // frames past this one were asked for and left out,
    int cut = 0;       // so many of them
};

// Each frame of the set once, in the order in which they are first named; what lies past `end`, the
// last frame that there is, is left out. Throws Failure when nothing is left, and for more frames
// than a job can have.
ChosenFrames chooseFrames(const std::vector<FrameRange>& set, int end);

// A line for the user about the frames that were left out; empty: none were.
std::string cutNote(const ChosenFrames& chosen);

}  // namespace program
