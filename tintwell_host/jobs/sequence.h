// Frames as numbered files: a file name with one mark for the number in it names a sequence. Marks
// are %d, %04d, ####, @@@@, $F and $F4; the digits of a mark are filled with zeros, and a minus
// sign takes the place of one.
#pragma once

#include <string>
#include <vector>

namespace program {

bool isSequence(const std::string& path);

// The file of one frame.
std::string frameFile(const std::string& pattern, int frame);

// The frames for which a file of the sequence exists, in order. Throws Failure when there are none,
// or their folder cannot be read to its end.
std::vector<int> existingFrames(const std::string& pattern);

}  // namespace program
