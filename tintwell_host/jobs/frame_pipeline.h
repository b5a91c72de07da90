// Frames through several threads, a bounded number of them at a time.
#pragma once

#include <functional>
#include <vector>

#include "tintwell_host/jobs/sequence_job.h"

namespace program {

// Threads that frames are rendered on: `asked`, or as many as there are processors for 0.
int frameThreads(int asked);

// Calls render() for the tasks, in their order, on `threads` threads, each reading, grading and
// writing frames of its own, so that one reads while another grades; then take() for each result,
// one at a time, in the order in which they are ready. No further frame begins when take() returns
// false or mayBegin() does. Returns when all that began has been taken.
void runFrames(const std::vector<FrameTask>& tasks, int threads,
               const std::function<bool()>& mayBegin,
               const std::function<FrameResult(const FrameTask&)>& render,
               const std::function<bool(const FrameResult&)>& take);

}  // namespace program
