// The frames of one render, and what became of each.
#pragma once

#include <string>
#include <vector>

#include "tintwell_host/files/failure.h"

namespace program {

struct FrameTask {
    int frame = 0;  // 0 for a single picture
    std::string in;
    std::string out;
};

struct FrameJob {
    std::vector<FrameTask> tasks;
    bool isSequence = false;
    std::string note;  // a line for the user about frames that were left out; empty: none
};

// The frames of `in` that go to `out`: one picture, or those of a sequence that the set names, by
// default all that exist. An input that exists under the very name is one picture. Throws Failure.
FrameJob planFrames(const std::string& in, const std::string& out, const std::string& frameSet);

enum class FrameState { kRendered, kSkipped, kFailed };

struct FrameResult {
    FrameTask task;
    FrameState state = FrameState::kFailed;
    double seconds = 0.0;
    std::string reason;             // why it failed, or why a frame that was there was made anew
    Exit exit = Exit::kWrongInput;  // of a failure
};

}  // namespace program
